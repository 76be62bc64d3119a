// Pictures from 'PICT' resources, stretched to any rectangle.
#include <algorithm>

#include "quickdraw/current_port.h"
#include "quickdraw/displays.h"
#include "quickdraw/drawing.h"
#include "quickdraw/picture_format.h"
#include "toolbox/host/trace.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

namespace toolbox::quickdraw {
namespace {

// Maps one range of coordinates onto another.
struct Scale {
    int from, fromLength, to, toLength;

    int16_t operator()(int value) const
    {
        std::int64_t moved = std::int64_t(value - from) * toLength;
        std::int64_t scaled = moved >= 0 ? moved / fromLength : -((-moved + fromLength - 1) / fromLength);
        return static_cast<int16_t>(std::clamp<std::int64_t>(to + scaled, -32767, 32767));
    }
    // A pen's length, which never becomes 0 unless it was.
    int16_t length(int value) const
    {
        if (value <= 0)
            return 0;
        return static_cast<int16_t>(std::clamp<std::int64_t>(std::int64_t(value) * toLength / fromLength, 1, 32767));
    }
};

class Painter {
public:
    Painter(const GrafPort &port, const Rect &frame, const Rect &box)
        : port_(port), across_{frame.left, frame.right - frame.left, box.left, box.right - box.left},
          down_{frame.top, frame.bottom - frame.top, box.top, box.bottom - box.top}, shown_(visibleArea(port)),
          clip_(shown_)
    {
    }
    void draw(const PictureStep &step);

private:
    Rect scaled(const Rect &r) const { return {down_(r.top), across_(r.left), down_(r.bottom), across_(r.right)}; }
    Point scaled(Point p) const { return {down_(p.v), across_(p.h)}; }
    Area rim(const Rect &r) const;
    void take(const PictureStyle &style);
    void fill(const Area &local, const Ink &ink) { fillOnDisplays(toGlobal(port_, local) & clip_, ink); }
    void drawImage(const PictureStep &step, const Rect &box);

    GrafPort port_;   // a copy: the caller's pen and colours stay
    Scale across_, down_;
    Area shown_, clip_;
};

void Painter::take(const PictureStyle &style)
{
    port_.pnSize = {down_.length(style.penSize.v), across_.length(style.penSize.h)};
    port_.pnMode = style.penMode;
    port_.pnPat = style.penPattern;
    port_.bkPat = style.backPattern;
    port_.fgColor = style.fore;
    port_.bkColor = style.back;
}

Area Painter::rim(const Rect &r) const
{
    Rect inner = r;
    InsetRect(&inner, port_.pnSize.h, port_.pnSize.v);
    return Area(r) - Area(inner);
}

void Painter::drawImage(const PictureStep &step, const Rect &box)
{
    const Picture &image = step.image;
    if (image.pixels.empty() || emptyRect(box))
        return;
    const Rect global = toGlobal(port_, Area(box)).bounds();
    for (Surface &surface : surfaces())
        surface.drawImage(image, global, step.whiteIsClear, surface.device(clip_));
}

void Painter::draw(const PictureStep &step)
{
    using Kind = PictureStep::Kind;
    const Rect box = scaled(step.rect);
    take(step.style);
    switch (step.kind) {
    case Kind::clip: clip_ = shown_ & toGlobal(port_, Area(box)); break;
    case Kind::frame: fill(rim(box), Ink::pen(port_)); break;
    case Kind::paint: fill(Area(box), Ink::pen(port_)); break;
    case Kind::erase: fill(Area(box), Ink::background(port_)); break;
    case Kind::invert: fill(Area(box), Ink::inverting(port_)); break;
    case Kind::fill: fill(Area(box), Ink::of(port_, step.style.fillPattern, patCopy)); break;
    case Kind::line: fill(lineArea(scaled(step.from), scaled(step.to), port_.pnSize), Ink::pen(port_)); break;
    case Kind::image: drawImage(step, box); break;
    }
}

}  // namespace
}  // namespace toolbox::quickdraw

using namespace toolbox;
using namespace toolbox::quickdraw;

PicHandle GetPicture(int16_t id)
{
    return reinterpret_cast<PicHandle>(GetResource('PICT', id));
}

void DrawPicture(PicHandle picture, const Rect *box)
{
    const GrafPort &port = currentPort();
    if ((toGlobal(port, Area(*box)) & visibleArea(port)).empty())
        return;
    trace::drawing("picture %d,%d,%d,%d", box->left, box->top, box->right, box->bottom);
    Handle block = reinterpret_cast<Handle>(picture);
    if (!block || !*block)
        return;
    auto contents = readPicture({*block, static_cast<std::size_t>(GetHandleSize(block))});
    if (!contents)
        return;
    Painter painter(port, contents->frame, *box);
    for (const PictureStep &step : contents->steps)
        painter.draw(step);
}
