// UTF-8 taken apart. Private to the Toolbox.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace toolbox {

// Nothing where the bytes are no UTF-8.
std::optional<std::u32string> codePoints(std::string_view utf8);

}  // namespace toolbox
