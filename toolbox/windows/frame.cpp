#include "windows/frame.h"

#include "quickdraw/port_scope.h"
#include "quickdraw/region_data.h"

namespace toolbox::windows {
namespace {

enum { contentPart = 0, framePart = 1, textPart = 2 };

constexpr int titleBarHeight = 18;   // above the frame's top line
constexpr int dialogBorder = 8;
constexpr int movableBorder = 5;
constexpr int shadowOffset = 2;
constexpr int goAwaySize = 11;

enum class Style { document, dialog, plain, shadowed, movable };

Style styleOf(int16_t procID)
{
    switch (procID) {
    case dBoxProc: return Style::dialog;
    case plainDBox: return Style::plain;
    case altDBoxProc: return Style::shadowed;
    case movableDBoxProc: return Style::movable;
    default: return Style::document;
    }
}

Rect grown(Rect r, int by)
{
    InsetRect(&r, static_cast<int16_t>(-by), static_cast<int16_t>(-by));
    return r;
}

// The frame around the content, without title bar and shadow.
Rect border(Style style, const Rect &content)
{
    switch (style) {
    case Style::dialog: return grown(content, dialogBorder);
    case Style::movable: return grown(content, movableBorder);
    default: return grown(content, 1);
    }
}

Rect titleBar(const Window &window)
{
    Rect bar = border(styleOf(window.record->procID), window.contentRect);
    bar.bottom = bar.top + 1;
    bar.top -= titleBarHeight;
    return bar;
}

Rect goAwayBox(const Window &window)
{
    Rect bar = titleBar(window);
    Rect box;
    SetRect(&box, bar.left + 9, bar.top + 4, bar.left + 9 + goAwaySize, bar.top + 4 + goAwaySize);
    return box;
}

Rect shadowOf(Rect frame, int offset)
{
    OffsetRect(&frame, static_cast<int16_t>(offset), static_cast<int16_t>(offset));
    return frame;
}

void frameLine(const Rect &r, int thickness)
{
    PenSize(static_cast<int16_t>(thickness), static_cast<int16_t>(thickness));
    FrameRect(&r);
    PenSize(1, 1);
}

void drawTitleLines(const Rect &bar)
{
    for (int line = 4; line < titleBarHeight - 2; line += 2) {
        MoveTo(bar.left + 2, static_cast<int16_t>(bar.top + line));
        LineTo(bar.right - 3, static_cast<int16_t>(bar.top + line));
    }
}

// The part's colour in the window's table, where the display shows colours.
int32_t partColor(const Window &window, int part, int32_t otherwise)
{
    auto color = colorOf(window.colors, part);
    return color && displayHasColors() ? forDrawing(*color) : otherwise;
}

void drawTitle(const Window &window, const Rect &bar)
{
    const WindowRecord &record = *window.record;
    int16_t width = StringWidth(record.title);
    int16_t left = (bar.left + bar.right - width) / 2;
    Rect behind;
    SetRect(&behind, left - 6, bar.top + 1, left + width + 6, bar.bottom - 1);
    if (width > 0)
        EraseRect(&behind);
    MoveTo(left, bar.top + 13);
    ForeColor(partColor(window, textPart, blackColor));
    DrawString(record.title);
}

void drawTitleBar(const Window &window)
{
    const WindowRecord &record = *window.record;
    Rect bar = titleBar(window);
    FrameRect(&bar);
    quickdraw::ClipScope clip(bar);
    if (record.hilited)
        drawTitleLines(bar);
    if (record.goAwayFlag && record.hilited) {
        Rect box = goAwayBox(window);
        Rect room = grown(box, 1);
        EraseRect(&room);
        FrameRect(&box);
    }
    drawTitle(window, bar);
}

// The content's colour extends to the frame's inner line.
void eraseMargin(const Window &window, const Rect &inner)
{
    BackColor(partColor(window, contentPart, whiteColor));
    EraseRect(&inner);
    BackColor(whiteColor);
}

void drawBorder(Style style, const Window &window)
{
    frameLine(border(style, window.contentRect), 1);
    if (style != Style::dialog && style != Style::movable)
        return;
    Rect inner = grown(window.contentRect, style == Style::dialog ? 5 : 3);
    eraseMargin(window, inner);
    frameLine(inner, 2);
}

}  // namespace

bool hasTitleBar(const WindowRecord &record)
{
    Style style = styleOf(record.procID);
    return style == Style::document || style == Style::movable;
}

void shapeWindow(Window &window, const Rect &content)
{
    WindowPeek record = window.record;
    Style style = styleOf(record->procID);
    Rect frame = border(style, content);
    window.contentRect = content;
    window.content = Area(content);
    window.structure = Area(frame);
    if (hasTitleBar(*record))
        window.structure = window.structure | Area(titleBar(window));
    if (style == Style::shadowed)
        window.structure = window.structure | Area(shadowOf(frame, shadowOffset));
    if (style == Style::document)
        window.structure = window.structure | Area(shadowOf(frame, 1));
    quickdraw::storeArea(window.content, record->contRgn);
    quickdraw::storeArea(window.structure, record->strucRgn);
}

void drawFrame(const Window &window)
{
    const WindowRecord &record = *window.record;
    Style style = styleOf(record.procID);
    Rect frame = border(style, window.contentRect);
    // The part of the structure that stays black is the shadow.
    Rect all = window.structure.bounds();
    PaintRect(&all);
    EraseRect(&frame);
    if (hasTitleBar(record)) {
        Rect bar = titleBar(window);
        EraseRect(&bar);
    }
    ForeColor(partColor(window, framePart, blackColor));
    drawBorder(style, window);
    if (hasTitleBar(record))
        drawTitleBar(window);
    ForeColor(blackColor);
}

int16_t partOfFrame(const Window &window, Point global)
{
    if (!hasTitleBar(*window.record))
        return inDesk;
    Rect box = goAwayBox(window);
    if (window.record->goAwayFlag && window.record->hilited && PtInRect(global, &box))
        return inGoAway;
    Rect bar = titleBar(window);
    return PtInRect(global, &bar) ? inDrag : inDesk;
}

}  // namespace toolbox::windows
