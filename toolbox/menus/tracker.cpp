#include "menus/tracker.h"

#include <cstdlib>

#include "events/tracking.h"
#include "toolbox/events.h"
#include "toolbox/host/quit.h"
#include "toolbox/keys.h"

namespace toolbox::menus {
namespace {

using Kind = Input::Kind;

constexpr int stillWithin = 3;              // pixels a hand may move in a click
constexpr std::uint32_t scrollTicks = 4;    // per row, while the mouse rests
constexpr std::uint32_t second = 60, hour = 3600 * second;

}  // namespace

Tracker::Tracker() : begun_(TickCount())
{
    GetMouse(&mouse_);
    startPress(mouse_);
}

void Tracker::startPress(Point where)
{
    held_ = mayStay_ = true;
    moved_ = false;
    pressedAt_ = where;
    pressedTime_ = TickCount();
}

void Tracker::startByKey()
{
    held_ = mayStay_ = false;
}

bool Tracker::quick() const
{
    return TickCount() - pressedTime_ <= GetDblTime();
}

int Tracker::track()
{
    over_ = held_ && !events::pressUnderway();
    while (!over_) {
        std::uint32_t patience = down_ && down_->view().scrollsAt(mouse_) ? scrollTicks : second;
        auto keys = held_ ? events::MenuKeys::becomeEvents : events::MenuKeys::wanted;
        if (std::optional<Input> input = events::nextMenuInput(patience, keys))
            take(*input);
        else
            timePassed();
    }
    return chosen_;
}

void Tracker::timePassed()
{
    if (quitAsked() || TickCount() - begun_ > hour)
        finish(0);
    else if (down_ && down_->view().scrollsAt(mouse_))
        down_->follow(mouse_);
}

void Tracker::take(const Input &input)
{
    switch (input.kind) {
    case Kind::mouseMoved: return follow(input.where);
    case Kind::mouseDown: return press(input.where);
    case Kind::mouseUp: return release(input.where);
    case Kind::displaysChanged:
        if (down_)
            down_->leavePixels();
        return finish(0);
    default: return key(input);
    }
}

void Tracker::follow(Point mouse)
{
    mouse_ = mouse;
    moved_ |= std::abs(mouse.h - pressedAt_.h) > stillWithin || std::abs(mouse.v - pressedAt_.v) > stillWithin;
    mouseAt(mouse);
    if (down_)
        down_->follow(mouse);
}

// A press in a menu that was left open.
void Tracker::press(Point where)
{
    mouse_ = where;
    if (down_ && down_->view().holds(where)) {
        held_ = true;
        mayStay_ = false;
        down_->highlight(down_->view().itemAt(where));
    } else if (!pressBeside(where)) {
        finish(0);
    }
}

void Tracker::release(Point where)
{
    moved_ |= std::abs(where.h - pressedAt_.h) > stillWithin || std::abs(where.v - pressedAt_.v) > stillWithin;
    mouse_ = where;
    held_ = false;
    if (mayStay_ && staysOpenAt(where))
        return;
    const int item = down_ ? down_->view().itemAt(where) : 0;
    finish(!mayStay_ || moved_ || choosesUnmoved(item) ? item : 0);
}

void Tracker::key(const Input &input)
{
    if (!down_)
        return;
    switch (input.character) {
    case key::escape:
    case key::function: return finish(0);
    case '.': return input.modifiers & cmdKey ? finish(0) : void();
    case key::carriageReturn:
    case key::enter: return finish(down_->view().highlighted());
    case key::upArrow: return down_->step(-1);
    case key::downArrow: return down_->step(1);
    case key::leftArrow: return stepSideways(-1);
    case key::rightArrow: return stepSideways(1);
    default: return;
    }
}

void Tracker::finish(int item)
{
    chosen_ = item;
    over_ = true;
}

}  // namespace toolbox::menus
