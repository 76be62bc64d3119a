// What the menu bar shows, and the keys of its items.
#include "menus/menu_bar.h"

#include <algorithm>

#include "menus/menu_result.h"
#include "menus/menu_bytes.h"
#include "menus/menu_list.h"
#include "quickdraw/dimming.h"
#include "quickdraw/port.h"
#include "quickdraw/port_scope.h"
#include "toolbox/host/menu_bar.h"
#include "toolbox/host/text.h"
#include "toolbox/host/trace.h"
#include "windows/desktop.h"

namespace toolbox::menus {
namespace {

constexpr int firstTitle = 10;     // from the display's left edge
constexpr int margin = 8;          // left and right of a title's text
constexpr int textBase = 14;

std::int16_t hilited = 0;

void useTitleText()
{
    TextFont(systemFont);
    TextSize(12);
    TextFace(normal);
    TextMode(srcOr);
}

void titleText(MenuHandle menu, Str255 text)
{
    setPascal(text, menuTitle(menu));
}

bool isEnabled(MenuHandle menu)
{
    return enableFlags(menu) & 1;
}

void invertTitle(std::int16_t id)
{
    for (const Title &title : titles())
        if (title.id == id)
            InvertRect(&title.place);
}

void drawTitles()
{
    for (const Title &title : titles()) {
        Str255 text;
        titleText(title.menu, text);
        useTitleText();
        MoveTo(static_cast<int16_t>(title.place.left + margin), static_cast<int16_t>(title.place.top - 1 + textBase));
        DrawString(text);
        if (!isEnabled(title.menu))
            quickdraw::dim(title.place);
    }
    invertTitle(hilited);
}

int itemWithKey(MenuHandle menu, std::uint8_t key)
{
    auto small = [](std::uint8_t c) { return c >= 'A' && c <= 'Z' ? c + 32 : c + 0; };
    for (int item = 1; item <= itemCount(menu); ++item) {
        std::uint8_t own = attribute(menu, *findItem(menu, item), keyByte);
        if (own > ' ' && small(own) == small(key) && canBeChosen(menu, item))
            return item;
    }
    return 0;
}

}  // namespace

std::vector<Title> titles()
{
    quickdraw::PortScope port(quickdraw::desktopPort());
    useTitleText();
    std::vector<Title> all;
    Rect bar = qd.screenBits.bounds;
    int left = bar.left + firstTitle;
    for (MenuHandle menu : menusInBar()) {
        Str255 text;
        titleText(menu, text);
        int right = left + StringWidth(text) + 2 * margin;
        Rect place;
        SetRect(&place, static_cast<int16_t>(left), static_cast<int16_t>(bar.top + 1), static_cast<int16_t>(right),
                static_cast<int16_t>(bar.top + menuBarHeight - 1));
        all.push_back({menu, menuID(menu), place, left + 1});
        left = right;
    }
    return all;
}

std::optional<Title> titleAt(Point where)
{
    for (const Title &title : titles()) {
        Rect reach = title.place;
        --reach.top;       // the outermost pixels are easy to hit
        ++reach.bottom;
        if (PtInRect(where, &reach))
            return title;
    }
    return std::nullopt;
}

void startMenuBar()
{
    hilited = 0;
    windows::drawMenuTitles = drawTitles;
}

void stopMenuBar()
{
    hilited = 0;
    windows::drawMenuTitles = nullptr;
}

}  // namespace toolbox::menus

using namespace toolbox;
using namespace toolbox::menus;

extern "C" {

void DrawMenuBar(void)
{
    windows::paintMenuBar();
}

void HiliteMenu(int16_t id)
{
    if (id == hilited)
        return;
    quickdraw::PortScope port(quickdraw::desktopPort());
    invertTitle(hilited);
    invertTitle(id);
    hilited = id;
}

int32_t MenuKey(int16_t character)
{
    for (MenuHandle menu : menusInBar()) {
        int item = itemWithKey(menu, static_cast<std::uint8_t>(character));
        if (item == 0)
            continue;
        std::int16_t id = menuID(menu);
        HiliteMenu(id);
        trace::line("menu %d gave %d", id, item);
        return menuResult(id, item);
    }
    return 0;
}

}  // extern "C"
