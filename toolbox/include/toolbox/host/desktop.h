// The machine that is a window on the desktop, for hosts.
//
// One window is the Toolbox's only display; keyboard, mouse, clipboard and sound
// are those of the person's desktop, and time is real. Built on SDL, which is
// loaded by openDesktop and not before: a program that never opens a window needs
// no libraries for displays.
//
// Everything here is called on one thread, the one that called openDesktop and
// runs the Toolbox. Usual order: openDesktop, toolbox::start with the machine,
// the session, toolbox::stop, then the machine is destroyed, which closes the
// window.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "toolbox/host/machine.h"

namespace toolbox {

struct DesktopOptions {
    // The window's title, UTF-8.
    std::string title = "Riders";
    // First size in QuickDraw's pixels, made smaller if the display has less
    // room; the person may change it, down to 512 by 342.
    int width = 800;
    int height = 600;
    // Bits per pixel: 1, 2, 4, 8 or 32.
    int depth = 32;
    // Device pixels per pixel: 1, 2 or 3. 0 follows the display that the
    // window is on, unless RIDERS_SCALE in the environment names a scale.
    int scale = 0;
    bool fullScreen = false;
};

// One line for the user: why there is no window, such as
// "no display: neither DISPLAY nor WAYLAND_DISPLAY is set".
struct DesktopError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// What a host may ask of the window beyond the seam. Every call is allowed for as
// long as the machine exists, whether the Toolbox runs or not; none takes input or
// lets time pass.
//
// How the person's actions arrive:
// - Command is Ctrl or Super, Option is Alt. With Command a key gives the plain
//   character of the layout, '.' where the layout types a period; otherwise
//   what the layout and its dead keys type. A character that Mac OS Roman does
//   not have sounds the beep.
// - The right mouse button is the button with Control, the middle one with Option: most window managers keep
//   clicks with Alt for themselves.
// - A file dropped on the window gives Input fileDropped.
// - F11, Alt-Return and Super-Return switch to the full screen and back and are
//   not passed on.
// - Closing the window, SIGTERM, SIGINT and the end of the desktop session each
//   give Input quit; the window stays until the machine is destroyed. So does the
//   loss of the display, again and again.
// - A new size or scale gives one displaysChanged, once it has stayed for a
//   tenth of a second; until then displays() gives the size before.
// - The button counts as released when the window loses the keyboard.
//
// Sound: beep and playSound need no sound card; without one they are silent and
// playSound returns at once. playSound also returns when quit arrives.
class Desktop : public Machine {
public:
    // Bits per pixel from now on: 1, 2, 4, 8 or 32 (std::invalid_argument
    // otherwise). Announced by displaysChanged when it differs.
    virtual void setDepth(int bits) = 0;
    virtual int depth() const = 0;
    // Fills the whole display, or gives it back. The new size is announced like
    // any other, so it arrives only when input is waited for.
    virtual void setFullScreen(bool wanted) = 0;
    virtual bool fullScreen() const = 0;
    // UTF-8.
    virtual void setTitle(const std::string &title) = 0;
    // Whether the display server has ended or cannot be reached any more: nobody
    // sees the window, and nothing comes from there.
    virtual bool displayLost() const = 0;
};

// Opens the window and shows it, white until something is presented. One at a
// time. DesktopError when there is no display, no window can be made, or the part
// of the program that makes windows, riders_desktop.so beside the program, is
// missing; std::invalid_argument for options out of range.
std::unique_ptr<Desktop> openDesktop(const DesktopOptions &options = {});

}  // namespace toolbox
