#include "toolbox/events.h"

#include <algorithm>

#include "events/input_state.h"
#include "events/queue.h"
#include "quickdraw/present.h"
#include "session/managers.h"
#include "toolbox/host/click_at.h"
#include "toolbox/host/dropped_files.h"
#include "toolbox/host/quit.h"
#include "toolbox/host/session.h"
#include "toolbox/quickdraw.h"

namespace toolbox::events {

std::function<WindowPtr()> nextWindowNeedingUpdate;

namespace {

struct Activate {
    WindowPtr window;
    bool active;
};
std::deque<Activate> activates;

enum class Taking { take, look };

bool activateEvent(std::int16_t mask, EventRecord &event, Taking taking)
{
    if (activates.empty() || !(mask & 1 << activateEvt))
        return false;
    Activate next = activates.front();
    event = eventNow(activateEvt, reinterpret_cast<std::uintptr_t>(next.window));
    if (next.active)
        event.modifiers |= activeFlag;
    if (taking == Taking::take)
        activates.pop_front();
    return true;
}

bool queuedEvent(std::int16_t mask, EventRecord &event, Taking taking)
{
    auto found = std::find_if(state.queue.begin(), state.queue.end(),
                              [&](const EventRecord &queued) { return matches(mask, queued); });
    if (found == state.queue.end())
        return false;
    event = *found;
    if (taking == Taking::take)
        state.queue.erase(found);
    return true;
}

// Input that has arrived comes before repeats and updates; it is taken only up
// to the first event that is asked for.
bool inputEvent(std::int16_t mask, EventRecord &event, Taking taking)
{
    while (!queuedEvent(mask, event, taking)) {
        if (!machine().inputWaiting())
            return false;
        if (std::optional<Input> input = takeInput(0))
            queueEventFor(*input);
    }
    return true;
}

bool repeatEvent(std::int16_t mask, EventRecord &event, Taking taking)
{
    if (!state.autoKey || !matches(mask, *state.autoKey))
        return false;
    event = *state.autoKey;
    if (taking == Taking::take)
        state.autoKey.reset();
    return true;
}

bool updateEvent(std::int16_t mask, EventRecord &event)
{
    if (!nextWindowNeedingUpdate || !(mask & 1 << updateEvt))
        return false;
    WindowPtr window = nextWindowNeedingUpdate();
    if (!window)
        return false;
    event = eventNow(updateEvt, reinterpret_cast<std::uintptr_t>(window));
    return true;
}

bool eventThere(std::int16_t mask, EventRecord &event, Taking taking)
{
    return activateEvent(mask, event, taking) || inputEvent(mask, event, taking) ||
           repeatEvent(mask, event, taking) || updateEvent(mask, event);
}

// A null event takes at least a tick. Otherwise a loop around GetNextEvent
// would let no virtual time pass, and keep the processor busy in real time.
bool waitForEvent(std::int16_t mask, EventRecord &event, std::uint32_t sleep, Taking taking)
{
    constexpr std::uint32_t longestWait = 60;
    const std::uint32_t start = machine().ticks();
    const bool quitBefore = state.quit;
    const std::size_t droppedBefore = state.dropped.size();
    sleep = std::max<std::uint32_t>(sleep, 1);
    while (!eventThere(mask, event, taking)) {
        std::uint32_t passed = machine().ticks() - start;
        bool news = (state.quit && !quitBefore) || state.dropped.size() > droppedBefore;
        if (passed >= sleep || news) {
            event = eventNow(nullEvent);
            return false;
        }
        if (std::optional<Input> input = takeInput(std::min(sleep - passed, longestWait)))
            queueEventFor(*input);
    }
    return true;
}

}  // namespace

void postActivate(WindowPtr window, bool active)
{
    activates.push_back({window, active});
}

void forgetWindow(WindowPtr window)
{
    std::erase_if(activates, [&](const Activate &queued) { return queued.window == window; });
}

EventRecord keyStruck(std::uint8_t character, std::uint8_t keyCode, std::uint16_t modifiers)
{
    EventRecord event = eventNow(keyDown, static_cast<std::uintptr_t>(keyCode) << 8 | character);
    event.modifiers |= modifiers;
    return event;
}

}  // namespace toolbox::events

bool toolbox::quitAsked()
{
    return events::state.quit;
}

void toolbox::dropQuit()
{
    events::state.quit = false;
}

std::optional<std::filesystem::path> toolbox::takeDroppedFile()
{
    auto &dropped = events::state.dropped;
    if (dropped.empty())
        return std::nullopt;
    std::filesystem::path file = std::move(dropped.front());
    dropped.pop_front();
    return file;
}

void toolbox::clickAt(Point where)
{
    events::state.mouse = where;
    events::state.queue.push_back(events::eventNow(mouseDown));
    events::state.queue.push_back(events::eventNow(mouseUp));
}

namespace toolbox::managers {

void startEvents(const Configuration &)
{
    events::state = {};
    events::activates.clear();
}

void stopEvents()
{
    events::state = {};
    events::activates.clear();
    events::nextWindowNeedingUpdate = nullptr;
    events::displaysChanged = nullptr;
}

}  // namespace toolbox::managers

using namespace toolbox;
using namespace toolbox::events;

Boolean WaitNextEvent(int16_t mask, EventRecord *event, uint32_t sleep)
{
    return waitForEvent(mask, *event, sleep, Taking::take);
}

Boolean GetNextEvent(int16_t mask, EventRecord *event)
{
    return waitForEvent(mask, *event, 0, Taking::take);
}

Boolean EventAvail(int16_t mask, EventRecord *event)
{
    return waitForEvent(mask, *event, 0, Taking::look);
}

static void takeInWhatHasArrived()
{
    while (machine().inputWaiting())
        if (std::optional<Input> input = takeInput(0))
            queueEventFor(*input);
}

void FlushEvents(int16_t mask, int16_t stopMask)
{
    takeInWhatHasArrived();
    auto stop = std::find_if(state.queue.begin(), state.queue.end(),
                             [&](const EventRecord &event) { return matches(stopMask, event); });
    bool stopped = stop != state.queue.end();
    state.queue.erase(std::remove_if(state.queue.begin(), stop,
                                     [&](const EventRecord &event) { return matches(mask, event); }),
                      stop);
    if (!stopped && state.autoKey && !matches(stopMask, *state.autoKey) && matches(mask, *state.autoKey))
        state.autoKey.reset();
}

void GetMouse(Point *where)
{
    *where = state.mouse;
    if (qd.thePort)
        GlobalToLocal(where);
}

// One input per call, so that a loop sees each change of the button.
static void takeOneInput()
{
    if (std::optional<Input> input = takeInput(1))
        queueEventFor(*input);
}

Boolean Button(void)
{
    takeOneInput();
    return state.buttonDown;
}

static bool mouseEventQueued()
{
    return std::any_of(state.queue.begin(), state.queue.end(), [](const EventRecord &event) {
        return event.what == mouseDown || event.what == mouseUp;
    });
}

Boolean StillDown(void)
{
    if (!state.buttonDown || mouseEventQueued())
        return false;
    takeOneInput();
    return state.buttonDown && !mouseEventQueued();
}

uint32_t TickCount(void)
{
    return machine().ticks();
}

uint32_t GetCaretTime(void)
{
    return 32;
}

uint32_t GetDblTime(void)
{
    return 32;
}

void Delay(uint32_t ticks, uint32_t *finalTicks)
{
    quickdraw::presentDisplays();
    machine().passTicks(ticks);
    if (finalTicks)
        *finalTicks = machine().ticks();
}
