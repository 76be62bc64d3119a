#include "controls/look.h"

#include <algorithm>

#include "controls/scroll_bar.h"
#include "memory/locked.h"
#include "quickdraw/dimming.h"
#include "quickdraw/port_scope.h"
#include "textedit/lines.h"
#include "toolbox/host/text.h"
#include "windows/color_table.h"

namespace toolbox::controls {
namespace {

enum { framePart = 0, bodyPart = 1, textPart = 2 };
constexpr int16_t buttonCorner = 10;
constexpr int16_t boxSize = 12;
constexpr int dimmed = 255;

// Colours of a control's parts: those of its table, else black on white.
struct Colors {
    explicit Colors(const ControlRecord &control)
    {
        if (!control.colorTable || !windows::displayHasColors())
            return;
        windows::ColorTable table = windows::readColorTable(control.colorTable);
        auto take = [&](int part, int32_t &into) {
            if (auto color = windows::colorOf(table, part))
                into = windows::forDrawing(*color);
        };
        take(framePart, frame);
        take(bodyPart, body);
        take(textPart, text);
    }

    int32_t frame = blackColor, body = whiteColor, text = blackColor;
};

void drawTitle(const ControlRecord &control, const Rect &box, int just)
{
    std::string_view title = pascalView(control.contrlTitle);
    int lines = static_cast<int>(std::count(title.begin(), title.end(), '\r')) + 1;
    Rect text = box;
    int extra = (box.bottom - box.top - lines * textedit::lineHeight()) / 2;
    text.top = static_cast<int16_t>(text.top + std::max(0, extra));
    textedit::drawLines(title, text, just, false);
}

void drawPushButton(const ControlRecord &control)
{
    Colors colors(control);
    Rect r = control.contrlRect;
    bool pressed = control.contrlHilite == inButton;
    BackColor(pressed ? colors.text : colors.body);
    EraseRoundRect(&r, buttonCorner, buttonCorner);
    ForeColor(pressed ? colors.body : colors.text);
    Rect inside = r;
    InsetRect(&inside, 2, 1);
    drawTitle(control, inside, 1);
    ForeColor(colors.frame);
    FrameRoundRect(&r, buttonCorner, buttonCorner);
    InsetRect(&inside, 1, 2);
    if (control.contrlHilite == dimmed) {
        BackColor(colors.body);
        quickdraw::dim(inside);
    }
}

Rect markBox(const ControlRecord &control)
{
    Rect box = control.contrlRect;
    box.left = static_cast<int16_t>(box.left + 2);
    box.top = static_cast<int16_t>((box.top + box.bottom - boxSize) / 2);
    box.right = static_cast<int16_t>(box.left + boxSize);
    box.bottom = static_cast<int16_t>(box.top + boxSize);
    return box;
}

void drawCheckMark(const Rect &box)
{
    MoveTo(box.left + 1, box.top + 1);
    LineTo(box.right - 2, box.bottom - 2);
    MoveTo(box.left + 1, box.bottom - 2);
    LineTo(box.right - 2, box.top + 1);
}

void drawCheckBox(const ControlRecord &control, const Rect &box)
{
    FrameRect(&box);
    Rect inner = box;
    InsetRect(&inner, 1, 1);
    if (control.contrlHilite == inCheckBox)
        FrameRect(&inner);
    if (control.contrlValue)
        drawCheckMark(box);
}

void drawRadioButton(const ControlRecord &control, const Rect &box)
{
    FrameRoundRect(&box, boxSize, boxSize);
    Rect inner = box;
    InsetRect(&inner, 1, 1);
    if (control.contrlHilite == inCheckBox)
        FrameRoundRect(&inner, boxSize - 2, boxSize - 2);
    InsetRect(&inner, 2, 2);
    if (control.contrlValue)
        PaintRoundRect(&inner, boxSize - 6, boxSize - 6);
}

void drawMarked(const ControlRecord &control)
{
    Rect r = control.contrlRect;
    EraseRect(&r);
    Rect box = markBox(control);
    if ((control.procID & 7) == radioButProc)
        drawRadioButton(control, box);
    else
        drawCheckBox(control, box);
    Rect title = r;
    title.left = static_cast<int16_t>(box.right + 4);
    drawTitle(control, title, 0);
    if (control.contrlHilite == dimmed)
        quickdraw::dim(r);
}

void drawArrow(const Rect &r, bool vertical, int direction)
{
    FrameRect(&r);
    int h = (r.left + r.right) / 2;
    int v = (r.top + r.bottom) / 2;
    for (int step = 0; step < 5; ++step) {
        int along = direction * (step - 2);
        if (vertical) {
            MoveTo(static_cast<int16_t>(h - 1 - step), static_cast<int16_t>(v - 1 - -along));
            LineTo(static_cast<int16_t>(h - 1 + step), static_cast<int16_t>(v - 1 - -along));
        } else {
            MoveTo(static_cast<int16_t>(h - 1 + along), static_cast<int16_t>(v - 1 - step));
            LineTo(static_cast<int16_t>(h - 1 + along), static_cast<int16_t>(v - 1 + step));
        }
    }
}

void drawScrollBar(const ControlRecord &control)
{
    ScrollBar bar(control);
    EraseRect(&bar.whole);
    FrameRect(&bar.whole);
    if (control.contrlHilite == dimmed)
        return;
    if (!EmptyRect(&bar.thumb)) {
        Rect track = bar.track;
        InsetRect(&track, 1, 1);
        FillRect(&track, &qd.ltGray);
        EraseRect(&bar.thumb);
        FrameRect(&bar.thumb);
    }
    drawArrow(bar.upArrow, bar.vertical, 1);
    drawArrow(bar.downArrow, bar.vertical, -1);
    const Rect &pressed = control.contrlHilite == inUpButton ? bar.upArrow : bar.downArrow;
    if (control.contrlHilite == inUpButton || control.contrlHilite == inDownButton)
        InvertRect(&pressed);
}

}  // namespace

bool isPushButton(const ControlRecord &control)
{
    return (control.procID & ~8) == pushButProc;
}

void draw(ControlHandle control)
{
    Locked record(control);
    if (!record->contrlVis)
        return;
    quickdraw::DrawingScope scope(record->contrlOwner);
    quickdraw::ClipScope clip(record->contrlRect);
    if (isPushButton(*record))
        drawPushButton(*record);
    else if (record->procID == scrollBarProc)
        drawScrollBar(*record);
    else
        drawMarked(*record);
}

void erase(ControlHandle control)
{
    Locked record(control);
    quickdraw::PortScope current(record->contrlOwner);
    Rect r = record->contrlRect;
    EraseRect(&r);
    InvalRect(&r);
}

void setHilite(ControlHandle control, uint8_t part)
{
    if ((**control).contrlHilite == part)
        return;
    (**control).contrlHilite = part;
    draw(control);
}

}  // namespace toolbox::controls
