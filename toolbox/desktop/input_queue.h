// Inputs that have arrived and wait to be taken. Private to the desktop
// machine.
#pragma once

#include <deque>
#include <optional>

#include "toolbox/host/machine.h"

namespace toolbox::desktop {

class InputQueue {
public:
    // A move that follows a move replaces it, so that a slow reader sees where the
    // mouse is and not where it has been. News of displays, clipboard and quitting
    // is kept only once until it is taken.
    void push(const Input &input);
    std::optional<Input> take();
    bool empty() const { return inputs_.empty(); }
    bool holds(Input::Kind kind) const;

private:
    std::deque<Input> inputs_;
};

}  // namespace toolbox::desktop
