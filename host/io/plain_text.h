// Text from jobs and file names, made fit to be shown.
#pragma once

#include <string>

namespace riders::io {

// UTF-8 from bytes in UTF-8 or, if they are not, in Latin-1. Whatever a terminal or a browser would obey
// instead of showing it becomes a blank: control characters, line ends too, and changes of direction.
std::string plainText(const std::string &bytes);
// The same, line by line; the line ends stay.
std::string plainLines(const std::string &bytes);

}  // namespace riders::io
