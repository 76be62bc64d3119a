// Faces that are made from plain glyphs. Private to QuickDraw.
#pragma once

#include "quickdraw/surface.h"

namespace toolbox::quickdraw {

// Each QuickDraw pixel also inks its right neighbour, `scale` device pixels
// further on.
GlyphImage emboldened(const GlyphImage &thin, int scale);

// A line around the glyph, hollow where the glyph was.
GlyphImage outlined(const GlyphImage &plain, int scale);
// The same, thicker by `depth` pixels below and to the right.
GlyphImage shadowed(const GlyphImage &plain, int scale, int depth);

}  // namespace toolbox::quickdraw
