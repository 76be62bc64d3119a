#include "textedit/keys.h"

#include <algorithm>

#include "textedit/record.h"
#include "textedit/selecting.h"
#include "toolbox/events.h"
#include "toolbox/keys.h"
#include "toolbox/system.h"

namespace toolbox::textedit {
namespace {

void deleteFrom(TEHandle text, int start, int end)
{
    if (replace(text, start, end, {}))
        select(text, start, start);
}

// The selection, or the character before or after the caret.
void deleteOne(TEHandle text, bool forward)
{
    int start = (**text).selStart, end = (**text).selEnd;
    if (start == end && forward)
        end = std::min<int>(end + 1, (**text).teLength);
    else if (start == end)
        start = std::max(0, start - 1);
    deleteFrom(text, start, end);
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

int endOfLine(TEHandle text, int offset, bool last)
{
    RecordScope scope(text);
    Layout layout(text);
    int line = layout.lineOf(offset);
    return last ? layout.offsetInLine(line, INT16_MAX) : layout.lines()[static_cast<std::size_t>(line)].start;
}

bool isBackwards(int key)
{
    return key == key::leftArrow || key == key::upArrow || key == key::home;
}

// Where the key moves to from the offset.
int destination(TEHandle text, int from, int key, std::uint16_t modifiers)
{
    const bool backwards = isBackwards(key), command = (modifiers & cmdKey) != 0;
    const bool vertical = key == key::upArrow || key == key::downArrow, edge = key == key::home || key == key::end;
    const int length = (**text).teLength;
    if (command && (vertical || edge))
        return backwards ? 0 : length;
    if (command || edge)
        return endOfLine(text, from, !backwards);
    if (vertical)
        return oneLineAway(text, from, backwards ? -1 : 1);
    if (modifiers & optionKey)
        return backwards ? wordBefore(charactersOf(text), from) : wordAfter(charactersOf(text), from);
    return std::clamp(from + (backwards ? -1 : 1), 0, length);
}

void moveCaret(TEHandle text, int key, std::uint16_t modifiers)
{
    const int start = (**text).selStart, end = (**text).selEnd;
    const bool backwards = isBackwards(key);
    if (modifiers & shiftKey) {
        const Extent extent = extentOf(text, backwards ? -1 : 1);
        return selectTo(text, extent.anchor, destination(text, extent.moving, key, modifiers));
    }
    const bool byCharacter = (key == key::leftArrow || key == key::rightArrow) && !(modifiers & (cmdKey | optionKey));
    const int from = backwards ? start : end;
    const int to = byCharacter && start != end ? from : destination(text, from, key, modifiers);
    select(text, to, to);
}

}  // namespace

bool movesCaret(int character)
{
    return (character >= key::leftArrow && character <= key::downArrow) || character == key::home || character == key::end;
}

bool isTyped(int character)
{
    return character >= ' ' || character == key::backspace || character == key::carriageReturn || movesCaret(character);
}

void typeKey(TEHandle text, int character, std::uint16_t modifiers)
{
    if (movesCaret(character))
        return moveCaret(text, character, modifiers);
    if (character == key::backspace || character == key::forwardDelete)
        return deleteOne(text, character == key::forwardDelete);
    char typed = static_cast<char>(character);
    if (replace(text, (**text).selStart, (**text).selEnd, {&typed, 1}))
        select(text, (**text).selStart, (**text).selEnd);
    else
        SysBeep(1);  // no room: who looks at the keys learns that one is missing
}

}  // namespace toolbox::textedit

void TEKey(int16_t character, TEHandle text)
{
    toolbox::textedit::typeKey(text, character & 0xFF, 0);
}
