// Where input from the machine is taken in: the mouse, the keys held, and the
// queue of events not yet delivered. Private to the Event Manager.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <optional>

#include "toolbox/events.h"
#include "toolbox/host/machine.h"

namespace toolbox::events {

struct InputState {
    Point mouse{};
    bool buttonDown = false;
    std::uint16_t keys = 0;              // cmdKey and the like, as last seen
    std::deque<EventRecord> queue;       // mouse and keys, oldest first
    std::optional<EventRecord> autoKey;  // the latest only: repeats never pile up
    bool quit = false;
    std::deque<std::filesystem::path> dropped;
};

extern InputState state;

// An event that happens now: time, mouse and modifiers filled in.
EventRecord eventNow(std::int16_t what, std::uintptr_t message = 0);

// Takes the next input, after showing what has been drawn; if there is none,
// lets up to waitTicks pass. Returns what came. Mouse position, button and
// keys are those of the newest input taken, so input is taken one at a time
// and no sooner than it is needed.
std::optional<Input> takeInput(std::uint32_t waitTicks);
// Queues the event that an input makes; most kinds make one.
void queueEventFor(const Input &input);

bool isMouse(const Input &input);
bool matches(std::int16_t mask, const EventRecord &event);

}  // namespace toolbox::events
