// UTF-8 taken apart and put together. Private to the Toolbox.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace toolbox {

// Nothing where the bytes are no UTF-8.
std::optional<std::u32string> codePoints(std::string_view utf8);
void appendUtf8(std::string &utf8, char32_t codePoint);

}  // namespace toolbox
