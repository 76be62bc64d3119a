// Menus as a whole: where they come from, and the list of those installed.
#include "menus/menu_list.h"

#include <algorithm>

#include "menus/menu_bytes.h"
#include "menus/open_menu.h"
#include "toolbox/bigendian.h"
#include "toolbox/host/text.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

namespace toolbox {
namespace {

struct Installed {
    std::int16_t id;
    MenuHandle menu;
    bool inBar;   // those in the bar are in its order
};

std::vector<Installed> installed;

}  // namespace

std::vector<MenuHandle> menus::menusInBar()
{
    std::vector<MenuHandle> menus;
    for (const Installed &entry : installed)
        if (entry.inBar)
            menus.push_back(entry.menu);
    return menus;
}

void menus::forgetMenus()
{
    installed.clear();
}

}  // namespace toolbox

using namespace toolbox;
using namespace toolbox::menus;

extern "C" {

MenuHandle GetMenu(int16_t id)
{
    Handle menu = GetResource('MENU', id);
    if (!isMenu(menu))
        return nullptr;
    HNoPurge(menu);
    return menu;
}

MenuHandle NewMenu(int16_t id, ConstStr255Param title)
{
    struct Head {
        BigInt16 id, width = 0, height = 0, definition = 0, reserved = 0;
        BigUInt32 flags = 0xFFFFFFFF;
    };
    static_assert(sizeof(Head) == titleOffset);
    Head head;
    head.id = id;
    std::string bytes(reinterpret_cast<char *>(&head), sizeof head);
    bytes += static_cast<char>(title[0]);
    bytes += pascalView(title);
    bytes += '\0';
    Handle menu = nullptr;
    PtrToHand(bytes.data(), &menu, static_cast<Size>(bytes.size()));
    return menu;
}

void DisposeMenu(MenuHandle menu)
{
    std::erase_if(installed, [&](const Installed &entry) { return entry.menu == menu; });
    DisposeHandle(menu);
}

void InsertMenu(MenuHandle menu, int16_t before)
{
    if (!isMenu(menu) || GetMHandle(menuID(menu)))
        return;
    bool inBar = before >= 0;
    auto place = std::find_if(installed.begin(), installed.end(),
                              [&](const Installed &entry) { return inBar && entry.inBar && entry.id == before; });
    installed.insert(place, {menuID(menu), menu, inBar});
}

void ClearMenuBar(void)
{
    std::erase_if(installed, [](const Installed &entry) { return entry.inBar; });
}

void DeleteMenu(int16_t id)
{
    std::erase_if(installed, [&](const Installed &entry) { return entry.id == id; });
}

MenuHandle GetMHandle(int16_t id)
{
    for (const Installed &entry : installed)
        if (entry.id == id)
            return entry.menu;
    return nullptr;
}

}  // extern "C"
