// The machine that is only memory: virtual time, no screen, no sound. Complete,
// and what tests and scripted sessions run on.
#pragma once

#include <deque>
#include <functional>

#include "toolbox/host/machine.h"

namespace toolbox {

class HeadlessMachine : public Machine {
public:
    explicit HeadlessMachine(std::vector<Screen> screens = {{{0, 0, 480, 640}, 8}});

    // Asked for more when the queue is empty: answers the next input, or
    // nothing to let time pass. May throw to end the session. Without one,
    // time passes and nothing ever comes.
    using Source = std::function<std::optional<Input>()>;
    void setSource(Source source);
    void push(const Input &input);

    // Takes effect at once and announces screensChanged.
    void setScreens(std::vector<Screen> screens);
    // As another program would; the serial changes.
    void putOnClipboard(const std::string &text);
    const Picture &lastPicture(int index) const;
    int beeps() const;
    int soundsPlayed() const;

    std::optional<Input> nextInput(std::uint32_t waitTicks) override;
    bool inputWaiting() override;
    std::uint32_t ticks() override;
    void passTicks(std::uint32_t count) override;
    std::vector<Screen> screens() override;
    void present(int index, const Picture &picture) override;
    std::string clipboardText() override;
    void setClipboardText(const std::string &text) override;
    std::uint32_t clipboardSerial() override;
    void beep() override;
    void playSound(const std::vector<std::uint8_t> &samples, double samplesPerSecond) override;
    void setCursor(CursorShape shape) override;

private:
    std::vector<Screen> screens_;
    std::vector<Picture> pictures_;
    std::deque<Input> queue_;
    Source source_;
    std::uint32_t ticks_ = 0;
    std::string clipboard_;
    std::uint32_t clipboardSerial_ = 0;
    int beeps_ = 0;
    int soundsPlayed_ = 0;
    CursorShape cursor_ = CursorShape::arrow;
};

}  // namespace toolbox
