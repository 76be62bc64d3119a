// Which font file stands for a font number and face. Private to QuickDraw.
#pragma once

#include <cstdint>
#include <string>

namespace toolbox::quickdraw {

struct FontFile {
    std::string name;          // relative to the folder of all fonts
    bool ownEncoding = false;  // its characters are not Mac OS Roman
    bool makeBold = false;     // there is no bold face: to be made from this one
    bool makeItalic = false;
};

// Unknown numbers give the application font, as on a machine without the font.
FontFile fontFileFor(int16_t font, uint8_t face);

}  // namespace toolbox::quickdraw
