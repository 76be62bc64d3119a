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

// In the menu bar, which no popup covers.
constexpr Point outsideEveryMenu{2, 2};

}  // namespace

// A filter may undim a button only once it has seen the last key, so a dimmed
// one is given a little time.
Progress Press::advance(Hand &hand)
{
    constexpr int patience = 3;
    if (isDimmed(item_) && waited_++ < patience)
        return Progress::wait;
    hand.clickAt(pressableMiddleOf(item_), modifiers_);
    return Progress::done;
}

Progress Choose::advance(Hand &hand)
{
    if (pressed_) {
        release(hand);
        return Progress::done;
    }
    hand.pressAt(pressableMiddleOf(item_));
    pressed_ = true;
    return Progress::more;
}

void Choose::release(Hand &hand)
{
    if (!menus::openMenu())
        throw Problem{"item " + std::to_string(item_) + " is not a popup: no menu opened"};
    int item = pick_(textsOf(menus::openMenu()->menu));
    if (item == 0)
        return hand.releaseAt(outsideEveryMenu);
    const menus::OpenMenu &open = *menus::openMenu();
    if (item < 0 || item > static_cast<int>(open.items.size()))
        throw Problem{"menu " + std::to_string(open.id) + " has no item " + std::to_string(item)};
    Rect row = open.items[static_cast<std::size_t>(item - 1)];
    if (EmptyRect(&row))
        throw Problem{"item " + std::to_string(item) + " of menu " + std::to_string(open.id) + " does not show"};
    hand.releaseAt(middle(row));
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
