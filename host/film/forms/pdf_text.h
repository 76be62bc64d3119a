// Text as PDF has it.
#pragma once

#include <string>
#include <string_view>

namespace riders::film {

// For people to read, from UTF-8: <FEFF...>.
std::string pdfText(std::string_view text);
// A name, with its slash.
std::string pdfName(std::string_view text);

}  // namespace riders::film
