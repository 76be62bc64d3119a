#include "desktop/desktop_machine.h"

#include <algorithm>

#include "desktop_loader/module.h"

namespace toolbox::desktop {
namespace {

using namespace std::chrono_literals;

constexpr int smallestWidth = 512, smallestHeight = 342;
constexpr auto settlingTime = 100ms;
constexpr auto frameTime = std::chrono::nanoseconds(1'000'000'000 / 60);

using Moment = std::optional<std::chrono::steady_clock::time_point>;

Moment sooner(Moment a, Moment b)
{
    return a && b ? std::min(a, b) : a ? a : b;
}

}  // namespace

DesktopMachine::DesktopMachine(const DesktopOptions &options)
    : window_(options), keyboard_(queue_, [this] { beep(); })
{
    display_.depth = options.depth;
    settleDisplay();
    queue_ = {};
}

DesktopMachine::~DesktopMachine()
{
    if (cursor_)
        SDL_FreeCursor(cursor_);
}

// --- Time ---------------------------------------------------------------------

std::uint32_t DesktopMachine::ticks()
{
    return static_cast<std::uint32_t>((Clock::now() - start_) * 60 / std::chrono::seconds(1));
}

// The first moment of the tick.
DesktopMachine::Clock::time_point DesktopMachine::timeOf(std::uint32_t tick) const
{
    return start_ + std::chrono::nanoseconds((std::int64_t(tick) * 1'000'000'000 + 59) / 60);
}

std::optional<DesktopMachine::Clock::time_point> DesktopMachine::nextDue() const
{
    std::optional<Clock::time_point> due = sooner(settlesAt_, sound_.restsAt());
    return window_.drawn() ? sooner(due, lastShown_ + frameTime) : due;
}

void DesktopMachine::doWhatIsDue()
{
    const auto now = Clock::now();
    if (settlesAt_ && now >= *settlesAt_)
        settleDisplay();
    if (window_.drawn() && now >= lastShown_ + frameTime) {
        window_.show();
        lastShown_ = now;
    }
    if (auto rests = sound_.restsAt(); rests && now >= *rests)
        sound_.rest();
}

// Sleeps until that moment, or until something arrives or becomes due.
void DesktopMachine::sleepUntil(Clock::time_point end)
{
    end = std::min(end, nextDue().value_or(end));
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    if (left > 0ms)
        SDL_WaitEventTimeout(nullptr, static_cast<int>(std::min(left, std::chrono::milliseconds(60s)).count()));
    collect();
}

void DesktopMachine::passTicks(std::uint32_t count)
{
    const auto end = timeOf(ticks() + count);
    window_.show();
    while (Clock::now() < end)
        sleepUntil(end);
}

// --- Input --------------------------------------------------------------------

std::optional<Input> DesktopMachine::nextInput(std::uint32_t waitTicks)
{
    const auto end = timeOf(ticks() + waitTicks);
    collect();
    while (queue_.empty() && waitTicks > 0 && Clock::now() < end)
        sleepUntil(end);
    return queue_.take();
}

bool DesktopMachine::inputWaiting()
{
    collect();
    return !queue_.empty();
}

void DesktopMachine::collect()
{
    for (SDL_Event event; SDL_PollEvent(&event);)
        take(event);
    keyboard_.settle();
    doWhatIsDue();
    if (!quitAsLost_ && displayLost()) {
        quitAsLost_ = true;   // once: whoever takes all that has arrived would never come to an end
        queue_.push({.kind = Input::Kind::quit});
    }
}

void DesktopMachine::take(const SDL_Event &event)
{
    switch (event.type) {
    case SDL_QUIT: return queue_.push({.kind = Input::Kind::quit});
    case SDL_WINDOWEVENT: return takeWindowEvent(event.window);
    case SDL_CLIPBOARDUPDATE: return noticeClipboard();
    case SDL_DROPFILE: return takeDropped(event.drop.file);
    }
    if (switchesFullScreen(event))
        return;
    keyboard_.take(event);
    mouse_.take(event, toolboxModifiers(SDL_GetModState()));
}

void DesktopMachine::takeDropped(char *file)
{
    queue_.push({.kind = Input::Kind::fileDropped, .path = file});
    SDL_free(file);
}

bool DesktopMachine::switchesFullScreen(const SDL_Event &event)
{
    if (event.type != SDL_KEYDOWN)
        return false;
    const SDL_Keysym &key = event.key.keysym;
    const bool wanted = key.sym == SDLK_F11 || (key.sym == SDLK_RETURN && key.mod & (KMOD_ALT | KMOD_GUI));
    if (wanted && !event.key.repeat)
        setFullScreen(!fullScreen());
    return wanted;
}

void DesktopMachine::takeWindowEvent(const SDL_WindowEvent &event)
{
    switch (event.event) {
    case SDL_WINDOWEVENT_SIZE_CHANGED:
        window_.showAgain();
        settlesAt_ = Clock::now() + settlingTime;
        return;
    case SDL_WINDOWEVENT_DISPLAY_CHANGED: settlesAt_ = Clock::now() + settlingTime; return;
    case SDL_WINDOWEVENT_EXPOSED: return window_.showAgain();
    case SDL_WINDOWEVENT_FOCUS_GAINED: return noticeClipboard();
    case SDL_WINDOWEVENT_FOCUS_LOST: return mouse_.release(toolboxModifiers(SDL_GetModState()));
    }
}

// --- The display ---------------------------------------------------------------

std::vector<Display> DesktopMachine::displays()
{
    return {display_};
}

// On a display with another scale the window gets the same size in QuickDraw's
// pixels, if the program may choose its size; the new size then settles like any
// other.
void DesktopMachine::settleDisplay()
{
    settlesAt_.reset();
    const int scale = window_.scale();
    const Display before = display_;
    if (scale != before.scale || before.bounds.right == 0)
        window_.keepAbove(smallestWidth, smallestHeight, scale);
    const SDL_Point pixels = window_.pixels();
    display_.scale = scale;
    display_.bounds = Rect{0, 0, static_cast<std::int16_t>(std::max(pixels.y / scale, 1)),
                          static_cast<std::int16_t>(std::max(pixels.x / scale, 1))};
    mouse_.setRatio(window_.pixelsPerUnit() / scale);
    if (scale == before.scale && display_.bounds.right == before.bounds.right &&
        display_.bounds.bottom == before.bounds.bottom)
        return;
    if (scale != before.scale && before.bounds.right > 0)
        window_.resize(before.bounds.right, before.bounds.bottom, scale);
    queue_.push({.kind = Input::Kind::displaysChanged});
}

void DesktopMachine::present(int, const Picture &picture, const Rect &changed)
{
    window_.draw(picture, changed);
    doWhatIsDue();
}

void DesktopMachine::setDepth(int bits)
{
    if (!isDepth(bits))
        throw std::invalid_argument("the depth is 1, 2, 4, 8 or 32");
    if (bits == display_.depth)
        return;
    display_.depth = bits;
    queue_.push({.kind = Input::Kind::displaysChanged});
}

void DesktopMachine::setFullScreen(bool wanted)
{
    window_.setFullScreen(wanted);
}

void DesktopMachine::setCursor(CursorShape shape)
{
    if (cursor_ && shape == shape_)
        return;
    const SDL_SystemCursor system = shape == CursorShape::arrow  ? SDL_SYSTEM_CURSOR_ARROW
                                    : shape == CursorShape::text ? SDL_SYSTEM_CURSOR_IBEAM
                                                                 : SDL_SYSTEM_CURSOR_WAIT;
    SDL_Cursor *cursor = SDL_CreateSystemCursor(system);
    if (!cursor)
        return;
    SDL_SetCursor(cursor);
    if (cursor_)
        SDL_FreeCursor(cursor_);
    cursor_ = cursor;
    shape_ = shape;
}

// --- Clipboard and sound ------------------------------------------------------

std::string DesktopMachine::clipboardText()
{
    return clipboard_.text();
}

void DesktopMachine::setClipboardText(const std::string &text)
{
    clipboard_.setText(text);
}

std::uint32_t DesktopMachine::clipboardSerial()
{
    return clipboard_.serial();
}

void DesktopMachine::noticeClipboard()
{
    const std::uint32_t serial = clipboard_.serial();
    if (serial != announcedClipboard_)
        queue_.push({.kind = Input::Kind::clipboardChanged});
    announcedClipboard_ = serial;
}

void DesktopMachine::beep()
{
    sound_.startBeep();
}

void DesktopMachine::playSound(const std::vector<std::uint8_t> &samples, double samplesPerSecond)
{
    window_.show();
    const auto end = sound_.start(samples, samplesPerSecond);
    while (end && Clock::now() < *end && !queue_.holds(Input::Kind::quit))
        sleepUntil(*end);
    if (queue_.holds(Input::Kind::quit))
        sound_.fallSilent();
}

}  // namespace toolbox::desktop
