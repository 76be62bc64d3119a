#include "menus/open_menu.h"

namespace toolbox::menus {
namespace {

std::optional<OpenMenu> open;

}  // namespace

const std::optional<OpenMenu> &openMenu()
{
    return open;
}

void forgetOpenMenu()
{
    open.reset();
}

}  // namespace toolbox::menus
