// Results as JSON, for programs.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace riders::io {

// In quotation marks. What is not UTF-8 is taken for Latin-1.
std::string jsonText(std::string_view text);
// null where it is not finite.
std::string jsonNumber(double value);
// Of values that are JSON already; the names are not.
std::string jsonObject(const std::vector<std::pair<std::string, std::string>> &members);
std::string jsonArray(const std::vector<std::string> &values);

}  // namespace riders::io
