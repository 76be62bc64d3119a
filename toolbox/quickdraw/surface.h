// The pixels of one screen. Private to QuickDraw.
//
// Everything is given in global coordinates. A surface may hold several device
// pixels for each of QuickDraw's: its scale, an integer. What is drawn covers
// scale by scale device pixels for each pixel; glyphs come at device size.
#pragma once

#include <cstdint>
#include <vector>

#include "quickdraw/area.h"
#include "quickdraw/ink.h"
#include "toolbox/host/machine.h"

namespace toolbox::quickdraw {

// How much of each device pixel a glyph covers, 0 to 255, rows one after
// another; topLeft in device pixels relative to the pen.
struct GlyphImage {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> coverage;
};

class Surface {
public:
    // A blind surface holds no pixels and takes no drawing; it reads as white.
    enum class Kind { seen, blind };
    Surface(const Rect &bounds, int depth, int scale = 1, Kind kind = Kind::seen);

    const Rect &bounds() const { return bounds_; }
    int depth() const { return depth_; }
    int scale() const { return scale_; }
    bool blind() const { return picture_.pixels.empty(); }
    // Everything already there becomes what the new depth can show.
    void setDepth(int depth);

    // Fills the part of the area that lies on the surface.
    void fill(const Area &area, const Ink &ink);
    // Lets the ink's black action through the glyph, in the part of it that
    // lies in clip. The pen is at a global point.
    void drawGlyph(const GlyphImage &glyph, int penH, int penV, const Area &clip, const Ink &ink);

    // One pixel (the top left device pixel of it).
    std::uint32_t pixel(int h, int v) const;
    void setPixel(int h, int v, std::uint32_t value);

    // Empty when blind.
    const Picture &picture() const { return picture_; }
    // Whether anything was drawn since the last call.
    bool takeChanged();

private:
    std::uint32_t *row(int deviceRow) { return picture_.pixels.data() + std::size_t(deviceRow) * picture_.width; }
    std::vector<Box> deviceBoxes(const Area &area) const;
    void fillSolid(const Box &box, std::uint32_t value);
    void fillPatterned(const Box &box, const Ink &ink);

    Rect bounds_;
    int depth_;
    int scale_;
    Picture picture_;
    bool changed_ = false;
};

}  // namespace toolbox::quickdraw
