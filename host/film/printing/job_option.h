// Options of a print job, as people write them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace riders::printing {

struct JobOption {
    std::string name, value;
};

// NAME=VALUE; NAME alone is NAME=true, noNAME is not taken apart. Nothing where there is no name, or a character
// that ends a line.
std::optional<JobOption> jobOptionFromText(std::string_view text);

// Whether two values mean the same: case apart, with true, yes and on alike, and false, no and off.
bool sameValue(std::string_view one, std::string_view other);
// Case apart.
bool sameName(std::string_view one, std::string_view other);

// The value of the last option of that name, or nothing.
std::optional<std::string> valueOf(const std::vector<JobOption> &options, std::string_view name);

}  // namespace riders::printing
