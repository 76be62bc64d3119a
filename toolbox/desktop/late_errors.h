// Errors of the X server that come too late to matter. Private to the desktop
// machine.
#pragma once

namespace toolbox::desktop {

// SDL wakes its own wait with a message to the window, sent over a separate
// connection. A message still under way when the window closes finds no window
// there, and Xlib ends the process with status 1 at an error that is not handled.
// To be made before SDL's video is started, which restores the handler it found
// before it closes that connection, and to be destroyed after it has ended.
class LateErrors {
public:
    LateErrors();
    ~LateErrors();
    LateErrors(const LateErrors &) = delete;
    LateErrors &operator=(const LateErrors &) = delete;

    // From now on errors about windows that no longer exist are ignored.
    void letPass();

private:
    void *xlib_;   // nullptr: there is none
};

}  // namespace toolbox::desktop
