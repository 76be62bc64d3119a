// A display with nobody at it: an X server in memory, for one test program.
#pragma once

#include <sys/types.h>

#include <string>

namespace desktop {

class Display {
public:
    // Starts the server and names it in DISPLAY; WAYLAND_DISPLAY is taken out.
    // std::runtime_error when there is none to be had.
    explicit Display(const std::string &screen = "1024x768x24");
    ~Display();
    Display(const Display &) = delete;

    // Lets everybody else on the machine go first.
    void beSlow() const;

    // What is on it, as PNG, or a part of it.
    void picture(const std::string &file, const std::string &geometry = {}) const;

private:
    pid_t server_ = -1;
};

}  // namespace desktop
