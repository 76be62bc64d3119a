#include "user/activity.h"

#include "menus/menu_bytes.h"
#include "menus/open_menu.h"
#include "toolbox/host/text.h"
#include "user/front_dialog.h"

namespace toolbox::user {
namespace {

std::vector<std::string> textsOf(MenuHandle menu)
{
    std::vector<std::string> texts;
    for (int item = 1; item <= menus::itemCount(menu); ++item) {
        std::string text = menus::itemText(menu, *menus::findItem(menu, item));
        text.erase(text.find_last_not_of(' ') + 1);
        texts.push_back(utf8FromRoman(text));
    }
    return texts;
}

// The first and the last visible item, from 1; 0 when none is.
int firstShown(const menus::OpenMenu &open)
{
    for (std::size_t i = 0; i < open.items.size(); ++i)
        if (!EmptyRect(&open.items[i]))
            return static_cast<int>(i + 1);
    return 0;
}

int lastShown(const menus::OpenMenu &open)
{
    for (std::size_t i = open.items.size(); i > 0; --i)
        if (!EmptyRect(&open.items[i - 1]))
            return static_cast<int>(i);
    return 0;
}

// In the menu bar, which no popup covers.
constexpr Point outsideEveryMenu{2, 2};

}  // namespace

// By a click, which does no harm if something else closes the menu first.
void closeOpenMenu(Hand &hand)
{
    if (menus::openMenu())
        hand.clickAt(outsideEveryMenu);
}

// A filter may undim a button only once it has seen the last key, so a dimmed
// one is given a little time.
Progress Press::advance(Hand &hand)
{
    constexpr int patience = 3;
    if (isDimmed(item_) && waited_++ < patience)
        return Progress::wait;
    closeOpenMenu(hand);
    hand.clickAt(pressableMiddleOf(item_), modifiers_);
    return Progress::done;
}

Progress Choose::advance(Hand &hand)
{
    if (!pressed_) {
        closeOpenMenu(hand);
        hand.pressAt(pressableMiddleOf(item_));
        pressed_ = true;
        return Progress::more;
    }
    if (!menus::openMenu())
        throw Problem{"item " + std::to_string(item_) + " is not a popup: no menu opened"};
    if (!picked_)
        pick();
    return release(hand);
}

void Choose::pick()
{
    chosen_ = pick_(textsOf(menus::openMenu()->menu));
    picked_ = true;
    const menus::OpenMenu &open = *menus::openMenu();
    if (chosen_ < 0 || chosen_ > static_cast<int>(open.items.size()))
        throw Problem{"menu " + std::to_string(open.id) + " has no item " + std::to_string(chosen_)};
}

Progress Choose::release(Hand &hand)
{
    if (chosen_ == 0) {
        hand.releaseAt(outsideEveryMenu);
        return Progress::done;
    }
    const menus::OpenMenu &open = *menus::openMenu();
    Rect row = open.items[static_cast<std::size_t>(chosen_ - 1)];
    if (EmptyRect(&row))
        return scrollTo(hand, firstShown(open));
    // By way of the row's edge: a release where the mouse was pressed could be
    // the first click of two.
    hand.moveTo({static_cast<int16_t>(row.bottom - 1), row.left});
    hand.releaseAt(middle(row));
    return Progress::done;
}

// Points at the arrow above the first visible item or below the last, in a row
// as high as an item's.
Progress Choose::scrollTo(Hand &hand, int first)
{
    constexpr int patience = 100;
    const menus::OpenMenu &open = *menus::openMenu();
    scrolledInVain_ = first == lastFirst_ ? scrolledInVain_ + 1 : 0;
    lastFirst_ = first;
    if (first == 0 || scrolledInVain_ > patience)
        throw Problem{"item " + std::to_string(chosen_) + " of menu " + std::to_string(open.id) + " does not show"};
    const bool up = chosen_ < first;
    Rect row = open.items[static_cast<std::size_t>((up ? first : lastShown(open)) - 1)];
    const int height = row.bottom - row.top;
    OffsetRect(&row, 0, static_cast<int16_t>(up ? -height : height));
    hand.moveTo(middle(row));
    return Progress::more;
}

// The times are those a new keyboard is set to.
Progress Repeat::advance(Hand &hand)
{
    constexpr std::uint32_t ticksToFirst = 24, ticksBetween = 4;
    if (repeated_ < 0) {
        hand.keyInput(Input::Kind::keyDown, key_, modifiers_);
    } else if (repeated_ < times_) {
        hand.machine.passTicks(repeated_ == 0 ? ticksToFirst : ticksBetween);
        hand.keyInput(Input::Kind::autoKey, key_, modifiers_);
    } else {
        hand.keyInput(Input::Kind::keyUp, key_, modifiers_);
        return Progress::done;
    }
    ++repeated_;
    return Progress::more;
}

Progress Wait::advance(Hand &hand)
{
    std::uint32_t now = hand.machine.ticks();
    if (!started_) {
        started_ = true;
        start_ = now;
    } else if (now == lastAsked_) {
        hand.machine.passTicks(1);
    }
    lastAsked_ = hand.machine.ticks();
    return lastAsked_ - start_ >= ticks_ ? Progress::done : Progress::wait;
}

}  // namespace toolbox::user
