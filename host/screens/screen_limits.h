// What a plate's screen may be, wherever it is written.
#pragma once

#include <cstddef>
#include <string>

namespace riders::screens {

inline constexpr double kLeastFrequency = 1, kMostFrequency = 999;  // lines per inch, as in the dialogs
inline constexpr double kMostAngle = 360;                           // degrees, either way
inline constexpr std::size_t kLongestPlateName = 127;               // bytes, as in PostScript's names

// Each returns what was expected instead ("a frequency from 1 to 999 lines per inch"); empty where it is right.
// What is no finite number is never right.
std::string wrongFrequency(double value);
std::string wrongAngle(double value);
std::string wrongPlateName(const std::string &name);
// Also for other text: whether a terminal or a browser would obey some of it, or it is not UTF-8.
bool hasControlCharacters(const std::string &text);

// The process ink that a name which is not one probably means ("Cyan" for "C", "Process Cyan"); else empty.
std::string processInkMeant(const std::string &name);
// The process plates' names as PostScript spells them, whatever the case of the letters; others as they are.
std::string plateName(const std::string &typed);

}  // namespace riders::screens
