// Pages in HTML, put together from templates that are files of their own.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace riders::html {

// What stands for {{name}}, as HTML: texts are `escaped`.
struct Filling {
    std::string_view name;
    std::string value;
};
using Fillings = std::initializer_list<Filling>;

// The text with each {{name}} filled in. Where the name is alone on its line and its value is empty or whole
// lines, no empty line is left. Throws std::logic_error for a name without a filling.
std::string filled(std::string_view text, Fillings fillings);

// The <template> of that id in a file of them, filled. Throws std::logic_error when there is none.
std::string part(std::string_view file, std::string_view id, Fillings fillings = {});

// A text for an element or a quoted attribute: & < > " ' are written as
// entities; otherwise see io::plainText.
std::string escaped(const std::string &text);

}  // namespace riders::html
