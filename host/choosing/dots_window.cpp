#include "choosing/dots_window.h"

#include <algorithm>
#include <array>

#include "toolbox/host/companion.h"
#include "toolbox/host/draw_pixels.h"
#include "toolbox/host/menu_bar.h"
#include "toolbox/host/text.h"
#include "toolbox/host/trace.h"

namespace riders::choosing {
namespace {

constexpr int16_t kDialogID = 1030, kDrawnItem = 1;
constexpr int16_t kMargin = 8, kLine = 12, kFirstLine = 14, kTextSize = 10;  // the first is a baseline
constexpr int16_t kRampTop = 45, kTintsTop = 87, kTintStep = kTintHeight + 4, kLastLine = 252;
constexpr int16_t kGap = 6;  // between the windows

DotsWindow *current = nullptr;

class PortOfDots {
public:
    explicit PortOfDots(WindowPtr window)
    {
        GetPort(&before_);
        SetPort(window);
    }
    ~PortOfDots() { SetPort(before_); }
    PortOfDots(const PortOfDots &) = delete;
    PortOfDots &operator=(const PortOfDots &) = delete;

private:
    GrafPtr before_ = nullptr;
};

Rect frameOf(WindowPtr window)
{
    return (**reinterpret_cast<WindowPeek>(window)->strucRgn).rgnBBox;
}

Rect roomOnDisplay()
{
    Rect room = qd.screenBits.bounds;
    room.top = static_cast<int16_t>(room.top + toolbox::menuBarHeight);
    return room;
}

bool holds(const Rect &outer, const Rect &inner)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

// Of the frame. Nothing where the display has no room beside the dialog.
std::optional<Rect> placeBeside(const Rect &dialog, int width, int height)
{
    const auto at = [&](int left, int top) {
        return Rect{static_cast<int16_t>(top), static_cast<int16_t>(left), static_cast<int16_t>(top + height),
                    static_cast<int16_t>(left + width)};
    };
    const Rect room = roomOnDisplay();
    const int top = std::clamp<int>(dialog.top, room.top, std::max<int>(room.bottom - height, room.top));
    for (const Rect &place : {at(dialog.right + kGap, top), at(dialog.left - kGap - width, top),
                              at(dialog.left, dialog.bottom + kGap), at(dialog.left, dialog.top - kGap - height)})
        if (holds(room, place))
            return place;
    return std::nullopt;
}

void drawLine(const std::string &text, int left, int baseline)
{
    Str255 line;
    toolbox::setPascal(line, toolbox::romanFromUtf8Lossy(text).substr(0, 255));
    MoveTo(static_cast<int16_t>(left), static_cast<int16_t>(baseline));
    DrawString(line);
}

// With a frame around it.
void drawPicture(const toolbox::Picture &picture, int left, int top, int times)
{
    Rect box{static_cast<int16_t>(top), static_cast<int16_t>(left),
             static_cast<int16_t>(top + picture.height * times),
             static_cast<int16_t>(left + picture.width * times)};
    toolbox::drawPixels(picture, box);
    InsetRect(&box, -1, -1);
    FrameRect(&box);
}

}  // namespace

DotsWindow::DotsWindow(DialogPtr beside) : dialog_(beside), window_(GetNewDialog(kDialogID, nullptr, beside))
{
    current = this;
    if (!window_)
        return;
    int16_t type = 0;
    Handle item = nullptr;
    Rect box{};
    GetDItem(window_, kDrawnItem, &type, &item, &box);
    SetDItem(window_, kDrawnItem, type, reinterpret_cast<Handle>(drawProc), &box);
    toolbox::setCompanion(dialog_, window_);
}

DotsWindow::~DotsWindow()
{
    current = nullptr;
    if (window_)
        DisposDialog(window_);
}

void DotsWindow::show(const std::vector<std::string> &above, const std::string &below,
                      std::optional<Sample> sample)
{
    above_ = above;
    below_ = below;
    sample_ = std::move(sample);
    if (!window_)
        return;
    const PortOfDots port(window_);
    EraseRect(&window_->portRect);
    InvalRect(&window_->portRect);
}

void DotsWindow::follow()
{
    if (!window_)
        return;
    const Rect dialog = frameOf(dialog_), display = roomOnDisplay();
    if (EqualRect(&dialog, &dialogWas_) && EqualRect(&display, &displayWas_))
        return;
    dialogWas_ = dialog;
    displayWas_ = display;
    // A window that has not been placed has its frame, too.
    const Rect frame = frameOf(window_);
    const auto place = placeBeside(dialog, frame.right - frame.left, frame.bottom - frame.top);
    if (!place) {
        toolbox::trace::line("dots hidden");
        return HideWindow(window_);
    }
    const PortOfDots port(window_);
    Point corner{window_->portRect.top, window_->portRect.left};
    LocalToGlobal(&corner);
    MoveWindow(window_, static_cast<int16_t>(place->left + corner.h - frame.left),
               static_cast<int16_t>(place->top + corner.v - frame.top), false);
    toolbox::trace::line("dots at %d,%d %dx%d", place->left, place->top, place->right - place->left,
                         place->bottom - place->top);
    ShowWindow(window_);
}

void DotsWindow::drawProc(DialogPtr, int16_t)
{
    if (current)
        current->draw();
}

void DotsWindow::draw() const
{
    TextSize(kTextSize);
    for (std::size_t i = 0; i < above_.size(); ++i)
        drawLine(above_[i], kMargin, kFirstLine + static_cast<int>(i) * kLine);
    drawLine(below_, kMargin, kLastLine);
    if (sample_)
        drawDots(*sample_);
}

void DotsWindow::drawDots(const Sample &sample) const
{
    drawPicture(sample.ramp, kMargin, kRampTop, sample.enlargement);
    for (std::size_t i = 0; i < kTints.size(); ++i) {
        const int top = kTintsTop + static_cast<int>(i) * kTintStep;
        drawPicture(sample.tints[i], kMargin, top, sample.enlargement);
        drawLine(std::to_string(kTints[i]) + " %", kMargin + kTintWidth + 3, top + kTintHeight / 2 + 4);
    }
}

}  // namespace riders::choosing
