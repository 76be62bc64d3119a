// Errors of the X server that come too late to matter. Private
// to the desktop machine.
#pragma once

namespace toolbox::desktop {

// SDL wakes its own wait by a message to the window, on a connection of its
// own. One still under way when the window closes finds no window there, and
// Xlib ends a process at an error that is not looked at, with status 1. To be made
// before SDL's video is started, which puts back the handler it found before it
// closes that connection, and to go after it has ended.
class LateErrors {
public:
    LateErrors();
    ~LateErrors();
    LateErrors(const LateErrors &) = delete;

    // From now on errors about windows that are gone are let pass.
    void letPass();

private:
    void *xlib_;   // nullptr: there is none
};

}  // namespace toolbox::desktop
