// FreeType, loaded with the first letter: commands without dialogs draw none.
#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_ADVANCES_H
#include FT_SYNTHESIS_H

#include "toolbox/host/shared_library.h"

namespace toolbox::quickdraw {

// The library's functions, without their prefix. They are called as its own documentation has them.
struct FreeType {
    SharedLibrary library{"libfreetype.so.6", "libfreetype6"};

    decltype(&::FT_Init_FreeType) init = library("FT_Init_FreeType");
    decltype(&::FT_Done_FreeType) done = library("FT_Done_FreeType");
    decltype(&::FT_New_Face) newFace = library("FT_New_Face");
    decltype(&::FT_Done_Face) doneFace = library("FT_Done_Face");
    decltype(&::FT_Select_Charmap) selectCharmap = library("FT_Select_Charmap");
    decltype(&::FT_Get_Char_Index) charIndex = library("FT_Get_Char_Index");
    decltype(&::FT_Get_Advance) advance = library("FT_Get_Advance");
    decltype(&::FT_Set_Pixel_Sizes) setPixelSizes = library("FT_Set_Pixel_Sizes");
    decltype(&::FT_Load_Glyph) loadGlyph = library("FT_Load_Glyph");
    decltype(&::FT_Render_Glyph) renderGlyph = library("FT_Render_Glyph");
    decltype(&::FT_GlyphSlot_Oblique) slant = library("FT_GlyphSlot_Oblique");
};

// Loads it the first time. Throws std::runtime_error where it is not installed.
const FreeType &freeType();

}  // namespace toolbox::quickdraw
