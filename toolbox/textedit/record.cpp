#include "textedit/record.h"

#include <algorithm>

#include "memory/locked.h"
#include "toolbox/events.h"
#include "toolbox/memory.h"

namespace toolbox::textedit {
namespace {

constexpr int longestText = 32767;

// How far to scroll so that near to far comes to lie between low and high.
int shiftInto(int near, int far, int low, int high)
{
    if (near < low)
        return near - low;
    return far > high ? std::min(far - high, near - low) : 0;
}

Rect selectedPart(const Layout &layout, const Rect &view, int line, int start, int end)
{
    const Line &characters = layout.lines()[line];
    Point first = layout.positionOf(std::max(start, characters.start));
    int left = start < characters.start ? view.left : first.h;
    int top = layout.positionOf(characters.start).v;
    bool goesOn = end > characters.end;
    int right = goesOn ? view.right : layout.positionOf(end).h;
    Rect part;
    SetRect(&part, static_cast<int16_t>(left), static_cast<int16_t>(top), static_cast<int16_t>(right),
            static_cast<int16_t>(top + layout.height()));
    return part;
}

void invertSelection(const Layout &layout, const TERec &record)
{
    int first = layout.lineOf(record.selStart);
    int last = layout.lineOf(record.selEnd);
    for (int line = first; line <= last; ++line) {
        Rect part = selectedPart(layout, record.viewRect, line, record.selStart, record.selEnd);
        InvertRect(&part);
    }
}

void drawCaret(const Layout &layout, const TERec &record)
{
    Point top = layout.positionOf(record.selStart);
    Rect caret;
    int16_t left = std::min<int16_t>(top.h, record.viewRect.right - 1);
    SetRect(&caret, left, top.v, left + 1, static_cast<int16_t>(top.v + layout.height()));
    InvertRect(&caret);
}

void drawText(const Layout &layout, const Rect &view)
{
    for (int line = 0; line < static_cast<int>(layout.lines().size()); ++line) {
        Point at = layout.positionOf(layout.lines()[line].start);
        if (at.v + layout.height() <= view.top || at.v >= view.bottom)
            continue;
        std::string_view characters = layout.lineText(line);
        MoveTo(at.h, static_cast<int16_t>(at.v + layout.ascent()));
        DrawText(characters.data(), 0, static_cast<int16_t>(characters.size()));
    }
}

}  // namespace

RecordScope::RecordScope(TEHandle text) : drawing_((**text).inPort)
{
    TextFont((**text).txFont);
    TextSize((**text).txSize);
    TextFace((**text).txFace);
}

Layout::Layout(TEHandle text) : text_(charactersOf(text)), height_(lineHeight()), ascent_(textedit::ascent())
{
    Locked record(text);
    box_ = record->destRect;
    OffsetRect(&box_, -record->scroll.h, -record->scroll.v);
    just_ = record->just;
    lines_ = breakLines(text_, box_.right - box_.left, !record->crOnly);
}

std::string_view Layout::lineText(int line) const
{
    return std::string_view(text_).substr(lines_[line].start, lines_[line].end - lines_[line].start);
}

int Layout::lineOf(int offset) const
{
    int line = static_cast<int>(lines_.size()) - 1;
    while (line > 0 && lines_[line].start > offset)
        --line;
    return line;
}

int Layout::leftOfLine(int line) const
{
    return leftOf(lineText(line), box_, just_);
}

Point Layout::positionOf(int offset) const
{
    int line = lineOf(offset);
    int start = lines_[line].start;
    int count = std::min(offset, lines_[line].end) - start;
    Point at;
    at.h = static_cast<int16_t>(leftOfLine(line) + widthOf(std::string_view(text_).substr(start, count)));
    at.v = static_cast<int16_t>(box_.top + line * height_);
    return at;
}

int Layout::offsetInLine(int line, int h) const
{
    std::string_view characters = lineText(line);
    int from = leftOfLine(line);
    int before = 0;
    for (int count = 1; count <= static_cast<int>(characters.size()); ++count) {
        int after = widthOf(characters.substr(0, count));
        if (h - from < (before + after) / 2)
            return lines_[line].start + count - 1;
        before = after;
    }
    // After the last character of a wrapped line comes the next line's start:
    // stay on this one.
    bool wrapped = line + 1 < static_cast<int>(lines_.size()) && lines_[line + 1].start == lines_[line].end;
    return lines_[line].end - (wrapped && !characters.empty() ? 1 : 0);
}

int Layout::offsetAt(Point where) const
{
    int line = where.v < box_.top ? 0 : (where.v - box_.top) / height_;
    return offsetInLine(std::min(line, static_cast<int>(lines_.size()) - 1), where.h);
}

std::string charactersOf(TEHandle text)
{
    return std::string(*(**text).hText, static_cast<size_t>((**text).teLength));
}

bool replace(TEHandle text, int start, int end, std::string_view characters)
{
    std::string all = charactersOf(text);
    all.replace(static_cast<size_t>(start), static_cast<size_t>(end - start), characters);
    if (all.size() > longestText)
        return false;
    SetHandleSize((**text).hText, static_cast<Size>(all.size()));
    if (MemError() != noErr)
        return false;
    BlockMove(all.data(), *(**text).hText, static_cast<Size>(all.size()));
    Locked record(text);
    record->teLength = static_cast<int16_t>(all.size());
    record->selStart = record->selEnd = static_cast<int16_t>(start + static_cast<int>(characters.size()));
    return true;
}

// Shifts the text so that a caret there is inside the view rectangle.
static void show(TEHandle text, int offset)
{
    RecordScope scope(text);
    Layout layout(text);
    Locked record(text);
    const Rect &view = record->viewRect;
    Point caret = layout.positionOf(offset);
    if (record->crOnly)
        record->scroll.h += static_cast<int16_t>(shiftInto(caret.h, caret.h + 1, view.left, view.right));
    if (view.bottom - view.top >= layout.height())
        record->scroll.v += static_cast<int16_t>(shiftInto(caret.v, caret.v + layout.height(), view.top, view.bottom));
}

void draw(TEHandle text)
{
    RecordScope scope(text);
    Locked record(text);
    quickdraw::ClipScope clip(record->viewRect);
    Layout layout(text);
    EraseRect(&record->viewRect);
    drawText(layout, record->viewRect);
    if (!record->active)
        return;
    if (record->selStart != record->selEnd)
        invertSelection(layout, *record);
    else if (record->caretState)
        drawCaret(layout, *record);
}

void select(TEHandle text, int start, int end)
{
    select(text, start, end, end);
}

void select(TEHandle text, int start, int end, int shown)
{
    {
        Locked record(text);
        record->selStart = static_cast<int16_t>(start);
        record->selEnd = static_cast<int16_t>(end);
        record->caretState = 1;
        record->caretTime = TickCount();
    }
    show(text, shown);
    draw(text);
}

}  // namespace toolbox::textedit
