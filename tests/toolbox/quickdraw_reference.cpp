#include "quickdraw_reference.h"

#include <cmath>
#include <cstdlib>

#include "quickdraw/ink.h"
#include "quickdraw/palette.h"

using namespace toolbox::quickdraw;

namespace {

constexpr Pattern solid{{255, 255, 255, 255, 255, 255, 255, 255}};

bool within(const Rect &r, int h, int v)
{
    return h >= r.left && h < r.right && v >= r.top && v < r.bottom;
}

Rect withoutRim(const Rect &r, Point pen)
{
    return {int16_t(r.top + pen.v), int16_t(r.left + pen.h), int16_t(r.bottom - pen.v), int16_t(r.right - pen.h)};
}

// Twice the distance of a pixel's centre from the middle of the nearest
// corner's oval, inside the corner; 0 outside it.
std::int64_t towardsCorner(int place, int low, int high, int oval)
{
    const int fromLow = 2 * (place - low) + 1, fromHigh = 2 * (high - place) - 1;
    return std::max(0, oval - std::min(fromLow, fromHigh));
}

struct Rounded {
    int left, top, right, bottom, ovalWidth, ovalHeight;

    Rounded(const Rect &r, int ovalWidth, int ovalHeight, int scale)
        : left(r.left * scale), top(r.top * scale), right(r.right * scale), bottom(r.bottom * scale),
          ovalWidth(std::clamp(ovalWidth * scale, 0, std::max(right - left, 0))),
          ovalHeight(std::clamp(ovalHeight * scale, 0, std::max(bottom - top, 0)))
    {
    }
    bool holds(int x, int y) const
    {
        if (x < left || x >= right || y < top || y >= bottom)
            return false;
        if (ovalWidth == 0 || ovalHeight == 0)
            return true;
        const std::int64_t h = towardsCorner(x, left, right, ovalWidth),
                           v = towardsCorner(y, top, bottom, ovalHeight);
        const std::int64_t w2 = std::int64_t(ovalWidth) * ovalWidth, h2 = std::int64_t(ovalHeight) * ovalHeight;
        return h == 0 || v == 0 || h * h * h2 + v * v * w2 <= w2 * h2;
    }
};

}  // namespace

SlowCanvas::SlowCanvas(int depth, int scale)
    : depth_(depth), scale_(scale), pixels_(std::size_t(width()) * std::size_t(height()), white)
{
    state.clip = [](int, int) { return true; };
}

std::uint32_t SlowCanvas::changed(std::uint32_t under, bool isBlack, int mode) const
{
    const std::uint32_t fore = pixelOf(state.fore, depth_), back = pixelOf(state.back, depth_);
    switch (mode) {
    case patOr:
        return isBlack ? fore : under;
    case patXor:
        return isBlack ? oppositeColor(under, depth_) : under;
    case patBic:
        return isBlack ? back : under;
    default:
        return isBlack ? fore : back;
    }
}

void SlowCanvas::ink(const Inside &inside, const Pattern &pattern, int mode)
{
    for (int y = 0; y < height(); ++y)
        for (int x = 0; x < width(); ++x) {
            const int h = x / scale_, v = y / scale_;
            if (!state.clip(h, v) || !inside(x, y))
                continue;
            std::uint32_t &pixel = pixels_[std::size_t(y) * std::size_t(width()) + std::size_t(x)];
            pixel = changed(pixel, pattern.pat[v % 8] >> (7 - h % 8) & 1, mode);
        }
}

void SlowCanvas::inkPixels(const Inside &inside, const Pattern &pattern, int mode)
{
    ink([&](int x, int y) { return inside(x / scale_, y / scale_); }, pattern, mode);
}

void SlowCanvas::frameRect(const Rect &r)
{
    const Rect hole = withoutRim(r, state.penSize);
    inkPixels([&](int h, int v) { return within(r, h, v) && !within(hole, h, v); }, state.pattern, state.mode);
}

void SlowCanvas::paintRect(const Rect &r)
{
    inkPixels([&](int h, int v) { return within(r, h, v); }, state.pattern, state.mode);
}

