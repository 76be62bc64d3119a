// The mouse in a text.
#include <algorithm>
#include <cstdlib>

#include "events/tracking.h"
#include "textedit/record.h"
#include "textedit/selecting.h"
#include "toolbox/events.h"
#include "toolbox/textedit.h"

using namespace toolbox;
using namespace toolbox::textedit;

namespace {

// The latest press, to recognise a double-click.
struct Press {
    TEHandle text = nullptr;
    int offset = 0;
    uint32_t when = 0;
};
Press latest;

int offsetUnder(TEHandle text, Point local)
{
    RecordScope scope(text);
    return Layout(text).offsetAt(local);
}

Point localOf(TEHandle text, Point global)
{
    quickdraw::PortScope current((**text).inPort);
    GlobalToLocal(&global);
    return global;
}

bool isOutside(TEHandle text, Point local)
{
    const Rect view = (**text).viewRect;
    return local.h < view.left || local.h >= view.right || local.v < view.top || local.v >= view.bottom;
}

// The point, or one no further outside the view than the text is to scroll at a
// time.
Point heldNear(TEHandle text, Point local)
{
    constexpr int sideways = 12;
    RecordScope scope(text);
    const int line = Layout(text).height();
    const Rect view = (**text).viewRect;
    auto within = [](int at, int low, int high) { return static_cast<int16_t>(std::clamp(at, low, high)); };
    if ((**text).crOnly)
        local.h = within(local.h, view.left - sideways, view.right + sideways);
    local.v = within(local.v, view.top - line, view.bottom + line - 1);
    return local;
}

// What is selected when the mouse goes from the first place to the second.
using Selecting = void (*)(TEHandle text, int from, int to);

void byCharacters(TEHandle text, int from, int to)
{
    selectTo(text, from, to);
}

// Whole words: from the one that was clicked to the one under the mouse.
void byWords(TEHandle text, int from, int to)
{
    const std::string characters = charactersOf(text);
    const WordRange first = wordAt(characters, from), last = wordAt(characters, to);
    if (to < from)
        selectTo(text, first.end, std::min(first.start, last.start));
    else
        selectTo(text, first.start, std::max(first.end, last.end));
}

// While the mouse rests outside, the text keeps scrolling under it until its
// end.
void dragSelection(TEHandle text, int from, Selecting selecting)
{
    constexpr uint32_t pause = 3;
    int reached = from;
    bool goesOn = false;
    while (auto input = goesOn ? events::nextTrackingInput(pause) : events::nextTrackingInput()) {
        const Point local = localOf(text, input->where);
        const int to = offsetUnder(text, heldNear(text, local));
        goesOn = isOutside(text, local) && to != reached;
        reached = to;
        if (input->kind == Input::Kind::mouseMoved || to != from)
            selecting(text, from, to);
        if (input->kind == Input::Kind::mouseUp)
            return;
    }
}

}  // namespace

void textedit::forgetPresses()
{
    latest = {};
    forgetExtent();
}

void TEClick(Point where, Boolean extend, TEHandle text)
{
    int offset = offsetUnder(text, where);
    uint32_t now = TickCount();
    bool again = latest.text == text && latest.offset == offset && now - latest.when <= GetDblTime();
    latest = again ? Press{} : Press{text, offset, now};
    if (again) {
        byWords(text, offset, offset);
        return dragSelection(text, offset, byWords);
    }
    int start = (**text).selStart;
    int end = (**text).selEnd;
    int anchor = !extend ? offset : std::abs(offset - start) > std::abs(offset - end) ? start : end;
    selectTo(text, anchor, offset);
    dragSelection(text, anchor, byCharacters);
}
