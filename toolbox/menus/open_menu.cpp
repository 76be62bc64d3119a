#include "menus/open_menu.h"

#include "menus/menu_bytes.h"
#include "windows/desktop.h"

namespace toolbox::menus {
namespace {

std::optional<OpenMenu> open;

}  // namespace

const std::optional<OpenMenu> &openMenu()
{
    return open;
}

MenuOnDisplay::MenuOnDisplay(MenuHandle menu, const MenuView &view)
    : view_(view), covered_(quickdraw::saveBits(view.covered()))
{
    view_.draw();
    open = OpenMenu{menu, menuID(menu), view_.itemRects()};
}

MenuOnDisplay::~MenuOnDisplay()
{
    if (covered_ && !quickdraw::restoreBits(*covered_))
        windows::displaysChanged();
    open.reset();
}

void MenuOnDisplay::follow(Point mouse)
{
    if (view_.scrollAt(mouse))
        open->items = view_.itemRects();
    view_.highlight(view_.itemAt(mouse));
}

void MenuOnDisplay::step(int direction)
{
    view_.step(direction);
    open->items = view_.itemRects();
}

}  // namespace toolbox::menus
