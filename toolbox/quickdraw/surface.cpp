#include "quickdraw/surface.h"

#include <algorithm>
#include <utility>

namespace toolbox::quickdraw {

constexpr std::uint32_t white = 0xFFFFFF;

Surface::Surface(const Rect &bounds, int depth, int scale, Kind kind)
    : bounds_(bounds), depth_(depth), scale_(scale)
{
    if (kind == Kind::blind)
        return;
    picture_.width = (bounds.right - bounds.left) * scale;
    picture_.height = (bounds.bottom - bounds.top) * scale;
    picture_.pixels.assign(std::size_t(picture_.width) * picture_.height, white);
}

static std::uint32_t asShown(std::uint32_t pixel, int depth)
{
    return depth == 1 && pixel != white ? 0 : pixel;
}

void Surface::setDepth(int depth)
{
    if (depth == depth_)
        return;
    depth_ = depth;
    for (std::uint32_t &pixel : picture_.pixels)
        pixel = asShown(pixel, depth);
    changed_ = !blind();
}

bool Surface::takeChanged()
{
    return std::exchange(changed_, false);
}

std::vector<Box> Surface::deviceBoxes(const Area &area) const
{
    const Area here = area & Area(bounds_);
    std::vector<Box> boxes;
    for (const Box &box : here.boxes())
        boxes.push_back({(box.x1 - bounds_.left) * scale_, (box.y1 - bounds_.top) * scale_,
                         (box.x2 - bounds_.left) * scale_, (box.y2 - bounds_.top) * scale_});
    return boxes;
}

namespace {

// An action as two bit operations, the same for every pixel.
struct Change {
    std::uint32_t kept;
    std::uint32_t flipped;

    Change(Action action, const Ink &ink, int depth)
        : kept(action == Action::keep || action == Action::invert ? white : 0), flipped(0)
    {
        if (action == Action::fore || action == Action::back)
            flipped = pixelOf(action == Action::fore ? ink.fore : ink.back, depth);
        else if (action == Action::invert)
            flipped = white;
    }
    std::uint32_t operator()(std::uint32_t pixel) const { return (pixel & kept) ^ flipped; }
};

}  // namespace

void Surface::fillSolid(const Box &box, std::uint32_t value)
{
    for (int y = box.y1; y < box.y2; ++y)
        std::fill(row(y) + box.x1, row(y) + box.x2, value);
}

void Surface::fillPatterned(const Box &box, const Ink &ink)
{
    const Change onBlack(ink.onBlack, ink, depth_), onWhite(ink.onWhite, ink, depth_);
    for (int y = box.y1; y < box.y2; ++y) {
        const unsigned bits = ink.pattern.pat[(y / scale_ + bounds_.top - ink.origin.v) & 7];
        std::uint32_t *pixels = row(y);
        for (int x = box.x1; x < box.x2; ++x) {
            const int column = (x / scale_ + bounds_.left - ink.origin.h) & 7;
            pixels[x] = (bits & 0x80u >> column ? onBlack : onWhite)(pixels[x]);
        }
    }
}

static bool allBytes(const Pattern &pattern, unsigned char value)
{
    return std::all_of(pattern.pat, pattern.pat + 8, [&](unsigned char byte) { return byte == value; });
}

void Surface::fill(const Area &area, const Ink &ink)
{
    if (blind())
        return;
    const bool solid = allBytes(ink.pattern, 0xFF), blank = allBytes(ink.pattern, 0);
    const Change change(solid ? ink.onBlack : ink.onWhite, ink, depth_);
    for (const Box &box : deviceBoxes(area)) {
        changed_ = true;
        if ((solid || blank) && change.kept == 0)
            fillSolid(box, change.flipped);
        else
            fillPatterned(box, ink);
    }
}

static std::uint32_t mixed(std::uint32_t under, std::uint32_t over, unsigned coverage)
{
    std::uint32_t result = 0;
    for (int shift : {0, 8, 16}) {
        unsigned below = under >> shift & 0xFF, above = over >> shift & 0xFF;
        result |= (below * (255 - coverage) + above * coverage + 127) / 255 << shift;
    }
    return result;
}

void Surface::drawGlyph(const GlyphImage &glyph, int penH, int penV, const Area &clip, const Ink &ink)
{
    if (blind())
        return;
    const int left = (penH - bounds_.left) * scale_ + glyph.left;
    const int top = (penV - bounds_.top) * scale_ + glyph.top;
    const bool graded = depth_ > 1 && ink.onBlack != Action::invert;
    const Change change(ink.onBlack, ink, depth_);
    for (const Box &box : deviceBoxes(clip)) {
        for (int y = std::max(box.y1, top); y < std::min(box.y2, top + glyph.height); ++y) {
            for (int x = std::max(box.x1, left); x < std::min(box.x2, left + glyph.width); ++x) {
                unsigned coverage = glyph.coverage[std::size_t(y - top) * glyph.width + (x - left)];
                if (!graded)
                    coverage = coverage >= 128 ? 255 : 0;
                std::uint32_t &pixel = row(y)[x];
                pixel = mixed(pixel, change(pixel), coverage);
                changed_ = true;
            }
        }
    }
}

std::uint32_t Surface::pixel(int h, int v) const
{
    if (blind())
        return white;
    return picture_.pixels[std::size_t(v - bounds_.top) * scale_ * picture_.width + (h - bounds_.left) * scale_];
}

void Surface::setPixel(int h, int v, std::uint32_t value)
{
    if (blind())
        return;
    for (int y = 0; y < scale_; ++y) {
        std::uint32_t *start = row((v - bounds_.top) * scale_ + y) + (h - bounds_.left) * scale_;
        std::fill_n(start, scale_, asShown(value, depth_));
    }
    changed_ = true;
}

}  // namespace toolbox::quickdraw
