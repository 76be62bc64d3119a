#include "quickdraw/surface.h"

#include <algorithm>
#include <array>
#include <utility>

#include "quickdraw/palette.h"

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
    touch({0, 0, picture_.width, picture_.height});
}

void Surface::setDepth(int depth)
{
    if (depth == depth_)
        return;
    depth_ = depth;
    for (std::uint32_t &pixel : picture_.pixels)
        pixel = shownColor(pixel, depth);
    touch({0, 0, picture_.width, picture_.height});
}

void Surface::touch(const Box &box)
{
    if (changed_.x1 == changed_.x2)
        changed_ = box;
    else
        changed_ = {std::min(changed_.x1, box.x1), std::min(changed_.y1, box.y1), std::max(changed_.x2, box.x2),
                    std::max(changed_.y2, box.y2)};
}

std::optional<Rect> Surface::takeChanged()
{
    const Box box = std::exchange(changed_, Box{});
    if (box.x1 == box.x2)
        return std::nullopt;
    return Rect{static_cast<int16_t>(box.y1), static_cast<int16_t>(box.x1), static_cast<int16_t>(box.y2),
                static_cast<int16_t>(box.x2)};
}

Area Surface::device(const Area &global) const
{
    if (blind())
        return {};
    const Area here = global & Area(bounds_);
    return here.movedBy(-bounds_.left, -bounds_.top).scaledBy(scale_);
}

Area Surface::deviceExtent() const
{
    return device(Area(bounds_));
}

namespace {

// What an action turns a pixel into: (pixel & kept) ^ flipped, or its opposite
// where that is not the complement.
struct Change {
    std::uint32_t kept = white;
    std::uint32_t flipped = 0;
    bool looksUp = false;

    Change(Action action, const Ink &ink, int depth)
    {
        if (action == Action::fore || action == Action::back) {
            kept = 0;
            flipped = pixelOf(action == Action::fore ? ink.fore : ink.back, depth);
        } else if (action == Action::invert) {
            looksUp = !oppositesAreComplements(depth);
            flipped = white;
        }
    }
    std::uint32_t operator()(std::uint32_t pixel, int depth) const
    {
        return looksUp ? oppositeColor(pixel, depth) : (pixel & kept) ^ flipped;
    }
};

// One row of a pattern along a stretch of device pixels.
struct PatternRow {
    std::vector<std::uint32_t> kept, flipped;
    std::vector<bool> looksUp;

    void add(const Change &change)
    {
        kept.push_back(change.kept);
        flipped.push_back(change.looksUp ? 0 : change.flipped);
        looksUp.push_back(change.looksUp);
    }
    void change(std::uint32_t *pixels) const
    {
        const std::uint32_t *keep = kept.data(), *flip = flipped.data();
        for (std::size_t i = 0, count = kept.size(); i < count; ++i)
            pixels[i] = (pixels[i] & keep[i]) ^ flip[i];
    }
    // Neighbours are often the same.
    void lookUp(std::uint32_t *pixels, int depth) const
    {
        std::uint32_t known = 0, opposite = oppositeColor(known, depth);
        for (std::size_t i = 0; i < looksUp.size(); ++i) {
            if (!looksUp[i])
                continue;
            if (pixels[i] != known) {
                known = pixels[i];
                opposite = oppositeColor(known, depth);
            }
            pixels[i] = opposite;
        }
    }
};

bool allBytes(const Pattern &pattern, unsigned char value)
{
    return std::all_of(pattern.pat, pattern.pat + 8, [&](unsigned char byte) { return byte == value; });
}

}  // namespace

void Surface::fillSolid(const Box &box, std::uint32_t value)
{
    pixman_fill(picture_.pixels.data(), picture_.width, 32, box.x1, box.y1, box.x2 - box.x1, box.y2 - box.y1,
                value);
}

void Surface::fillPatterned(const Box &box, const Ink &ink)
{
    const Change onBlack(ink.onBlack, ink, depth_), onWhite(ink.onWhite, ink, depth_);
    const int firstColumn = bounds_.left - ink.origin.h, firstRow = bounds_.top - ink.origin.v;
    std::array<PatternRow, 8> rows;
    for (int y = box.y1; y < box.y2; ++y) {
        const auto patternRow = static_cast<std::size_t>((y / scale_ + firstRow) & 7);
        PatternRow &wanted = rows[patternRow];
        for (int x = box.x1; x < box.x2 && wanted.kept.size() < std::size_t(box.x2 - box.x1); ++x) {
            const int column = (x / scale_ + firstColumn) & 7;
            wanted.add((ink.pattern.pat[patternRow] & 0x80u >> column) ? onBlack : onWhite);
        }
        wanted.change(row(y) + box.x1);
        if (onBlack.looksUp || onWhite.looksUp)
            wanted.lookUp(row(y) + box.x1, depth_);
    }
}

