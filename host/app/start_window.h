// What a person sees while no job is open: how to begin, and what was made last.
#pragma once

#include <array>
#include <string>

#include "toolbox/controls.h"

namespace riders::app {

class StartWindow {
public:
    enum class Choice { none, openJob, makeRiders };

    // Shown at once, in the middle of the display. The Toolbox must outlive it.
    StartWindow();
    ~StartWindow();
    StartWindow(const StartWindow &) = delete;
    StartWindow &operator=(const StartWindow &) = delete;

    void show(bool shown);
    // A line at the foot; UTF-8.
    void say(const std::string &line);
    // Presses, keys and updates that are its own; what was chosen.
    Choice handle(const EventRecord &event);

private:
    void draw() const;
    void update(WindowPtr window) const;
    void drawLine(const std::string &text, int16_t baseline) const;
    void drawFocus(int button) const;
    void moveFocus(int by);
    Choice press(Point where);
    Choice key(const EventRecord &event);

    WindowPtr window_ = nullptr;
    std::array<ControlHandle, 2> buttons_{};
    int focus_ = 0;
    std::string line_;
};

}  // namespace riders::app
