// The machine behind the window. Private to the Toolbox.
#pragma once

#include <chrono>
#include <optional>

#include "desktop/clipboard.h"
#include "desktop/input_queue.h"
#include "desktop/keyboard.h"
#include "desktop/mouse.h"
#include "desktop/sound.h"
#include "desktop/window.h"
#include "toolbox/host/desktop.h"

namespace toolbox::desktop {

class DesktopMachine : public Desktop {
public:
    explicit DesktopMachine(const DesktopOptions &options);
    ~DesktopMachine() override;
    DesktopMachine(const DesktopMachine &) = delete;
    DesktopMachine &operator=(const DesktopMachine &) = delete;

    std::optional<Input> nextInput(std::uint32_t waitTicks) override;
    bool inputWaiting() override;
    std::uint32_t ticks() override;
    void passTicks(std::uint32_t count) override;
    std::vector<Display> displays() override;
    void present(int index, const Picture &picture, const Rect &changed) override;
    std::string clipboardText() override;
    void setClipboardText(const std::string &text) override;
    std::uint32_t clipboardSerial() override;
    void beep() override;
    void playSound(const std::vector<std::uint8_t> &samples, double samplesPerSecond) override;
    void setCursor(CursorShape shape) override;

    void setDepth(int bits) override;
    int depth() const override { return display_.depth; }
    void setFullScreen(bool wanted) override;
    bool fullScreen() const override { return window_.fullScreen(); }
    void setTitle(const std::string &title) override { window_.setTitle(title); }
    bool displayLost() const override { return window_.displayLost(); }

private:
    using Clock = std::chrono::steady_clock;

    void collect();
    void take(const SDL_Event &event);
    void takeWindowEvent(const SDL_WindowEvent &event);
    void takeDropped(char *file);
    bool switchesFullScreen(const SDL_Event &event);
    void sleepUntil(Clock::time_point end);
    void doWhatIsDue();
    std::optional<Clock::time_point> nextDue() const;
    Clock::time_point timeOf(std::uint32_t tick) const;
    void settleDisplay();
    void noticeClipboard();

    Window window_;
    InputQueue queue_;
    Keyboard keyboard_;
    Mouse mouse_{queue_};
    Clipboard clipboard_;
    std::uint32_t announcedClipboard_ = 0;   // the serial of the last clipboardChanged
    Sound sound_;
    Display display_{};
    bool quitAsLost_ = false;
    const Clock::time_point start_ = Clock::now();
    Clock::time_point lastShown_{};
    std::optional<Clock::time_point> settlesAt_;   // of a new size
    SDL_Cursor *cursor_ = nullptr;
    CursorShape shape_ = CursorShape::arrow;
};

}  // namespace toolbox::desktop
