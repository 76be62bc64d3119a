// Numbers as people write them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace riders::screens {

// With a period, at most four decimals, and none that say nothing: 162, 22.5, 18.4349.
std::string numberText(double value);
// All of the text as a number such as 133, 22.5, 22,5 or -7.5; nothing where it is something else, or not finite.
// A comma between digits is a decimal comma, never one between thousands.
std::optional<double> numberFromText(std::string_view text);
// The text with a period, as the dialogs want it, where it is a number with a decimal comma; otherwise as it is.
std::string withPeriod(const std::string &text);

}  // namespace riders::screens
