// PopUpMenuSelect: a menu where the mouse was pressed.
#include "menus/menu_result.h"
#include "menus/menu_bytes.h"
#include "menus/tracker.h"
#include "quickdraw/port.h"
#include "quickdraw/port_scope.h"
#include "toolbox/events.h"
#include "toolbox/host/trace.h"

namespace toolbox::menus {
namespace {

class PopUp : public Tracker {
public:
    PopUp(MenuHandle menu, Point where, int item) : current_(item)
    {
        down_.emplace(menu, MenuView(menu, where, item));
        Point mouse;
        GetMouse(&mouse);
        down_->highlight(down_->view().itemAt(mouse));
    }
    int choose() { return track(); }

protected:
    bool staysOpenAt(Point) const override { return quick() && !moved(); }
    // Where the display has no room for it, another item than the current one may be under the mouse.
    bool choosesUnmoved(int item) const override { return item == current_; }

private:
    int current_;
};

}  // namespace
}  // namespace toolbox::menus

using namespace toolbox;
using namespace toolbox::menus;

extern "C" int32_t PopUpMenuSelect(MenuHandle menu, int16_t top, int16_t left, int16_t item)
{
    if (itemCount(menu) == 0)
        return 0;
    std::int16_t id = menuID(menu);
    trace::line("popup %d opened at item %d", id, item);
    quickdraw::PortScope port(quickdraw::desktopPort());
    int chosen = PopUp(menu, {top, left}, item).choose();
    if (chosen == 0)
        trace::line("popup %d gave nothing", id);
    else
        trace::line("popup %d gave %d", id, chosen);
    return menuResult(id, chosen);
}
