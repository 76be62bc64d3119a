// The menu that is open now: on the display, and for the scripted user, which
// has to find its items there.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "menus/menu_view.h"
#include "quickdraw/pictures.h"
#include "toolbox/menus.h"

namespace toolbox::menus {

struct OpenMenu {
    MenuHandle menu;
    std::int16_t id;
    // Global, item 1 first; the part that can be seen and pressed, empty for an
    // item scrolled away.
    std::vector<Rect> items;
};

// Nothing while no menu is open.
const std::optional<OpenMenu> &openMenu();

// A menu that is on the display for as long as this object lives. The current
// port must be the desktop's.
class MenuOnDisplay {
public:
    MenuOnDisplay(MenuHandle menu, const MenuView &view);
    ~MenuOnDisplay();
    MenuOnDisplay(const MenuOnDisplay &) = delete;
    MenuOnDisplay &operator=(const MenuOnDisplay &) = delete;

    const MenuView &view() const { return view_; }
    void highlight(int item) { view_.highlight(item); }
    // Scrolls if the mouse is over a row that scrolls, and highlights the item
    // under it.
    void follow(Point mouse);
    void step(int direction);
    // Does not put back what was under the menu at its end: it has been
    // repainted.
    void leavePixels() { covered_.reset(); }

private:
    MenuView view_;
    std::optional<quickdraw::SavedBits> covered_;
};

}  // namespace toolbox::menus
