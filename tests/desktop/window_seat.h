// A seat for the scripted user at a real window: what the hand means to do is
// done by xdotool on the display, and the program gets what comes of it through
// the window system. What the program waits for passes in real time; what the
// machine takes besides is not counted, so that a busy one plays the same session.
#pragma once

#include <deque>
#include <memory>
#include <utility>

#include "desktop/hands.h"
#include "toolbox/host/desktop.h"
#include "toolbox/host/headless.h"

namespace desktop {

// One display only; std::invalid_argument for more.
class WindowSeat : public toolbox::HeadlessMachine {
public:
    explicit WindowSeat(const std::vector<toolbox::Display> &displays);
    ~WindowSeat() override;

    // As X writes geometries: WIDTHxHEIGHT+X+Y, in the display's pixels.
    std::string placeOnDisplay();

    void setDisplays(std::vector<toolbox::Display> displays) override;
    void putOnClipboard(const std::string &text) override;

    std::optional<toolbox::Input> nextInput(std::uint32_t waitTicks) override;
    bool inputWaiting() override;
    void passTicks(std::uint32_t count) override;
    std::vector<toolbox::Display> displays() override { return window_->displays(); }
    void present(int index, const toolbox::Picture &picture, const Rect &changed) override;
    std::string clipboardText() override { return window_->clipboardText(); }
    void setClipboardText(const std::string &text) override { window_->setClipboardText(text); }
    std::uint32_t clipboardSerial() override { return window_->clipboardSerial(); }
    void beep() override;
    void playSound(const std::vector<std::uint8_t> &samples, double samplesPerSecond) override;
    void setCursor(CursorShape shape) override { window_->setCursor(shape); }

private:
    void findWindow();
    std::optional<toolbox::Input> waitAtWindow(std::uint32_t ticks);
    // Moves real hands; true when the window system will respond with an input
    // of that kind.
    bool carryOut(const toolbox::Input &meant);
    void holdModifiers(std::uint16_t wanted);
    // The input that came of it; std::runtime_error when none came for a long
    // time.
    toolbox::Input whatCameOf(const toolbox::Input &meant);

    std::unique_ptr<toolbox::Desktop> window_;
    std::unique_ptr<Hands> hands_;
    std::string windowId_;
    std::pair<int, int> corner_;   // of the window on the display
    std::deque<toolbox::Input> unasked_;
    std::uint16_t held_ = 0;
    Point pointer_{-1, -1};
};

}  // namespace desktop