void Surface::fill(const Area &area, const Ink &ink)
{
    const bool solid = allBytes(ink.pattern, 0xFF), blank = allBytes(ink.pattern, 0);
    const Action action = solid ? ink.onBlack : ink.onWhite;
    if (blank && action == Action::keep)
        return;
    for (const Box &box : area.boxes()) {
        touch(box);
        if ((solid || blank) && (action == Action::fore || action == Action::back))
            fillSolid(box, Change(action, ink, depth_).flipped);
        else
            fillPatterned(box, ink);
    }
}

namespace {

std::uint32_t mixed(std::uint32_t under, std::uint32_t over, unsigned coverage)
{
    std::uint32_t result = 0;
    for (int shift : {0, 8, 16}) {
        unsigned below = under >> shift & 0xFF, above = over >> shift & 0xFF;
        result |= (below * (255 - coverage) + above * coverage + 127) / 255 << shift;
    }
    return result;
}

}  // namespace

bool Surface::canGrade(const Ink &ink) const
{
    return quickdraw::canGrade(pixelOf(ink.fore, depth_), pixelOf(ink.back, depth_), depth_);
}

void Surface::inkGlyphRow(std::uint32_t *pixels, const std::uint8_t *coverage, int count, const Ink &ink)
{
    const Change change(ink.onBlack, ink, depth_);
    for (int i = 0; i < count; ++i) {
        if (coverage[i] == 0)
            continue;
        const std::uint32_t full = change(pixels[i], depth_);
        if (coverage[i] == 255)
            pixels[i] = full;
        else if (ink.onBlack != Action::invert && quickdraw::canGrade(pixels[i], full, depth_))
            pixels[i] = shownColor(mixed(pixels[i], full, coverage[i]), depth_);
        else if (coverage[i] >= 128)
            pixels[i] = full;
    }
}

void Surface::drawGlyph(const GlyphImage &glyph, int penH, int penV, const Area &area, const Ink &ink)
{
    const int left = deviceH(penH) + glyph.left;
    const int top = deviceV(penV) + glyph.top;
    for (const Box &box : area.boxes()) {
        const Box part{std::max(box.x1, left), std::max(box.y1, top), std::min(box.x2, left + glyph.width),
                       std::min(box.y2, top + glyph.height)};
        if (part.x1 >= part.x2 || part.y1 >= part.y2)
            continue;
        touch(part);
        for (int y = part.y1; y < part.y2; ++y)
            inkGlyphRow(row(y) + part.x1,
                        glyph.coverage.data() + std::size_t(y - top) * std::size_t(glyph.width) + (part.x1 - left),
                        part.x2 - part.x1, ink);
    }
}

void Surface::drawImage(const Picture &image, const Rect &box, bool whiteIsClear, const Area &area)
{
    const int left = deviceH(box.left), top = deviceV(box.top);
    const std::int64_t width = deviceH(box.right) - left, height = deviceV(box.bottom) - top;
    if (image.pixels.empty() || width <= 0 || height <= 0)
        return;
    const Area inside = area & device(Area(box));
    for (const Box &part : inside.boxes()) {
        touch(part);
        for (int y = part.y1; y < part.y2; ++y) {
            auto line = static_cast<std::size_t>(std::int64_t{y - top} * image.height / height);
            const std::uint32_t *source = image.pixels.data() + line * static_cast<std::size_t>(image.width);
            for (int x = part.x1; x < part.x2; ++x) {
                const std::int64_t across = x - left;
                const std::uint32_t pixel = source[across * image.width / width];
                if (!whiteIsClear || pixel != white)
                    row(y)[x] = shownColor(pixel, depth_);
            }
        }
    }
}

Bits Surface::copy(const Rect &global) const
{
    Bits bits{{}, depth_, scale_, {}};
    const Area area = device(Area(global));
    if (area.empty())
        return bits;
    bits.bounds = (Area(global) & Area(bounds_)).bounds();
    const Box box = area.boxes().front();
    bits.picture.width = box.x2 - box.x1;
    bits.picture.height = box.y2 - box.y1;
    for (int y = box.y1; y < box.y2; ++y)
        bits.picture.pixels.insert(bits.picture.pixels.end(), row(y) + box.x1, row(y) + box.x2);
    return bits;
}

// Between displays of different scales, each pixel takes the nearest one.
void Surface::put(const Bits &bits, int dh, int dv, const Area &area)
{
    const Area there = device(area & Area(bits.bounds).movedBy(dh, dv));
    const int left = deviceH(bits.bounds.left + dh), top = deviceV(bits.bounds.top + dv);
    const bool alike = bits.scale == scale_ && bits.depth == depth_;
    for (const Box &box : there.boxes()) {
        touch(box);
        for (int y = box.y1; y < box.y2; ++y) {
            const auto line = static_cast<std::size_t>((y - top) * bits.scale / scale_);
            const std::uint32_t *source = bits.picture.pixels.data() + line * std::size_t(bits.picture.width);
            if (alike)
                std::copy(source + (box.x1 - left), source + (box.x2 - left), row(y) + box.x1);
            for (int x = box.x1; !alike && x < box.x2; ++x)
                row(y)[x] = shownColor(source[(x - left) * bits.scale / scale_], depth_);
        }
    }
}

}  // namespace toolbox::quickdraw
