#include "toolbox/quickdraw.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>

#include "quickdraw/current_port.h"
#include "quickdraw/drawing.h"
#include "quickdraw/polygons.h"
#include "toolbox/host/trace.h"
#include "toolbox/memory.h"

namespace toolbox::quickdraw {
namespace {

constexpr std::size_t headerBytes = offsetof(PolyRec, polyPoints);
constexpr std::size_t mostPoints = (32767 - headerBytes) / sizeof(Point);  // polySize is 16 bits

struct {
    PolyHandle polygon = nullptr;
    std::vector<Point> points;
} open;

std::vector<Point> pointsOf(PolyHandle polygon)
{
    if (!polygon || !*polygon || (*polygon)->polySize <= static_cast<int16_t>(headerBytes))
        return {};
    std::vector<Point> points(((*polygon)->polySize - headerBytes) / sizeof(Point));
    std::memcpy(points.data(), reinterpret_cast<const char *>(*polygon) + headerBytes,
                points.size() * sizeof(Point));
    return points;
}

Rect extentOf(const std::vector<Point> &points)
{
    if (points.empty())
        return {};
    Rect extent{points[0].v, points[0].h, points[0].v, points[0].h};
    for (Point point : points)
        extent = {std::min(extent.top, point.v), std::min(extent.left, point.h), std::max(extent.bottom, point.v),
                  std::max(extent.right, point.h)};
    return extent;
}

// In device pixels.
struct Corner {
    std::int64_t v, h;
};

// A pixel belongs to the polygon when its centre lies in it. Returns the first
// pixel whose centre lies at or right of the edge, on the row of centres through
// v + 1/2: the edge is at h0 + (2v + 1 - 2 v0) dh / 2 dv, the centre of pixel h
// at h + 1/2.
int firstPixelRightOf(Corner upper, Corner lower, int v)
{
    const std::int64_t dv = lower.v - upper.v, dh = lower.h - upper.h;
    const std::int64_t numerator = (2 * std::int64_t(v) + 1 - 2 * upper.v) * dh - dv, divisor = 2 * dv;
    const std::int64_t quotient = numerator / divisor;
    return static_cast<int>(upper.h + (numerator % divisor > 0 ? quotient + 1 : quotient));
}

void addRow(std::vector<Box> &boxes, const std::vector<Corner> &corners, int v)
{
    std::vector<int> crossings;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        Corner upper = corners[i], lower = corners[(i + 1) % corners.size()];
        if (upper.v > lower.v)
            std::swap(upper, lower);
        if (upper.v <= v && v < lower.v)
            crossings.push_back(firstPixelRightOf(upper, lower, v));
    }
    std::sort(crossings.begin(), crossings.end());
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2)
        boxes.push_back({crossings[i], v, crossings[i + 1], v + 1});
}

// Even-odd: a part enclosed twice is outside.
Area insideOf(const std::vector<Point> &points, int scale, const Box &within)
{
    const Rect extent = extentOf(points);
    std::vector<Corner> corners;
    corners.reserve(points.size());
    for (Point point : points)
        corners.push_back({std::int64_t{point.v} * scale, std::int64_t{point.h} * scale});
    std::vector<Box> boxes;
    const int last = std::min(extent.bottom * scale, within.y2);
    for (int v = std::max(extent.top * scale, within.y1); v < last; ++v)
        addRow(boxes, corners, v);
    return Area(boxes);
}

void tracePolygon(const char *call, const std::vector<Point> &points, const GrafPort &port)
{
    if (!trace::drawingWanted())
        return;
    std::string list;
    for (Point point : points)
        list += "(" + std::to_string(point.h) + "," + std::to_string(point.v) + ") ";
    trace::drawing("%s %scolor %d", call, list.c_str(), static_cast<int>(port.fgColor));
}

void store(const std::vector<Point> &points, PolyHandle polygon)
{
    const std::size_t bytes = headerBytes + points.size() * sizeof(Point);
    SetHandleSize(reinterpret_cast<Handle>(polygon), static_cast<Size>(std::max(bytes, sizeof(PolyRec))));
    if (MemError() != noErr)
        return;  // it stays empty
    (*polygon)->polySize = static_cast<int16_t>(bytes);
    (*polygon)->polyBBox = extentOf(points);
    std::memcpy(reinterpret_cast<char *>(*polygon) + headerBytes, points.data(), points.size() * sizeof(Point));
}

}  // namespace

bool polygonOpen()
{
    return open.polygon;
}

void addToPolygon(Point from, Point to)
{
    if (open.points.empty())
        open.points.push_back(from);
    if (open.points.size() < mostPoints)
        open.points.push_back(to);
}

void forgetPolygon()
{
    open.polygon = nullptr;
    open.points.clear();
}

}  // namespace toolbox::quickdraw

using namespace toolbox::quickdraw;

PolyHandle OpenPoly(void)
{
    if (polygonOpen())
        return nullptr;
    open.polygon = reinterpret_cast<PolyHandle>(NewHandleClear(sizeof(PolyRec)));
    if (open.polygon)
        (*open.polygon)->polySize = headerBytes;
    return open.polygon;
}

void ClosePoly(void)
{
    if (polygonOpen())
        store(open.points, open.polygon);
    forgetPolygon();
}

void PaintPoly(PolyHandle polygon)
{
    const std::vector<Point> points = pointsOf(polygon);
    const GrafPort &port = currentPort();
    tracePolygon("poly", points, port);
    paintWithPen(port, [&](int scale, const Box &within) { return insideOf(points, scale, within); });
}

void FramePoly(PolyHandle polygon)
{
    const std::vector<Point> points = pointsOf(polygon);
    const GrafPort &port = currentPort();
    tracePolygon("framePoly", points, port);
    for (std::size_t i = 1; i < points.size(); ++i)
        paintWithPen(port, lineArea(points[i - 1], points[i], port.pnSize));
}

void KillPoly(PolyHandle polygon)
{
    if (polygon && polygon == open.polygon)
        forgetPolygon();
    if (polygon)
        DisposeHandle(reinterpret_cast<Handle>(polygon));
}
