#include "source/utilities.h"

#include <algorithm>

#include "source/environment.h"
#include "source/needs.h"
#include "source/reasons.h"
#include "source/resourceNumbers.h"
#include "source/strings.h"
#include "toolbox/bigendian.h"
#include "toolbox/keys.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"

namespace {

constexpr Size kWholeHeap = 0x800000;
constexpr int16_t kVersionPrefix = 1;
constexpr int kShortVersionOffset = 6;

// The 'vers' 1 of the plug-in's own file, at least its four number bytes.
Handle VersionResource()
{
    Handle version = Get1Resource('vers', 1);
    Need(version && GetHandleSize(version) >= 4, kNoVersion, " (vers resource)");
    return version;
}

void AppendText(StringPtr version, const char *text)
{
    ConcatPStr(ql_quorum_passtr(text), version, 31);
}

void AppendNumber(StringPtr version, int number)
{
    Str255 digits;
    NumToString(number, digits);
    ConcatPStr(digits, version, 31);
}

int FromDecimalDigits(unsigned char digits)
{
    return (digits >> 4) * 10 + (digits & 0x0F);
}

const char *StageLetter(unsigned char stage)
{
    switch (stage >> 4) {
    case 2:
    case 3: return "d";
    case 4:
    case 5: return "a";
    case 6:
    case 7: return "b";
    default: return nullptr;
    }
}

int32_t Area(const Rect &r)
{
    return static_cast<int32_t>(r.right - r.left) * (r.bottom - r.top);
}

// In global coordinates, with its title bar; empty for nil.
Rect WindowOnDisplays(WindowPtr window)
{
    Rect bounds{};
    if (!window)
        return bounds;
    GrafPtr savedPort;
    GetPort(&savedPort);
    SetPort(window);
    bounds = window->portRect;
    RectToGlobal(&bounds);
    SetPort(savedPort);
    return bounds;
}

// The display with the largest part of the bounds, the first if several are equal;
// nil if none has any.
GDHandle DeviceShowingMost(const Rect &bounds)
{
    GDHandle best = nullptr;
    int32_t largest = 0;
    for (GDHandle device = GetDeviceList(); device; device = GetNextDevice(device)) {
        if (!TestDeviceAttribute(device, screenDevice) || !TestDeviceAttribute(device, screenActive))
            continue;
        Rect display = (*device)->gdRect;
        Rect overlap;
        if (!SectRect(&display, &bounds, &overlap) || Area(overlap) <= largest)
            continue;
        best = device;
        largest = Area(overlap);
    }
    return best;
}

// Top left of something of that size on the display: centred across, and 1/part of
// the free height down.
Point PlaceOn(const Rect &display, int width, int height, int part)
{
    Point where;
    where.h = static_cast<int16_t>(display.left + (display.right - display.left - width) / 2);
    where.v = static_cast<int16_t>(display.top + (display.bottom - display.top - height) / part);
    return where;
}

Point PlaceOnDisplayOf(WindowPtr window, int width, int height, int part)
{
    Rect display;
    GetCurDevRect(window, &display);
    return PlaceOn(display, width, height, part);
}

int WidthOf(WindowPtr window)
{
    return window->portRect.right - window->portRect.left;
}

int HeightOf(WindowPtr window)
{
    return window->portRect.bottom - window->portRect.top;
}

// Set for good by the report that there is no display: it ends the process.
Boolean gNoDisplayReported = false;

}  // namespace

void UtilsInit()
{
    gNoDisplayReported = false;
}

void GetAppVersionStr(Str31 version)
{
    Str255 prefix;
    NeedString(prefix, kAboutStrings, kVersionPrefix);
    CopyPStr(prefix, version, 31);
    unsigned char number[4];
    GetAppVers(number);
    AppendNumber(version, FromDecimalDigits(number[0]));
    AppendText(version, ".");
    AppendNumber(version, number[1] >> 4);
    if (number[1] & 0x0F) {
        AppendText(version, ".");
        AppendNumber(version, number[1] & 0x0F);
    }
    if (const char *letter = StageLetter(number[2])) {
        AppendText(version, letter);
        AppendNumber(version, FromDecimalDigits(number[3]));
    }
}

