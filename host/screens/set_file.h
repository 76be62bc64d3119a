// The file of a set of screens; docs/riders-file.md, "The screen set", describes its form.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "screens/screen_set.h"

namespace riders::screens {

inline constexpr std::size_t kMostSetBytes = 64 << 10;
inline constexpr std::size_t kMostSetPlates = 64;
inline constexpr std::size_t kLongestSetText = 1000;  // bytes of a name, a use, a source, a shape
inline constexpr double kLeastFactor = 0.1, kMostFactor = 10;

// The set in these bytes. Throws io::Refusal, "file:line:column: what was expected", with that name for the file.
// A shape that is written as a path stays as it is written.
ScreenSet setFromText(std::string_view bytes, const std::string &file);
// The set in that file; a path in it counts from the file's folder. Throws io::Refusal.
ScreenSet setFromFile(const std::filesystem::path &file);

}  // namespace riders::screens
