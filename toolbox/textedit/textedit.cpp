// Making, filling and showing TextEdit records.
#include "toolbox/textedit.h"

#include <algorithm>
#include <string>

#include "memory/locked.h"
#include "textedit/lines.h"
#include "textedit/record.h"
#include "toolbox/events.h"
#include "toolbox/memory.h"

using namespace toolbox;
using namespace toolbox::textedit;

namespace {

int clipped(int32_t offset, TEHandle text)
{
    return std::clamp<int32_t>(offset, 0, (**text).teLength);
}

std::string copied(const void *characters, int32_t length)
{
    return std::string(static_cast<const char *>(characters), static_cast<size_t>(std::max(0, length)));
}

void refill(TERec &record, const Rect &destRect, const Rect &viewRect, GrafPtr port)
{
    record.destRect = destRect;
    record.viewRect = viewRect;
    record.inPort = port;
    record.txFont = port->txFont;
    record.txSize = port->txSize;
    record.txFace = port->txFace;
}

}  // namespace

TEHandle TENew(const Rect *destRect, const Rect *viewRect)
{
    Handle characters = NewHandle(0);
    TEHandle text = reinterpret_cast<TEHandle>(NewHandleClear(sizeof(TERec)));
    if (!characters || !text) {
        DisposeHandle(characters);
        DisposeHandle(reinterpret_cast<Handle>(text));
        return nullptr;
    }
    GrafPtr port;
    GetPort(&port);
    Locked record(text);
    refill(*record, *destRect, *viewRect, port);
    record->hText = characters;
    record->caretState = 1;
    return text;
}

void TEDispose(TEHandle text)
{
    if (!text)
        return;
    forgetPresses();
    DisposeHandle((**text).hText);
    DisposeHandle(reinterpret_cast<Handle>(text));
}

void TESetText(const void *characters, int32_t length, TEHandle text)
{
    if (!replace(text, 0, (**text).teLength, copied(characters, length)))
        return;
    (**text).scroll = Point{0, 0};
}

Handle TEGetText(TEHandle text)
{
    return (**text).hText;
}

void TESetSelect(int32_t start, int32_t end, TEHandle text)
{
    int from = clipped(start, text);
    select(text, from, std::max(from, clipped(end, text)));
}

void TEInsert(const void *characters, int32_t length, TEHandle text)
{
    std::string added = copied(characters, length);
    int from = (**text).selStart;
    int to = (**text).selEnd;
    if (replace(text, from, from, added))
        select(text, from + static_cast<int>(added.size()), to + static_cast<int>(added.size()));
}

void TEDelete(TEHandle text)
{
    if (replace(text, (**text).selStart, (**text).selEnd, {}))
        select(text, (**text).selStart, (**text).selEnd);
}

void TEActivate(TEHandle text)
{
    (**text).active = 1;
    (**text).caretState = 1;
    (**text).caretTime = TickCount();
    draw(text);
}

void TEDeactivate(TEHandle text)
{
    (**text).active = 0;
    draw(text);
}

void TEIdle(TEHandle text)
{
    uint32_t now = TickCount();
    if (!(**text).active || (**text).selStart != (**text).selEnd || now - (**text).caretTime < GetCaretTime())
        return;
    (**text).caretTime = now;
    (**text).caretState = !(**text).caretState;
    draw(text);
}

void TEUpdate(const Rect *r, TEHandle text)
{
    RecordScope scope(text);
    quickdraw::ClipScope clip(*r);
    draw(text);
}

void TECalText(TEHandle text)
{
    int32_t length = std::min<int32_t>(GetHandleSize((**text).hText), 32767);
    Locked record(text);
    record->teLength = static_cast<int16_t>(length);
    record->selStart = static_cast<int16_t>(std::min<int32_t>(record->selStart, length));
    record->selEnd = static_cast<int16_t>(std::min<int32_t>(record->selEnd, length));
}

void TETextBox(const void *characters, int32_t length, const Rect *box, int16_t just)
{
    std::string text = copied(characters, length);
    EraseRect(box);
    drawLines(text, *box, just, true);
}
