#include "quickdraw/surface.h"

#include <algorithm>
#include <new>

namespace toolbox::quickdraw {

constexpr std::uint32_t white = 0xFFFFFF;

Surface::Surface(const Rect &bounds, int depth, int scale) : bounds_(bounds), depth_(depth), scale_(scale)
{
    picture_.width = (bounds.right - bounds.left) * scale;
    picture_.height = (bounds.bottom - bounds.top) * scale;
    picture_.pixels.assign(std::size_t(picture_.width) * picture_.height, white);
    image_.reset(pixman_image_create_bits(PIXMAN_x8r8g8b8, picture_.width, picture_.height,
                                          picture_.pixels.data(), picture_.width * 4));
    if (!image_)
        throw std::bad_alloc();
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
    changed_ = true;
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

void Surface::act(std::uint32_t &pixel, Action action, const Ink &ink) const
{
    switch (action) {
    case Action::keep:
        break;
    case Action::fore:
        pixel = pixelOf(ink.fore, depth_);
        break;
    case Action::back:
        pixel = pixelOf(ink.back, depth_);
        break;
    case Action::invert:
        pixel ^= white;
        break;
    }
}

void Surface::fillSolid(const std::vector<Box> &boxes, std::uint32_t value)
{
    auto component = [&](int shift) { return static_cast<std::uint16_t>((value >> shift & 0xFF) * 0x101); };
    const pixman_color_t color{component(16), component(8), component(0), 0xFFFF};
    pixman_image_fill_boxes(PIXMAN_OP_SRC, image_.get(), &color, static_cast<int>(boxes.size()), boxes.data());
    // The unused byte is part of what a picture promises.
    for (const Box &box : boxes)
        for (int y = box.y1; y < box.y2; ++y)
            std::for_each(row(y) + box.x1, row(y) + box.x2, [](std::uint32_t &pixel) { pixel &= white; });
}

void Surface::fillPatterned(const Box &box, const Ink &ink)
{
    for (int y = box.y1; y < box.y2; ++y) {
        const unsigned bits = ink.pattern.pat[(y / scale_ + bounds_.top - ink.origin.v) & 7];
        for (int x = box.x1; x < box.x2; ++x) {
            const int column = (x / scale_ + bounds_.left - ink.origin.h) & 7;
            act(row(y)[x], bits & 0x80u >> column ? ink.onBlack : ink.onWhite, ink);
        }
    }
}

static bool allBytes(const Pattern &pattern, unsigned char value)
{
    return std::all_of(pattern.pat, pattern.pat + 8, [&](unsigned char byte) { return byte == value; });
}

void Surface::fill(const Area &area, const Ink &ink)
{
    const std::vector<Box> boxes = deviceBoxes(area);
    if (boxes.empty())
        return;
    changed_ = true;
    const bool solid = allBytes(ink.pattern, 0xFF), blank = allBytes(ink.pattern, 0);
    const Action action = solid ? ink.onBlack : ink.onWhite;
    if ((solid || blank) && (action == Action::fore || action == Action::back))
        fillSolid(boxes, pixelOf(action == Action::fore ? ink.fore : ink.back, depth_));
    else
        for (const Box &box : boxes)
            fillPatterned(box, ink);
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
    const int left = (penH - bounds_.left) * scale_ + glyph.left;
    const int top = (penV - bounds_.top) * scale_ + glyph.top;
    const bool graded = depth_ > 1 && ink.onBlack != Action::invert;
    for (const Box &box : deviceBoxes(clip)) {
        for (int y = std::max(box.y1, top); y < std::min(box.y2, top + glyph.height); ++y) {
            for (int x = std::max(box.x1, left); x < std::min(box.x2, left + glyph.width); ++x) {
                unsigned coverage = glyph.coverage[std::size_t(y - top) * glyph.width + (x - left)];
                if (!graded)
                    coverage = coverage >= 128 ? 255 : 0;
                std::uint32_t over = row(y)[x];
                act(over, ink.onBlack, ink);
                row(y)[x] = coverage == 255 ? over : mixed(row(y)[x], over, coverage);
                changed_ = true;
            }
        }
    }
}

std::uint32_t Surface::pixel(int h, int v) const
{
    return picture_.pixels[std::size_t(v - bounds_.top) * scale_ * picture_.width + (h - bounds_.left) * scale_];
}

void Surface::setPixel(int h, int v, std::uint32_t value)
{
    for (int y = 0; y < scale_; ++y) {
        std::uint32_t *start = row((v - bounds_.top) * scale_ + y) + (h - bounds_.left) * scale_;
        std::fill_n(start, scale_, asShown(value, depth_));
    }
    changed_ = true;
}

}  // namespace toolbox::quickdraw
