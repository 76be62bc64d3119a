// Glyphs: how far they advance and what they look like. Private to QuickDraw.
//
// The faces are the URW base fonts; library and faces are opened when first
// needed and kept. Advances are whole pixels, the same on every display: the
// design width at the size, rounded, so that hinting has no say in layout.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "quickdraw/surface.h"

namespace toolbox::quickdraw {

struct TextStyle {
    int16_t font = 0;
    uint8_t face = 0;
    int16_t size = 0;   // 0: 12

    static TextStyle of(const GrafPort &port) { return {port.txFont, port.txFace, port.txSize}; }
    bool operator==(const TextStyle &) const = default;
};

// Pixels to the next character. All 256 characters have a width; those that the
// font lacks have that of '?'.
int advanceOf(const TextStyle &style, uint8_t character);
// In device pixels. Graded: 256 levels of coverage, else only 0 and 255. Valid
// until glyphs are next forgotten.
const GlyphImage &glyphOf(const TextStyle &style, uint8_t character, int scale, bool graded);
// The same for any Unicode character, without effects and marks; nothing where
// the font lacks it.
std::optional<int> wideAdvanceOf(const TextStyle &style, char32_t character);
const GlyphImage &wideGlyphOf(const TextStyle &style, char32_t character, int scale, bool graded);
// Depends on the size alone, so that lines keep their height when the face changes.
FontInfo fontInfoOf(const TextStyle &style);

// Sets the folder of the system's fonts and forgets all faces. A font that is missing there
// raises a std::runtime_error naming the file and the package it comes from.
void setFontFolder(const std::filesystem::path &folder);
extern const char *const usualFontFolder;

}  // namespace toolbox::quickdraw