void GetAppVersionLongStr(Str255 version)
{
    Handle resource = VersionResource();
    const unsigned char *bytes = reinterpret_cast<const unsigned char *>(*resource);
    Size size = GetHandleSize(resource);
    Size start = kShortVersionOffset;
    if (start < size)
        start += bytes[start] + 1;
    version[0] = 0;
    if (start < size) {
        version[0] = static_cast<unsigned char>(std::min<Size>(bytes[start], size - start - 1));
        BlockMove(bytes + start + 1, version + 1, version[0]);
    }
}

void GetAppVers(unsigned char version[4])
{
    BlockMove(*VersionResource(), version, 4);
}

void OutlineDefault(DialogPtr dialog, int16_t)
{
    int16_t type;
    Handle item;
    Rect box{};
    GetDItem(dialog, ok, &type, &item, &box);
    int16_t corner = std::max<int16_t>((box.bottom - box.top) / 2, 16);
    PenSize(3, 3);
    InsetRect(&box, -4, -4);
    FrameRoundRect(&box, corner, corner);
    PenSize(1, 1);
}

Boolean IsPushButton(DialogPtr dialog, int16_t item)
{
    int16_t type = -1;
    Handle control = nullptr;
    Rect box;
    GetDItem(dialog, item, &type, &control, &box);
    return type == ctrlItem + btnCtrl && control;
}

void FlashButton(DialogPtr dialog, int16_t item)
{
    if (!IsPushButton(dialog, item))
        return;
    int16_t type;
    Handle control;
    Rect box;
    GetDItem(dialog, item, &type, &control, &box);
    uint32_t finalTicks;
    HiliteControl(reinterpret_cast<ControlHandle>(control), inButton);
    Delay(8, &finalTicks);
    HiliteControl(reinterpret_cast<ControlHandle>(control), 0);
}

Boolean GenericFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit)
{
    return TwoButtonKeys(dialog, event, itemHit, cancel);
}

Boolean IsConfirmKey(const EventRecord &event)
{
    int character = event.message & charCodeMask;
    return event.what == keyDown && (character == toolbox::key::carriageReturn || character == toolbox::key::enter);
}

Boolean IsCancelKey(const EventRecord &event)
{
    int character = event.message & charCodeMask;
    return event.what == keyDown &&
           (character == toolbox::key::escape || (character == '.' && (event.modifiers & cmdKey)));
}

Boolean TwoButtonKeys(DialogPtr dialog, EventRecord *event, int16_t *itemHit, int16_t cancelItem)
{
    int16_t hit;
    if (IsConfirmKey(*event))
        hit = ok;
    else if (IsCancelKey(*event))
        hit = IsPushButton(dialog, cancelItem) ? cancelItem : 0;
    else
        return false;
    *itemHit = hit;
    if (hit)
        FlashButton(dialog, hit);
    return true;
}

void CrushTheHeap()
{
    PurgeMem(kWholeHeap);
    CompactMem(kWholeHeap);
}

void GetUniqueTempName(Str63 name)
{
    Str255 digits;
    NumToString(Random(), digits);
    ConcatPStr(digits, name, 63);
}

int16_t FindCharOffset(char character, Handle text, int16_t start)
{
    Size end = std::min<Size>(GetHandleSize(text), INT16_MAX + 1);
    for (Size i = std::max<Size>(start, 0); i < end; ++i)
        if ((*text)[i] == character)
            return static_cast<int16_t>(i);
    return -1;
}

void GetCurDevRect(WindowPtr window, Rect *display)
{
    if (!gEnvirInfo->hasColorQD) {
        *display = gEnvirInfo->screenRect;
        return;
    }
    GDHandle device = DeviceShowingMost(WindowOnDisplays(window));
    if (!device)
        device = GetMainDevice();
    // The report itself asks for the display, to be centred there; without one it goes where the first one was.
    if (!device && gNoDisplayReported) {
        *display = gEnvirInfo->screenRect;
        return;
    }
    gNoDisplayReported = !device;
    Need(device, kNoDisplay, " (no monitor)");
    *display = (*device)->gdRect;
}

