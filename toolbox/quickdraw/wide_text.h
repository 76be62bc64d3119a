// Text beyond Mac OS Roman, for names that other programs gave. Private to the
// Toolbox.
#pragma once

#include <optional>
#include <string_view>

namespace toolbox::quickdraw {

// In pixels, in the current port's font and size, plain or bold; nothing where
// the bytes are not UTF-8 or the font lacks a character.
std::optional<int> widthOfWide(std::string_view utf8);
// Draws at the pen, over what is there, and advances the pen. Only text that has
// a width.
void drawWide(std::string_view utf8);

}  // namespace toolbox::quickdraw
