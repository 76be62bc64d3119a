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

MenuOnScreen::MenuOnScreen(MenuHandle menu, const MenuView &view)
    : view_(view), covered_(quickdraw::saveBits(view.covered()))
{
    view_.draw();
    open = OpenMenu{menu, menuID(menu), view_.itemRects()};
}

MenuOnScreen::~MenuOnScreen()
{
    if (covered_ && !quickdraw::restoreBits(*covered_))
        windows::screensChanged();
    open.reset();
}

void MenuOnScreen::follow(Point mouse)
{
    if (view_.scrollAt(mouse))
        open->items = view_.itemRects();
    view_.highlight(view_.itemAt(mouse));
}

void MenuOnScreen::step(int direction)
{
    view_.step(direction);
    open->items = view_.itemRects();
}

}  // namespace toolbox::menus