void CenterWindow(WindowPtr reference, WindowPtr window, int16_t mode)
{
    Point where = PlaceOnDisplayOf(reference, WidthOf(window), HeightOf(window), mode == kCenterThird ? 3 : 2);
    MoveWindow(window, where.h, where.v, false);
}

void CenterWindowInWindow(WindowPtr outer, WindowPtr inner)
{
    if (!outer)
        return;
    Point where;
    GetWindowPosition(outer, &where);
    MoveWindow(inner, static_cast<int16_t>(where.h + (WidthOf(outer) - WidthOf(inner)) / 2),
               static_cast<int16_t>(where.v + (HeightOf(outer) - HeightOf(inner)) / 2), false);
}

void CenterAlert(WindowPtr window, int16_t alertID)
{
    Rect display;
    GetCurDevRect(window, &display);
    Handle alert = GetResource('ALRT', alertID);
    Need(alert && GetHandleSize(alert) >= static_cast<Size>(sizeof(BigRect)), kNoAlert, " (alert resource)");
    // An 'ALRT' begins with its bounds.
    BigRect *bounds = reinterpret_cast<BigRect *>(*alert);
    int width = bounds->right - bounds->left;
    int height = bounds->bottom - bounds->top;
    Point where = PlaceOn(display, width, height, 3);
    bounds->top = where.v;
    bounds->left = where.h;
    bounds->bottom = static_cast<int16_t>(where.v + height);
    bounds->right = static_cast<int16_t>(where.h + width);
}

void CenterSFGet(WindowPtr window, Point *where, int16_t width, int16_t height)
{
    *where = PlaceOnDisplayOf(window, width, height, 3);
}

void CenterSFPut(WindowPtr window, Point *where, int16_t width, int16_t height)
{
    *where = PlaceOnDisplayOf(window, width, height, 3);
}

void GetWindowPosition(WindowPtr window, Point *position)
{
    if (!window)
        return;
    GrafPtr savedPort;
    GetPort(&savedPort);
    SetPort(window);
    SetPt(position, window->portRect.left, window->portRect.top);
    LocalToGlobal(position);
    SetPort(savedPort);
}

Boolean IsWindowOpen(WindowPtr window)
{
    for (WindowPeek open = reinterpret_cast<WindowPeek>(FrontWindow()); open; open = open->nextWindow)
        if (reinterpret_cast<WindowPtr>(open) == window)
            return true;
    return false;
}

int16_t GetWindowType(WindowPtr window)
{
    if (!window)
        return 0;
    int16_t kind = reinterpret_cast<WindowPeek>(window)->windowKind;
    if (kind < 0)
        return -1;
    if (kind == userKind)
        return userKind;
    return kind == dialogKind ? static_cast<int16_t>(GetWRefCon(window) & 0xFFFF) : 0;
}

int16_t GetCurPixDepth()
{
    int16_t depth = 1;
    if (gEnvirInfo->hasColorQD) {
        GDHandle device = GetMainDevice();
        if (device)
            depth = (*(*device)->gdPMap)->pixelSize;
    }
    gEnvirInfo->pixDepth = depth;
    return depth;
}

void RectToGlobal(Rect *r)
{
    Point topLeft{r->top, r->left};
    Point bottomRight{r->bottom, r->right};
    LocalToGlobal(&topLeft);
    LocalToGlobal(&bottomRight);
    SetRect(r, topLeft.h, static_cast<int16_t>(topLeft.v - 18), bottomRight.h, bottomRight.v);
}

void SetupFontMenuItems(MenuHandle menu, ConstStr255Param fontName, int16_t *item)
{
    if (CountMItems(menu) == 0)
        AddResMenu(menu, 'FONT');
    if (FindMenuItemNumber(menu, fontName, item))
        CheckItem(menu, *item, true);
}

Boolean FindMenuItemNumber(MenuHandle menu, ConstStr255Param name, int16_t *item)
{
    if (*item > 0)
        CheckItem(menu, *item, false);
    int16_t count = CountMItems(menu);
    for (*item = 1; *item <= count; ++*item) {
        Str255 text;
        GetItem(menu, *item, text);
        RemoveTrailingSpaces(text);
        if (ComparePStr(text, name))
            return true;
    }
    *item = 0;
    return false;
}
