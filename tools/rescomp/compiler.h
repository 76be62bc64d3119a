// From a resource source, with all it includes, to resources.
#pragma once

#include <filesystem>

#include "resources.h"

namespace rescomp {

// Throws SourceError at the first thing that is wrong.
Resources compile(const std::filesystem::path &source);
// The same for a text that need not be in a file; files it names are looked
// for beside name.
Resources compileText(const std::string &name, const std::string &utf8);

// Writes the bytes to a file of another name beside it, then renames that, so
// that the file is always the old one or the whole new one. Throws
// std::runtime_error.
void writeWhole(const std::filesystem::path &path, const std::string &bytes);

// The fork inside an AppleDouble file, with blank Finder information.
std::string appleDoubleAround(const std::string &fork);

}  // namespace rescomp
