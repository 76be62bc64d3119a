#include "user/front_dialog.h"

#include <algorithm>
#include <string>

#include "dialogs/dialog_list.h"
#include "dialogs/identity.h"
#include "quickdraw/port_scope.h"
#include "standardfile/state.h"
#include "toolbox/host/text.h"
#include "user/hand.h"

namespace toolbox::user {
namespace {

struct DialogItem {
    std::int16_t type = 0;
    Handle handle = nullptr;
    Rect box{};
};

std::string named(int item)
{
    return "item " + std::to_string(item) + " of dialog " + std::to_string(frontDialogID());
}

bool isControl(const DialogItem &item)
{
    return (item.type & ctrlItem) && !(item.type & (statText | editText)) && item.handle;
}

DialogItem found(int number)
{
    DialogPtr dialog = frontDialog();
    if (!dialog)
        throw Problem{"no dialog is open"};
    if (number < 1 || number > CountDITL(dialog))
        throw Problem{"dialog " + std::to_string(frontDialogID()) + " has no item " + std::to_string(number)};
    DialogItem item;
    GetDItem(dialog, static_cast<std::int16_t>(number), &item.type, &item.handle, &item.box);
    return item;
}

ControlRecord recordOf(const DialogItem &item)
{
    return **reinterpret_cast<ControlHandle>(item.handle);
}

bool shows(const DialogItem &item, Point local)
{
    Rect content = frontDialog()->portRect;
    return !EmptyRect(&item.box) && PtInRect(local, &content) && (!isControl(item) || recordOf(item).contrlVis);
}

}  // namespace

DialogPtr frontDialog()
{
    WindowPtr front = FrontWindow();
    if (!front || reinterpret_cast<WindowPeek>(front)->windowKind != dialogKind)
        return nullptr;
    return front;
}

int frontDialogID()
{
    DialogPtr dialog = frontDialog();
    return dialog ? dialogs::idOf(dialog) : 0;
}

bool messageInFront()
{
    const dialogs::Dialog *dialog = dialogs::find(frontDialog());
    const auto fileDialog = standardfile::state();
    if (!dialog || !dialog->complete || (fileDialog && fileDialog->dialog == frontDialog()))
        return false;
    constexpr int mostDrawn = 2;  // an outline and a panel; more of them are popups
    const auto countOf = [&](std::int16_t kind) {
        return std::count_if(dialog->items.begin(), dialog->items.end(),
                             [&](const dialogs::Item &item) { return item.kind() == kind; });
    };
    return countOf(statText) > 0 && countOf(ctrlItem + btnCtrl) > 0 && countOf(editText) == 0 &&
           countOf(userItem) <= mostDrawn;
}

bool isDimmed(int number)
{
    constexpr std::uint8_t dimmed = 255;
    DialogItem item = found(number);
    return isControl(item) && recordOf(item).contrlHilite == dimmed;
}

Point middle(const Rect &r)
{
    return {static_cast<int16_t>((r.top + r.bottom) / 2), static_cast<int16_t>((r.left + r.right) / 2)};
}

Point middleOf(int number)
{
    DialogItem item = found(number);
    Point point = middle(item.box);
    if (!shows(item, point))
        throw Problem{named(number) + " is hidden"};
    quickdraw::PortScope port(frontDialog());
    LocalToGlobal(&point);
    if (!PtInRgn(point, GetGrayRgn()))
        throw Problem{named(number) + " is off the screen"};
    return point;
}

Point pressableMiddleOf(int number)
{
    Point point = middleOf(number);
    if (isDimmed(number))
        throw Problem{named(number) + ", \"" + utf8FromPascal(recordOf(found(number)).contrlTitle) + "\", is dimmed"};
    return point;
}

}  // namespace toolbox::user
