#include "app/dialog_items.h"

#include <algorithm>

#include "toolbox/host/flash_button.h"
#include "toolbox/host/text.h"
#include "toolbox/keys.h"
#include "toolbox/system.h"

namespace riders::app {
namespace {

constexpr uint8_t kDimmed = 255;

Handle itemOf(DialogPtr dialog, int16_t number, Rect *box)
{
    int16_t type = 0;
    Handle item = nullptr;
    GetDItem(dialog, number, &type, &item, box);
    return item;
}

ControlHandle buttonOf(DialogPtr dialog, int16_t number)
{
    Rect ignored;
    return reinterpret_cast<ControlHandle>(itemOf(dialog, number, &ignored));
}

std::string fitting(std::string roman, int width)
{
    constexpr char ellipsis = '\xC9';
    Str255 text;
    toolbox::setPascal(text, roman);
    for (bool cut = false; StringWidth(text) > width && roman.size() > cut; cut = true) {
        roman.erase(roman.size() - 1 - cut);
        roman += ellipsis;
        toolbox::setPascal(text, roman);
    }
    return roman;
}

}  // namespace

void setUserItem(DialogPtr dialog, int16_t number, UserItemProcPtr draw)
{
    int16_t type = 0;
    Handle item = nullptr;
    Rect box;
    GetDItem(dialog, number, &type, &item, &box);
    SetDItem(dialog, number, type, reinterpret_cast<Handle>(draw), &box);
}

void setItemText(DialogPtr dialog, int16_t number, const std::string &text)
{
    PortOf port(dialog);
    Rect box;
    Str255 shown;
    Handle item = itemOf(dialog, number, &box);
    toolbox::setPascal(shown, fitting(toolbox::romanFromUtf8Lossy(text).substr(0, 255), box.right - box.left));
    SetIText(item, shown);
}

Rect itemBox(DialogPtr dialog, int16_t number)
{
    Rect box{};
    itemOf(dialog, number, &box);
    return box;
}

void placeItem(DialogPtr dialog, int16_t number, const Rect &box)
{
    int16_t type = 0;
    Handle item = nullptr;
    Rect before;
    GetDItem(dialog, number, &type, &item, &before);
    SetDItem(dialog, number, type, item, &box);
    if ((type & ~itemDisable & ~3) != ctrlItem || !item)
        return;
    auto *control = reinterpret_cast<ControlHandle>(item);
    MoveControl(control, box.left, box.top);
    SizeControl(control, static_cast<int16_t>(box.right - box.left), static_cast<int16_t>(box.bottom - box.top));
}

bool isButton(DialogPtr dialog, int16_t number)
{
    int16_t type = 0;
    Handle item = nullptr;
    Rect box;
    GetDItem(dialog, number, &type, &item, &box);
    return (type & ~itemDisable) == ctrlItem + btnCtrl;
}

void setTitle(DialogPtr dialog, int16_t number, const std::string &title)
{
    Str255 before, wanted;
    toolbox::setPascal(wanted, toolbox::romanFromUtf8Lossy(title));
    GetCTitle(buttonOf(dialog, number), before);
    if (toolbox::utf8FromPascal(before) != title)
        SetCTitle(buttonOf(dialog, number), wanted);
}

bool canBePressed(DialogPtr dialog, int16_t number)
{
    return !isButton(dialog, number) || (**buttonOf(dialog, number)).contrlHilite != kDimmed;
}

void setParagraph(DialogPtr dialog, int16_t number, const std::string &text)
{
    const PortOf port(dialog);
    Rect box;
    Str255 shown;
    Handle item = itemOf(dialog, number, &box);
    std::string lines = text;
    std::replace(lines.begin(), lines.end(), '\n', '\r');
    toolbox::setPascal(shown, toolbox::romanFromUtf8Lossy(lines).substr(0, 255));
    SetIText(item, shown);
}

void enableButton(DialogPtr dialog, int16_t number, bool enabled)
{
    const uint8_t wanted = enabled ? 0 : kDimmed;
    if ((**buttonOf(dialog, number)).contrlHilite != wanted)
        HiliteControl(buttonOf(dialog, number), wanted);
}

void setCheckbox(DialogPtr dialog, int16_t number, bool on)
{
    SetCtlValue(buttonOf(dialog, number), on ? 1 : 0);
}

void drawOutline(DialogPtr dialog, int16_t outline, int16_t button)
{
    if (!reinterpret_cast<WindowPeek>(dialog)->visible)
        return;
    PortOf port(dialog);
    Rect box;
    itemOf(dialog, outline, &box);
    PenSize(3, 3);
    if ((**buttonOf(dialog, button)).contrlHilite == kDimmed)
        PenPat(&qd.gray);
    FrameRoundRect(&box, 16, 16);
    PenNormal();
}

int16_t buttonForKey(const EventRecord &event, int16_t byDefault, int16_t toCancel)
{
    namespace key = toolbox::key;
    if (event.what != keyDown)
        return 0;
    switch (event.message & charCodeMask) {
    case key::enter:
    case key::carriageReturn:
        return byDefault;
    case key::escape:
        return toCancel;
    case '.':
        return event.modifiers & cmdKey ? toCancel : 0;
    default:
        return 0;
    }
}

bool pressByKey(DialogPtr dialog, int16_t number)
{
    ControlHandle button = buttonOf(dialog, number);
    if ((**button).contrlHilite == kDimmed) {
        SysBeep(1);
        return false;
    }
    toolbox::flashButton(button);
    return true;
}

}  // namespace riders::app
