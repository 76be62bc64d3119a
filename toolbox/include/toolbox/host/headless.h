// The machine that exists only in memory: virtual time, no real display, no
// sound. It is complete; tests and scripted sessions run on it.
#pragma once

#include <deque>
#include <functional>

#include "toolbox/host/machine.h"

namespace toolbox {

class HeadlessMachine : public Machine {
public:
    explicit HeadlessMachine(std::vector<Display> displays = {{{0, 0, 480, 640}, 8}});

    // Called when a program waits for input and the queue is empty, and at no
    // other moment: returns the next input, or nothing to let time pass. May look
    // at and act on everything; may throw to end the session. Without a source
    // time passes and no input ever comes.
    using Source = std::function<std::optional<Input>()>;
    void setSource(Source source);
    // Input that has arrived: it comes before what the source would return.
    void push(const Input &input);

    // At least one. Takes effect at once and announces displaysChanged.
    virtual void setDisplays(std::vector<Display> displays);
    // False for sessions that no one looks at: no pixels are kept. To be set before
    // the Toolbox is started; true unless set.
    void wantPictures(bool wanted);
    // Receives every picture that is presented; borrowed for the call, which must
    // not call the Toolbox. None unless set.
    using Watcher = std::function<void(int display, const Picture &picture)>;
    void setWatcher(Watcher watcher);
    // As another program would; the serial changes.
    virtual void putOnClipboard(const std::string &text);
    // What was last presented; empty before that. std::out_of_range when there
    // is no such display.
    const Picture &lastPicture(int index) const;
    int beeps() const;
    int soundsPlayed() const;

    std::optional<Input> nextInput(std::uint32_t waitTicks) override;
    bool inputWaiting() override;
    std::uint32_t ticks() override;
    void passTicks(std::uint32_t count) override;
    std::vector<Display> displays() override;
    void present(int index, const Picture &picture, const Rect &changed) override;
    bool picturesWanted() override;
    std::string clipboardText() override;
    void setClipboardText(const std::string &text) override;
    std::uint32_t clipboardSerial() override;
    void beep() override;
    void playSound(const std::vector<std::uint8_t> &samples, double samplesPerSecond) override;
    void setCursor(CursorShape shape) override;

private:
    std::vector<Display> displays_;
    std::vector<Picture> pictures_;
    std::deque<Input> queue_;
    Source source_;
    Watcher watcher_;
    std::uint32_t ticks_ = 0;
    std::string clipboard_;
    std::uint32_t clipboardSerial_ = 0;
    bool picturesWanted_ = true;
    int beeps_ = 0;
    int soundsPlayed_ = 0;
    CursorShape cursor_ = CursorShape::arrow;
};

}  // namespace toolbox
