#include "film/drawing/drawing.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace riders::film {

namespace {

struct Span {
    std::int64_t from = 0, to = 0;  // empty where from is not below to
};

void blacken(Span span, std::uint8_t *bits, std::int64_t columns)
{
    span.from = std::max<std::int64_t>(span.from, 0);
    span.to = std::min(span.to, columns);
    while (span.from < span.to) {
        const int first = static_cast<int>(span.from & 7);
        const int count = static_cast<int>(std::min<std::int64_t>(8 - first, span.to - span.from));
        bits[span.from >> 3] |= static_cast<std::uint8_t>((0xff >> first) & (0xff << (8 - first - count)));
        span.from += count;
    }
}

// The pixels of row y whose centres are in the ellipse that fills the box.
Span ellipseSpan(const PixelBox &box, std::int64_t y)
{
    const double down = (static_cast<double>(y) + 0.5 - static_cast<double>(box.top + box.bottom) / 2) /
                        (static_cast<double>(box.height()) / 2);
    if (!(std::fabs(down) <= 1))
        return {};
    const double half = static_cast<double>(box.width()) / 2 * std::sqrt(1 - down * down);
    // Counted from the middle, so that left and right are alike whatever the rounding.
    const bool even = box.width() % 2 == 0;
    const auto reach = static_cast<std::int64_t>(even ? std::floor(half + 0.5) : std::floor(half));
    const std::int64_t middle = box.left + box.width() / 2;
    return {middle - reach, middle + reach + (even ? 0 : 1)};
}

void drawPicture(const PixelBox &box, const BitPicture &picture, std::int64_t y, std::uint8_t *bits,
                 std::int64_t columns)
{
    const std::uint8_t *row = picture.bits.data() + static_cast<size_t>(y - box.top) * picture.rowBytes();
    for (std::int64_t x = std::max<std::int64_t>(0, -box.left); x < box.width() && box.left + x < columns; ++x)
        if (row[x >> 3] >> (7 - (x & 7)) & 1)
            bits[(box.left + x) >> 3] |= static_cast<std::uint8_t>(0x80 >> ((box.left + x) & 7));
}

bool hasRow(const PixelBox &box, std::int64_t y)
{
    return y >= box.top && y < box.bottom;
}

}  // namespace

PixelBox PixelBox::moved(std::int64_t toTheRight, std::int64_t down) const
{
    return {left + toTheRight, top + down, right + toTheRight, bottom + down};
}

PixelBox PixelBox::grown(std::int64_t across, std::int64_t down) const
{
    return {left - across, top - down, right + across, bottom + down};
}

PixelBox PixelBox::with(const PixelBox &other) const
{
    return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
            std::max(bottom, other.bottom)};
}

void Drawing::ring(const PixelBox &box, std::int64_t across, std::int64_t down)
{
    rings_.push_back({box, box.grown(-across, -down)});
}

void Drawing::picture(std::int64_t left, std::int64_t top, BitPicture picture)
{
    const PixelBox box{left, top, left + static_cast<std::int64_t>(picture.columns),
                       top + static_cast<std::int64_t>(picture.rows)};
    pictures_.push_back({box, std::move(picture)});
}

void Drawing::move(std::int64_t right, std::int64_t down)
{
    for (PixelBox &box : boxes_)
        box = box.moved(right, down);
    for (Ring &ring : rings_)
        ring = {ring.outer.moved(right, down), ring.inner.moved(right, down)};
    for (Placed &placed : pictures_)
        placed.box = placed.box.moved(right, down);
}

PixelBox Drawing::boundsWith(PixelBox box) const
{
    for (const PixelBox &drawn : boxes_)
        box = box.with(drawn);
    for (const Ring &ring : rings_)
        box = box.with(ring.outer);
    for (const Placed &placed : pictures_)
        box = box.with(placed.box);
    return box;
}

void Drawing::draw(std::int64_t y, std::uint8_t *bits, std::size_t columns) const
{
    const auto width = static_cast<std::int64_t>(columns);
    for (const PixelBox &box : boxes_)
        if (hasRow(box, y))
            blacken({box.left, box.right}, bits, width);
    for (const Ring &ring : rings_) {
        if (!hasRow(ring.outer, y))
            continue;
        const Span outer = ellipseSpan(ring.outer, y), inner = ellipseSpan(ring.inner, y);
        if (inner.from < inner.to) {
            blacken({outer.from, inner.from}, bits, width);
            blacken({inner.to, outer.to}, bits, width);
        } else {
            blacken(outer, bits, width);
        }
    }
    for (const Placed &placed : pictures_)
        if (hasRow(placed.box, y))
            drawPicture(placed.box, placed.picture, y, bits, width);
}

}  // namespace riders::film
