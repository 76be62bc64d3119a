// A Wayland compositor for one test: its one output is filled by the one
// window that opens.
#pragma once

#include <sys/types.h>

#include <string>

#include "support/toolbox_test.h"

namespace desktop {

class Weston {
public:
    // Runs in a window at the top left of the X display in DISPLAY, whose
    // keyboard and mouse it uses: with an output in memory only it would have
    // none, and SDL 2.26 does not start there. Names itself in WAYLAND_DISPLAY,
    // and has SDL use it. std::runtime_error when it does not start.
    Weston(int width, int height);
    ~Weston();
    Weston(const Weston &) = delete;
    Weston &operator=(const Weston &) = delete;

private:
    TemporaryFolder folder_;
    pid_t compositor_ = -1;
};

}  // namespace desktop
