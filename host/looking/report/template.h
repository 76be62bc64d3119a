// The parts of a proof's page, from parts.html.
#pragma once

#include <string>
#include <string_view>

#include "html/template.h"

namespace riders::looking {

using html::escaped;
using html::filled;
using html::Fillings;

extern const std::string_view kParts;  // parts.html

// The template of that id, filled. Throws std::logic_error when there is none.
inline std::string part(std::string_view id, Fillings fillings = {})
{
    return html::part(kParts, id, fillings);
}

}  // namespace riders::looking
