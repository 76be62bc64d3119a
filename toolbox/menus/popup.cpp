// PopUpMenuSelect: a menu on the screen for as long as the button is down.
#include <optional>

#include "events/tracking.h"
#include "menus/menu_bytes.h"
#include "menus/menu_view.h"
#include "menus/open_menu.h"
#include "quickdraw/pictures.h"
#include "quickdraw/port.h"
#include "toolbox/events.h"
#include "toolbox/host/trace.h"
#include "windows/desktop.h"

namespace toolbox::menus {
namespace {

std::optional<OpenMenu> open;

// Puts the pixels under the menu back however tracking ends.
class Covering {
public:
    explicit Covering(const Rect &area) : bits_(quickdraw::saveBits(area)) {}
    ~Covering()
    {
        if (!quickdraw::restoreBits(bits_))
            windows::screensChanged();
        open.reset();
    }
    Covering(const Covering &) = delete;

private:
    quickdraw::SavedBits bits_;
};

void follow(MenuView &view, Point mouse)
{
    if (view.scrollAt(mouse))
        open->items = view.itemRects();
    view.highlight(view.itemAt(mouse));
}

// The item the button is released over, 0 for none.
int track(MenuView &view)
{
    Point mouse;
    GetMouse(&mouse);
    view.highlight(view.itemAt(mouse));
    while (std::optional<Input> input = events::nextTrackingInput()) {
        if (input->kind == Input::Kind::mouseUp)
            return view.itemAt(input->where);
        follow(view, input->where);
    }
    return 0;
}

int chosenFrom(MenuHandle menu, Point where, int item)
{
    quickdraw::PortInUse port(quickdraw::desktopPort());
    MenuView view(menu, where, item);
    Covering covering(view.covered());
    view.draw();
    open = OpenMenu{menu, menuID(menu), view.itemRects()};
    return track(view);
}

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

using namespace toolbox;
using namespace toolbox::menus;

extern "C" int32_t PopUpMenuSelect(MenuHandle menu, int16_t top, int16_t left, int16_t item)
{
    if (itemCount(menu) == 0)
        return 0;
    std::int16_t id = menuID(menu);
    trace::line("popup %d opened at item %d", id, item);
    int chosen = chosenFrom(menu, {top, left}, item);
    if (chosen == 0) {
        trace::line("popup %d gave nothing", id);
        return 0;
    }
    trace::line("popup %d gave %d", id, chosen);
    return static_cast<int32_t>(static_cast<std::uint32_t>(static_cast<std::uint16_t>(id)) << 16 |
                                static_cast<std::uint32_t>(chosen));
}
