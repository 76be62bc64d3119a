#include "app/start_window.h"

#include <algorithm>

#include "app/words.h"
#include "toolbox/host/flash_button.h"
#include "toolbox/host/menu_bar.h"
#include "toolbox/host/text.h"
#include "toolbox/keys.h"

namespace riders::app {
namespace {

constexpr int kWidth = 440, kHeight = 130;
constexpr int16_t kButtonTop = 52, kButtonHeight = 20, kButtonWidth = 170;
constexpr int16_t kHint = 28, kFoot = 106;  // baselines

Rect placeOnDisplay()
{
    const Rect display = qd.screenBits.bounds;
    const int left = display.left + (display.right - display.left - kWidth) / 2;
    const int top = display.top + toolbox::menuBarHeight +
                    (display.bottom - display.top - toolbox::menuBarHeight - kHeight) / 3;
    return {static_cast<int16_t>(top), static_cast<int16_t>(left), static_cast<int16_t>(top + kHeight),
            static_cast<int16_t>(left + kWidth)};
}

struct InWindow {
    explicit InWindow(WindowPtr window)
    {
        GetPort(&before);
        SetPort(window);
    }
    ~InWindow() { SetPort(before); }
    InWindow(const InWindow &) = delete;
    InWindow &operator=(const InWindow &) = delete;
    GrafPtr before = nullptr;
};

}  // namespace

StartWindow::StartWindow()
{
    const Rect place = placeOnDisplay();
    Str255 text = {0};
    window_ = NewWindow(nullptr, &place, text, false, dBoxProc, reinterpret_cast<WindowPtr>(-1), false, 0);
    if (!window_)
        return;
    for (int16_t i = 0; i < 2; ++i) {
        const auto left = static_cast<int16_t>(i == 0 ? 36 : kWidth - 36 - kButtonWidth);
        const Rect box{kButtonTop, left, kButtonTop + kButtonHeight, static_cast<int16_t>(left + kButtonWidth)};
        toolbox::setPascal(text, toolbox::romanFromUtf8Lossy(words(i == 0 ? Words::openJob : Words::makeRiders)));
        buttons_[static_cast<std::size_t>(i)] = NewControl(window_, &box, text, true, 0, 0, 1, pushButProc, 0);
    }
    show(true);
}

StartWindow::~StartWindow()
{
    if (window_)
        DisposeWindow(window_);
}

void StartWindow::show(bool shown)
{
    if (!window_)
        return;
    if (!shown)
        return HideWindow(window_);
    const Rect place = placeOnDisplay();
    MoveWindow(window_, place.left, place.top, false);
    ShowWindow(window_);
}

void StartWindow::say(const std::string &line)
{
    line_ = line;
    if (!window_)
        return;
    const InWindow port(window_);
    const Rect foot{kFoot - 14, 0, kHeight, kWidth};
    EraseRect(&foot);
    InvalRect(&foot);
}

void StartWindow::drawLine(const std::string &text, int16_t baseline) const
{
    Str255 line;
    toolbox::setPascal(line, toolbox::romanFromUtf8Lossy(text).substr(0, 255));
    MoveTo(static_cast<int16_t>(std::max(8, (kWidth - StringWidth(line)) / 2)), baseline);
    DrawString(line);
}

void StartWindow::drawFocus(int button) const
{
    Rect frame = (**buttons_[static_cast<std::size_t>(button)]).contrlRect;
    InsetRect(&frame, -4, -4);
    PenSize(3, 3);
    FrameRoundRect(&frame, 16, 16);
    PenNormal();
}

void StartWindow::draw() const
{
    drawLine(words(Words::howToBegin), kHint);
    drawLine(line_, kFoot);
    DrawControls(window_);
    drawFocus(focus_);
}

void StartWindow::moveFocus(int by)
{
    const InWindow port(window_);
    Rect frame = (**buttons_[static_cast<std::size_t>(focus_)]).contrlRect;
    InsetRect(&frame, -4, -4);
    EraseRect(&frame);
    InvalRect(&frame);
    focus_ = (focus_ + by + 2) % 2;
    drawFocus(focus_);
}

StartWindow::Choice StartWindow::press(Point where)
{
    const InWindow port(window_);
    GlobalToLocal(&where);
    for (std::size_t i = 0; i < buttons_.size(); ++i)
        if (buttons_[i] && TestControl(buttons_[i], where) != 0 && TrackControl(buttons_[i], where, nullptr) != 0)
            return i == 0 ? Choice::openJob : Choice::makeRiders;
    return Choice::none;
}

StartWindow::Choice StartWindow::key(const EventRecord &event)
{
    namespace key = toolbox::key;
    switch (event.message & charCodeMask) {
    case key::tab:
    case key::leftArrow:
    case key::rightArrow:
        moveFocus(1);
        return Choice::none;
    case key::enter:
    case key::carriageReturn:
    case ' ':
        toolbox::flashButton(buttons_[static_cast<std::size_t>(focus_)]);
        return focus_ == 0 ? Choice::openJob : Choice::makeRiders;
    default:
        return Choice::none;
    }
}

// Any window's, whatever there was no memory for: until it is updated no other event comes.
void StartWindow::update(WindowPtr window) const
{
    const InWindow port(window);
    BeginUpdate(window);
    if (window == window_ && buttons_[0] && buttons_[1])
        draw();
    EndUpdate(window);
}

StartWindow::Choice StartWindow::handle(const EventRecord &event)
{
    if (event.what == updateEvt) {
        update(reinterpret_cast<WindowPtr>(event.message));
        return Choice::none;
    }
    if (!window_ || !buttons_[0] || !buttons_[1] || FrontWindow() != window_)
        return Choice::none;
    WindowPtr at = nullptr;
    switch (event.what) {
    case mouseDown:
        return FindWindow(event.where, &at) == inContent && at == window_ ? press(event.where) : Choice::none;
    case keyDown:
        return event.modifiers & (cmdKey | optionKey) ? Choice::none : key(event);
    default:
        return Choice::none;
    }
}

}  // namespace riders::app