void SlowCanvas::eraseRect(const Rect &r)
{
    inkPixels([&](int h, int v) { return within(r, h, v); }, state.background, patCopy);
}

void SlowCanvas::invertRect(const Rect &r)
{
    inkPixels([&](int h, int v) { return within(r, h, v); }, solid, patXor);
}

void SlowCanvas::fillRect(const Rect &r, const Pattern &pattern)
{
    inkPixels([&](int h, int v) { return within(r, h, v); }, pattern, patCopy);
}

// Stamps the pen on the nearest pixel, step by step along the longer direction.
void SlowCanvas::line(Point from, Point to)
{
    const int across = std::abs(to.h - from.h), down = std::abs(to.v - from.v), steps = std::max(across, down);
    if (across >= down ? to.h < from.h : to.v < from.v)
        std::swap(from, to);
    std::vector<Point> stamps;
    for (int step = 0; step <= steps; ++step) {
        auto at = [&](int first, int last) {
            return int16_t(steps ? std::floor(first + double(last - first) * step / steps + 0.5) : first);
        };
        stamps.push_back({at(from.v, to.v), at(from.h, to.h)});
    }
    auto stamped = [&](int h, int v) {
        for (Point stamp : stamps)
            if (h >= stamp.h && h < stamp.h + state.penSize.h && v >= stamp.v && v < stamp.v + state.penSize.v)
                return true;
        return false;
    };
    inkPixels(stamped, state.pattern, state.mode);
}

void SlowCanvas::paintRoundRect(const Rect &r, int ovalWidth, int ovalHeight)
{
    const Rounded shape(r, ovalWidth, ovalHeight, scale_);
    ink([&](int x, int y) { return shape.holds(x, y); }, state.pattern, state.mode);
}

void SlowCanvas::frameRoundRect(const Rect &r, int ovalWidth, int ovalHeight)
{
    const Point pen = state.penSize;
    const Rounded outer(r, ovalWidth, ovalHeight, scale_);
    const Rounded inner(withoutRim(r, pen), ovalWidth - 2 * pen.h, ovalHeight - 2 * pen.v, scale_);
    ink([&](int x, int y) { return outer.holds(x, y) && !inner.holds(x, y); }, state.pattern, state.mode);
}

// A pixel is inside when an odd number of edges pass to the left of its centre
// or through it.
void SlowCanvas::paintPolygon(const std::vector<Point> &points)
{
    auto edgesToTheLeft = [&](int x, int y) {
        int count = 0;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const Point a = points[i], b = points[(i + 1) % points.size()];
            const Point upper = a.v < b.v ? a : b, lower = a.v < b.v ? b : a;
            const double top = upper.v * scale_, bottom = lower.v * scale_, middle = y + 0.5;
            if (middle < top || middle >= bottom)
                continue;
            // Products of whole and half numbers are exact.
            const double run = double(lower.h - upper.h) * scale_, rise = bottom - top;
            count += (middle - top) * run <= (x + 0.5 - upper.h * scale_) * rise;
        }
        return count;
    };
    ink([&](int x, int y) { return edgesToTheLeft(x, y) % 2 == 1; }, state.pattern, state.mode);
}

void SlowCanvas::scrollRect(const Rect &r, int dh, int dv)
{
    const std::vector<std::uint32_t> before = pixels_;
    auto moves = [&](int h, int v) {
        return h >= 0 && h < CanvasSize::width && v >= 0 && v < CanvasSize::height && within(r, h, v) &&
               state.clip(h, v);
    };
    inkPixels([&](int h, int v) { return within(r, h, v) && !moves(h - dh, v - dv); }, state.background, patCopy);
    for (int y = 0; y < height(); ++y)
        for (int x = 0; x < width(); ++x)
            if (moves(x / scale_, y / scale_) && moves(x / scale_ - dh, y / scale_ - dv))
                pixels_[std::size_t(y * width() + x)] =
                    before[std::size_t((y - dv * scale_) * width() + x - dh * scale_)];
}
