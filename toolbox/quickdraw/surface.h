// The pixels of one display. Private to QuickDraw.
//
// A surface holds several device pixels for each of QuickDraw's, scale by
// scale of them. Its device coordinates are those of its picture; device()
// converts global ones to them.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "quickdraw/area.h"
#include "quickdraw/ink.h"
#include "toolbox/host/machine.h"

namespace toolbox::quickdraw {

// How much of each device pixel a glyph covers, 0 to 255, rows one after
// another; left and top in device pixels relative to the pen.
struct GlyphImage {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> coverage;
};

// A copy of what a display showed.
struct Bits {
    Rect bounds{};  // global
    int depth = 32;
    int scale = 1;
    Picture picture;  // scale times as wide and high
};

class Surface {
public:
    // A blind surface holds no pixels and takes no drawing.
    enum class Kind { seen, blind };
    Surface(const Rect &bounds, int depth, int scale = 1, Kind kind = Kind::seen);

    const Rect &bounds() const { return bounds_; }
    int depth() const { return depth_; }
    int scale() const { return scale_; }
    bool blind() const { return picture_.pixels.empty(); }
    // Everything already there becomes what the new depth can show.
    void setDepth(int depth);

    // The part of a global area that lies on the surface; empty when blind.
    Area device(const Area &global) const;
    // All of the surface; empty when blind.
    Area deviceExtent() const;
    // Where a point of the global plane lies.
    int deviceH(int h) const { return (h - bounds_.left) * scale_; }
    int deviceV(int v) const { return (v - bounds_.top) * scale_; }

    // The areas passed to these are device areas that lie on the surface.
    void fill(const Area &area, const Ink &ink);
    // Applies the ink's black action through the glyph, only within the area.
    // The pen is at a global point.
    void drawGlyph(const GlyphImage &glyph, int penH, int penV, const Area &area, const Ink &ink);
    // Whether the display has the colours between the ink's two, so that glyphs
    // may have grades.
    bool canGrade(const Ink &ink) const;
    // Stretches the image to the global box, and draws the part that lies in the
    // area. The image's white may be clear.
    void drawImage(const Picture &image, const Rect &box, bool whiteIsClear, const Area &area);

    // The part of a global rectangle that lies on the surface.
    Bits copy(const Rect &global) const;
    // Puts the bits back, moved by (dh, dv), global; only in the area, which is
    // global.
    void put(const Bits &bits, int dh, int dv, const Area &area);

    // Empty when blind.
    const Picture &picture() const { return picture_; }
    // The device pixels that may have changed since the last call, all of them
    // at first; nothing when none has.
    std::optional<Rect> takeChanged();

private:
    std::uint32_t *row(int deviceRow) { return picture_.pixels.data() + std::size_t(deviceRow) * picture_.width; }
    const std::uint32_t *row(int deviceRow) const
    {
        return picture_.pixels.data() + std::size_t(deviceRow) * picture_.width;
    }
    void touch(const Box &box);
    void fillSolid(const Box &box, std::uint32_t value);
    void fillPatterned(const Box &box, const Ink &ink);
    void inkGlyphRow(std::uint32_t *pixels, const std::uint8_t *coverage, int count, const Ink &ink);

    Rect bounds_;
    int depth_;
    int scale_;
    Picture picture_;
    Box changed_{};
};

}  // namespace toolbox::quickdraw
