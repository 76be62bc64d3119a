// The keyboard and the mouse at a text.
#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "events/tracking.h"
#include "textedit/record.h"
#include "toolbox/events.h"
#include "toolbox/textedit.h"

using namespace toolbox;
using namespace toolbox::textedit;

namespace {

enum { backspace = 0x08, leftArrow = 0x1C, rightArrow = 0x1D, upArrow = 0x1E, downArrow = 0x1F };

// The latest press, to tell a double-click.
struct Press {
    TEHandle text = nullptr;
    int offset = 0;
    uint32_t when = 0;
};
Press latest;

void deleteBackwards(TEHandle text)
{
    int start = (**text).selStart;
    int end = (**text).selEnd;
    if (start == end && start > 0)
        --start;
    if (replace(text, start, end, {}))
        select(text, start, start);
}

int oneLineAway(TEHandle text, int offset, int direction)
{
    RecordScope scope(text);
    Layout layout(text);
    int line = layout.lineOf(offset) + direction;
    if (line < 0)
        return 0;
    if (line >= static_cast<int>(layout.lines().size()))
        return (**text).teLength;
    return layout.offsetInLine(line, layout.positionOf(offset).h);
}

void moveCaret(TEHandle text, int arrow)
{
    int start = (**text).selStart;
    int end = (**text).selEnd;
    int length = (**text).teLength;
    int to = start;
    switch (arrow) {
    case leftArrow: to = start == end ? std::max(0, start - 1) : start; break;
    case rightArrow: to = start == end ? std::min(length, end + 1) : end; break;
    case upArrow: to = oneLineAway(text, start, -1); break;
    default: to = oneLineAway(text, end, 1);
    }
    select(text, to, to);
}

bool isWordCharacter(unsigned char c)
{
    return c >= 0x80 || isalnum(c) || c == '\'';
}

void selectWord(TEHandle text, int offset)
{
    std::string all = charactersOf(text);
    int length = static_cast<int>(all.size());
    int start = std::min(offset, length);
    int end = start;
    while (start > 0 && isWordCharacter(static_cast<unsigned char>(all[start - 1])))
        --start;
    while (end < length && isWordCharacter(static_cast<unsigned char>(all[end])))
        ++end;
    select(text, start, end);
}

int offsetUnder(TEHandle text, Point local)
{
    RecordScope scope(text);
    return Layout(text).offsetAt(local);
}

void dragSelection(TEHandle text, int anchor)
{
    while (auto input = events::nextTrackingInput()) {
        Point local = input->where;
        {
            PortScope current((**text).inPort);
            GlobalToLocal(&local);
        }
        int to = offsetUnder(text, local);
        if (input->kind == Input::Kind::mouseMoved || to != anchor)
            select(text, std::min(anchor, to), std::max(anchor, to));
        if (input->kind == Input::Kind::mouseUp)
            return;
    }
}

void waitForRelease()
{
    while (auto input = events::nextTrackingInput())
        if (input->kind == Input::Kind::mouseUp)
            return;
}

}  // namespace

void textedit::forgetPresses()
{
    latest = {};
}

void TEKey(int16_t character, TEHandle text)
{
    int key = character & 0xFF;
    if (key == backspace)
        return deleteBackwards(text);
    if (key >= leftArrow && key <= downArrow)
        return moveCaret(text, key);
    char typed = static_cast<char>(key);
    if (replace(text, (**text).selStart, (**text).selEnd, {&typed, 1}))
        select(text, (**text).selStart, (**text).selEnd);
}

void TEClick(Point where, Boolean extend, TEHandle text)
{
    int offset = offsetUnder(text, where);
    uint32_t now = TickCount();
    bool again = latest.text == text && latest.offset == offset && now - latest.when <= GetDblTime();
    latest = again ? Press{} : Press{text, offset, now};
    if (again) {
        selectWord(text, offset);
        return waitForRelease();
    }
    int start = (**text).selStart;
    int end = (**text).selEnd;
    int anchor = !extend ? offset : std::abs(offset - start) > std::abs(offset - end) ? start : end;
    select(text, std::min(anchor, offset), std::max(anchor, offset));
    dragSelection(text, anchor);
}
