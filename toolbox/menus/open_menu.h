// The menu that is open now: on the display, and for those who have to find its
// items there without eyes.
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

// A menu on the display, from making it to its end, however that comes. The
// current port must be the desktop's.
class MenuOnDisplay {
public:
    MenuOnDisplay(MenuHandle menu, const MenuView &view);
    ~MenuOnDisplay();
    MenuOnDisplay(const MenuOnDisplay &) = delete;

    const MenuView &view() const { return view_; }
    void highlight(int item) { view_.highlight(item); }
    // Scrolls where the mouse is over a row that asks for it, and highlights
    // the item under it.
    void follow(Point mouse);
    void step(int direction);
    // What lay under the menu is not to be put back: it has been painted anew.
    void leavePixels() { covered_.reset(); }

private:
    MenuView view_;
    std::optional<quickdraw::SavedBits> covered_;
};

}  // namespace toolbox::menus
