// The machine that is a window on the desktop, for hosts.
//
// One window is the Toolbox's one display; keyboard, mouse, clipboard and sound
// are the person's own, and time is real. Built on SDL, which is loaded by
// openDesktop and not before: a program that never opens a window needs no
// display's libraries.
//
// Everything here is called on one thread, the one that called openDesktop and
// runs the Toolbox. Usual order: openDesktop, toolbox::start with the machine,
// the session, toolbox::stop, and then let the machine go, which closes the
// window.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "toolbox/host/machine.h"

namespace toolbox {

struct DesktopOptions {
    // Of the window, UTF-8.
    std::string title = "Riders";
    // First size in QuickDraw's pixels, made smaller where the display has less
    // room; the person may change it, down to 512 by 342.
    int width = 800;
    int height = 600;
    // Bits a pixel: 1, 2, 4, 8 or 32.
    int depth = 32;
    // Device pixels to a pixel: 1, 2 or 3. 0 follows the display that the
    // window is on, unless RIDERS_SCALE in the environment names a scale.
    int scale = 0;
    bool fullScreen = false;
};

// One line for the user: why there is no window, such as
// "no display: neither DISPLAY nor WAYLAND_DISPLAY is set".
struct DesktopError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// What a host may ask of the window beyond the seam. Every call is good from
// openDesktop to the end of the machine, whether the Toolbox runs or not; none
// takes input or lets time pass.
//
// How the person's doings arrive:
// - Command is Ctrl or Super, Option is Alt. With Command a key gives the plain
//   character of the layout, '.' where the layout types a period; elsewhere
//   what the layout and its dead keys type. A character that Mac OS Roman does
//   not have sounds the beep.
// - The right mouse button is the button with Control.
// - F11, Alt-Return and Super-Return switch to the full screen and back and are
//   seen by no one else.
// - Closing the window, SIGTERM, SIGINT and the end of the session each give
//   Input quit; the window stays until the machine goes.
// - A new size or scale gives one screensChanged, once it has stayed for a
//   tenth of a second; until then screens() gives the size before.
// - The button counts as released when the window loses the keyboard.
//
// Sound: beep and playSound need no sound card; without one they are silent and
// playSound returns at once. playSound also returns when quit arrives.
class Desktop : public Machine {
public:
    // Bits a pixel from now on: 1, 2, 4, 8 or 32 (std::invalid_argument
    // otherwise). Announced by screensChanged when it differs.
    virtual void setDepth(int bits) = 0;
    virtual int depth() const = 0;
    // Takes the whole display, or gives it back. The new size is announced as
    // any other, so it is seen only once input is waited for.
    virtual void setFullScreen(bool wanted) = 0;
    virtual bool fullScreen() const = 0;
    // UTF-8.
    virtual void setTitle(const std::string &title) = 0;
};

// Opens the window and shows it, white until something is presented. One at a
// time. DesktopError when there is no display, no window to be had, or the part
// of the program that makes windows, riders_desktop.so beside the program, is
// missing; std::invalid_argument for options out of range.
std::unique_ptr<Desktop> openDesktop(const DesktopOptions &options = {});

}  // namespace toolbox
