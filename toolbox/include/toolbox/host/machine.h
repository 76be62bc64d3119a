// The seam between the Toolbox and the machine it runs on.
//
// All that the Toolbox needs from outside comes through one Machine: input,
// time, displays, the clipboard, sound. Two exist: headless (memory only, time
// virtual) and a window on the desktop. The Toolbox calls it on one thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "toolbox/types.h"

namespace toolbox {

// A display, and the pixels that the Toolbox has on it.
struct Display {
    Rect bounds;     // global; the main display's top left is 0, 0
    int depth;       // bits per pixel: 1, 2, 4, 8 or 32
    int scale = 1;   // device pixels per QuickDraw pixel, each way: 1, 2 or 3
};

// Something the person at the machine did. The Event Manager takes inputs in
// order, one at a time and no sooner than it needs them, and keeps the state
// they describe: mouse, button and modifiers are those of the newest input
// taken.
struct Input {
    // mouseMoved may stand for several moves that came one after another.
    // keyUp makes no event; it ends the repeats that autoKey inputs make.
    // quit asks the program to end. clipboardChanged announces a new serial of
    // the clipboard. fileDropped: the person let go of a file over a display.
    enum class Kind { mouseMoved, mouseDown, mouseUp, keyDown, keyUp, autoKey, displaysChanged, clipboardChanged, quit,
                      fileDropped };
    Kind kind;
    Point where{};                // global, for the mouse kinds
    std::uint8_t character = 0;   // Mac OS Roman, for the key kinds
    std::uint8_t keyCode = 0;
    std::uint16_t modifiers = 0;  // for mouse and keys: cmdKey, shiftKey, optionKey, controlKey, alphaLock
    std::string path = {};        // of what was dropped, absolute
};

// Pixels ready to be shown: 32 bits each, 0x00RRGGBB, rows one after another.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

struct Machine {
    virtual ~Machine() = default;

    // The next input, in order. If there is none, waits up to waitTicks, lets
    // that time pass and returns nothing; it may return nothing sooner. Never
    // returns input out of order. May throw to end the session: the exception
    // passes through the Toolbox and its caller to whatever started the session.
    virtual std::optional<Input> nextInput(std::uint32_t waitTicks) = 0;
    // Whether input has arrived that nextInput(0) would return; nothing is
    // taken and no user is asked. A machine whose user acts only when waited
    // for may return false here and yet return input from nextInput.
    virtual bool inputWaiting() = 0;

    // Ticks of 1/60 s since start; never runs backwards.
    virtual std::uint32_t ticks() = 0;
    // Lets time pass without taking input: what arrives meanwhile is kept.
    virtual void passTicks(std::uint32_t count) = 0;

    // At least one; the first is the main display. May change between calls,
    // announced by Input displaysChanged. Bounds do not overlap and are not
    // empty.
    virtual std::vector<Display> displays() = 0;
    // Shows the pixels of display number index (as in displays); the picture is
    // scale times as wide and high as the display's bounds. Called before the
    // Toolbox waits, if they have changed. Outside the rectangle changed, which is
    // in the picture's own pixels, they are what was presented last; it is the
    // whole picture the first time, and when the size differs. Borrowed for the
    // call.
    virtual void present(int index, const Picture &picture, const Rect &changed) = 0;

    // Whether pictures will be looked at. Asked at start and for each new
    // display. False: shapes and text are measured and traced as usual, but no
    // pixel is kept, nothing is presented and displayPicture is empty.
    virtual bool picturesWanted() { return true; }

    // UTF-8 with \n line ends; empty when there is no text.
    virtual std::string clipboardText() = 0;
    virtual void setClipboardText(const std::string &text) = 0;
    // Changes whenever another program changes the clipboard.
    virtual std::uint32_t clipboardSerial() = 0;

    // Does not wait for the end of the sound.
    virtual void beep() = 0;
    // Unsigned 8-bit samples, one channel; returns when they have been played.
    virtual void playSound(const std::vector<std::uint8_t> &samples, double samplesPerSecond) = 0;
    // The shape of the mouse cursor from now on.
    enum class CursorShape { arrow, text, busy };
    virtual void setCursor(CursorShape shape) = 0;
};

}  // namespace toolbox
