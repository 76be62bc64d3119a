// QuickDraw pixel by pixel: decides for each device pixel of the canvas in
// turn, with no cleverness, whether it is inked and what it becomes.
// Rectangles, lines, regions and patterns are in QuickDraw's pixels; round
// rectangles and polygons are computed in device pixels.
#pragma once

#include <functional>

#include "quickdraw_canvas.h"

class SlowCanvas {
public:
    // Blank, of the canvas's size.
    SlowCanvas(int depth, int scale);

    // The state that a port's fields hold.
    struct State {
        Point penSize{1, 1};
        int mode = patCopy;
        Pattern pattern{{255, 255, 255, 255, 255, 255, 255, 255}};
        Pattern background{};
        int32_t fore = blackColor, back = whiteColor;
        std::function<bool(int h, int v)> clip;  // in QuickDraw's pixels
    } state;

    void frameRect(const Rect &r);
    void paintRect(const Rect &r);
    void eraseRect(const Rect &r);
    void invertRect(const Rect &r);
    void fillRect(const Rect &r, const Pattern &pattern);
    void line(Point from, Point to);
    void paintRoundRect(const Rect &r, int ovalWidth, int ovalHeight);
    void frameRoundRect(const Rect &r, int ovalWidth, int ovalHeight);
    void paintPolygon(const std::vector<Point> &points);
    void scrollRect(const Rect &r, int dh, int dv);

    // Like CanvasTest::pixels, but in device pixels and without a rim.
    const std::vector<std::uint32_t> &pixels() const { return pixels_; }
    int width() const { return CanvasSize::width * scale_; }
    int height() const { return CanvasSize::height * scale_; }

private:
    using Inside = std::function<bool(int, int)>;
    void ink(const Inside &insideInDevice, const Pattern &pattern, int mode);
    void inkPixels(const Inside &insideInPixels, const Pattern &pattern, int mode);
    std::uint32_t changed(std::uint32_t under, bool black, int mode) const;

    int depth_, scale_;
    std::vector<std::uint32_t> pixels_;
};
