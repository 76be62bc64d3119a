#include "user/bar.h"

#include "menus/menu_bar.h"
#include "menus/menu_bytes.h"
#include "menus/open_menu.h"
#include "toolbox/host/text.h"
#include "user/front_dialog.h"

namespace toolbox::user {
namespace {

Point onTitle(const std::string &text)
{
    for (const menus::Title &title : menus::titles())
        if (utf8FromRoman(menus::menuTitle(title.menu)) == text)
            return middle(title.place);
    throw Problem{"the menu bar has no \"" + text + "\""};
}

Point onItem(const std::string &title, const std::string &text)
{
    if (!menus::openMenu())
        throw Problem{"the menu \"" + title + "\" did not open"};
    const menus::OpenMenu &open = *menus::openMenu();
    for (std::size_t i = 0; i < open.items.size(); ++i) {
        auto place = menus::findItem(open.menu, static_cast<int>(i + 1));
        if (place && utf8FromRoman(menus::itemText(open.menu, *place)) == text && !EmptyRect(&open.items[i]))
            return middle(open.items[i]);
    }
    throw Problem{"the menu \"" + title + "\" shows no \"" + text + "\""};
}

}  // namespace

Progress ChooseFromBar::advance(Hand &hand)
{
    if (!pressed_) {
        closeOpenMenu(hand);
        hand.pressAt(onTitle(title_));
        pressed_ = true;
        return Progress::more;
    }
    constexpr Point outside{2, 2};
    hand.releaseAt(item_.empty() ? outside : onItem(title_, item_));
    return Progress::done;
}

}  // namespace toolbox::user
