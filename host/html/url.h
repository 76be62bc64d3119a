// Links to files.
#pragma once

#include <string>

namespace riders::html {

// A relative path as a relative URL: all bytes but letters, digits and /-._~ are written as %XX.
std::string urlOf(const std::string &path);

}  // namespace riders::html
