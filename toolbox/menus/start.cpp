#include "menus/menu_bar.h"
#include "menus/menu_list.h"
#include "session/managers.h"

namespace toolbox {

void managers::startMenus(const Configuration &)
{
    menus::forgetMenus();
    menus::startMenuBar();
}

void managers::stopMenus()
{
    menus::forgetMenus();
    menus::stopMenuBar();
}

}  // namespace toolbox
