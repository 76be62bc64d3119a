#include "ktCustomDlg.h"

#include "dialogItems.h"
#include "errors.h"
#include "ktAnnoDlg.h"
#include "ktColor.h"
#include "ktFreqDlg.h"
#include "ktMakeRiders.h"
#include "ktPrefs.h"
#include "ktSpot.h"
#include "popup.h"
#include "strings.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"
#include "utilities.h"

#include <type_traits>

DialogPtr gCustomDialog = nullptr;
Boolean gDone = false;
Handle gFreqPopInfo = nullptr;
Handle gAnglePopInfo = nullptr;
Handle gSpotPopInfo = nullptr;
Handle gFlatPopInfo = nullptr;
Handle gAnnoPopInfo = nullptr;
Handle gErrorPopInfo = nullptr;
Str255 gSavedFontNameStr = {0};

enum { kMakeItem = 1, kCancelItem = 2, kOutlineItem = 3, kFirstPopupItem = 4, kPanelItem = 16 };
enum { kQuestionDialog = 16132, kImportQuestion = 16146, kNothingChosen = 16155 };
enum { kMenuMissing = 7, kDialogMissing = 78 };
enum { kAnnotationUsedItem = 2 };

// A popup, its menu and its setting, in the order of the items from 4.
struct PopupPlace {
    Handle *popup;
    int16_t menuID;
    BigInt16 PrefsRec::*setting;
};

static const PopupPlace kPopups[] = {
    {&gFreqPopInfo, kFreqMenu, &PrefsRec::freqItem},    {&gAnglePopInfo, kAngleMenu, &PrefsRec::angleItem},
    {&gSpotPopInfo, kSpotMenu, &PrefsRec::spotItem},    {&gFlatPopInfo, kFlatMenu, &PrefsRec::flatItem},
    {&gAnnoPopInfo, kAnnoMenu, &PrefsRec::annoItem},    {&gErrorPopInfo, kErrorMenu, &PrefsRec::errorItem},
};

void CustomInit()
{
}

// --- Opening and closing ----------------------------------------------------

static void ReadFontName()
{
    MenuHandle fonts = GetMenu(kAnnoFontMenu);
    if (!fonts)
        TheErrorHandler(kErrorDialog, 16129, kMenuMissing, ql_quorum_passtr(" (menu resource)"), true);
    GetItem(fonts, gPrefsPtr->annoFontItem, gFontNameStr);
    RemoveTrailingSpaces(gFontNameStr);
    DeleteMenu(kAnnoFontMenu);
    ReleaseResource(fonts);
}

void SetupCustomDialog()
{
    int16_t item = kFirstPopupItem;
    for (const PopupPlace &place : kPopups) {
        Rect box = ItemBox(gCustomDialog, item++);
        *place.popup = NewPopup();
        SetupPopup(*place.popup, box, ql_quorum_passtr(""), nullptr, place.menuID, gPrefsPtr->*place.setting);
    }
    ReadFontName();
}

static void PlaceCustomDialog()
{
    if (gPrefsPtr->savePosition)
        MoveWindow(gCustomDialog, gPrefsPtr->customDlgPos.h, gPrefsPtr->customDlgPos.v, true);
    else
        CenterWindow(gCustomDialog, gCustomDialog, kCenterThird);
}

static void OpenCustomDialog(MessageBlock *block)
{
    gDone = false;
    gCustomDialog = GetNewDialog(kCustomDialogID, nullptr, reinterpret_cast<WindowPtr>(-1));
    if (!gCustomDialog)
        TheErrorHandler(kErrorDialog, 16129, kDialogMissing, ql_quorum_passtr(" (dlog resource)"), true);
    SetPort(gCustomDialog);
    SetWRefCon(gCustomDialog, reinterpret_cast<intptr_t>(block->hostProcs.as<HostProcs>()));
    if (gPrefsPtr->useColor)
        ColorTheDialog(true, gCustomDialog);
    SetupCustomDialog();
    InstallUserProc(gCustomDialog, kOutlineItem, OutlineDefault);
    InstallUserProc(gCustomDialog, kPanelItem, CustomProc);
    SaveCustomSettings();
    PlaceCustomDialog();
    SelectWindow(gCustomDialog);
    ShowWindow(gCustomDialog);
    SetCursor(&qd.arrow);
}

void HandleCustomDialog(MessageBlock *block)
{
    GrafPtr savedPort;
    GetPort(&savedPort);
    OpenCustomDialog(block);
    int16_t itemHit = 0;
    do {
        ModalDialog(CustomFilter, &itemHit);
        if (!HandleCustomHit(block, itemHit))
            itemHit = 0;
    } while (itemHit != kMakeItem && itemHit != kCancelItem);
    HandleCustomGoAway();
    SetPort(savedPort);
}

static void ForgetSpot(Handle *spot)
{
    if (*spot)
        DisposeHandle(*spot);
    *spot = nullptr;
}

// What is left is one block at most, gSpotHandle, and only with spotImported
// set. Both names may be of the same block, which is freed once.
static void SettleSpotBuffers()
{
    Boolean shared = gSavedSpotHandle == gSpotHandle;
    if (!gPrefsPtr->spotImported)
        ForgetSpot(&gSpotHandle);
    if (!shared)
        ForgetSpot(&gSavedSpotHandle);
    gSavedSpotHandle = nullptr;
}

void HandleCustomGoAway()
{
    HideWindow(gCustomDialog);
    for (const PopupPlace &place : kPopups)
        DisposePopup(*place.popup, false);
    CloseDialog(gCustomDialog);
    gCustomDialog = nullptr;
    for (const PopupPlace &place : kPopups) {
        DisposeHandle(*place.popup);
        *place.popup = nullptr;
    }
    SettleSpotBuffers();
}

void CustomProc(DialogPtr dialog, int16_t)
{
    GrafPtr savedPort;
    GetPort(&savedPort);
    SetPort(dialog);
    ColorDialogRect(gPrefsPtr->useColor, ItemBox(dialog, kPanelItem), kCustomDialogID);
    for (const PopupPlace &place : kPopups)
        DrawPopup(*place.popup);
    SetPort(savedPort);
}

// --- Keeping and restoring --------------------------------------------------

// What cancelling puts back, but for the spot function. annoFontItem is not
// among it: the font's name is.
static void CopySettings(PrefsRec *from, PrefsRec *to)
{
    for (const PopupPlace &place : kPopups)
        to->*place.setting = from->*place.setting;
    CopyPStr(from->freqStr, to->freqStr, 15);
    CopyPStr(from->angleStr, to->angleStr, 15);
    CopyPStr(from->flatStr, to->flatStr, 15);
    CopyPStr(from->annoText, to->annoText, 255);
    CopyPStr(from->annoSizeStr, to->annoSizeStr, 15);
}

void SaveCustomSettings()
{
    CopySettings(gPrefsPtr, gSavedPrefs);
    CopyPStr(gFontNameStr, gSavedFontNameStr, 63);
    gSavedPrefs->spotImported = gPrefsPtr->spotImported;
    gSavedSpotHandle = nullptr;
    gSavedSpotLength = 0;
    if (!gPrefsPtr->spotImported)
        return;
    CopyPStr(gPrefsPtr->spotName, gSavedPrefs->spotName, 63);
    gSavedSpotHandle = gSpotHandle;
    gSavedSpotLength = gSpotLength;
}

static void RevertSpot()
{
    // What is there now was imported since, or left by an import that failed.
    if (gSpotHandle != gSavedSpotHandle)
        ForgetSpot(&gSpotHandle);
    if (gSavedPrefs->spotImported) {
        gSpotHandle = gSavedSpotHandle;
        gSpotLength = gSavedSpotLength;
        CopyPStr(gSavedPrefs->spotName, gPrefsPtr->spotName, 63);
    }
    gPrefsPtr->spotImported = gSavedPrefs->spotImported;
}

void DoCustomRevert()
{
    CopySettings(gSavedPrefs, gPrefsPtr);
    CopyPStr(gSavedFontNameStr, gFontNameStr, 63);
    RevertSpot();
}

// --- Events -----------------------------------------------------------------

Boolean CustomFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit)
{
    return HandleCustomEvents(dialog, event, itemHit);
}

static Boolean HostFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit)
{
    auto procs = reinterpret_cast<HostProcs *>(GetWRefCon(dialog));
    HostFilterProc filter = procs ? procs->dialogFilter.as<std::remove_pointer_t<HostFilterProc>>() : nullptr;
    return filter && filter(dialog, event, itemHit);
}

static Boolean ButtonIsActive(DialogPtr dialog, int16_t number)
{
    int16_t type;
    Handle item = nullptr;
    Rect box;
    GetDItem(dialog, number, &type, &item, &box);
    return item && (*reinterpret_cast<ControlHandle>(item))->contrlHilite == 0;
}

// An inactive Cancel leaves *itemHit at 2 all the same.
static Boolean CustomKey(DialogPtr dialog, const EventRecord &event, int16_t *itemHit)
{
    if (IsConfirmKey(event)) {
        *itemHit = kMakeItem;
        FlashButton(dialog, kMakeItem);
        return true;
    }
    if (!IsCancelKey(event))
        return false;
    *itemHit = kCancelItem;
    if (!ButtonIsActive(dialog, kCancelItem))
        return false;
    DoCustomRevert();
    FlashButton(dialog, kCancelItem);
    return true;
}

Boolean HandleCustomEvents(DialogPtr dialog, EventRecord *event, int16_t *itemHit)
{
    if (CustomKey(dialog, *event, itemHit))
        return true;
    if (event->what == mouseDown) {
        Point where = event->where;
        GlobalToLocal(&where);
        if (DoCustomPopups(where))
            return true;
    }
    return HostFilter(dialog, event, itemHit);
}

static int16_t CurrentItem(Handle popup)
{
    return PopupRecord(popup)->curItem;
}

static Boolean LastItemIsCurrent(Handle popup)
{
    return CurrentItem(popup) == CountMItems(PopupRecord(popup)->menu);
}

// --- The value popups -------------------------------------------------------

// The item text that the kind's own value would have.
static void ValueItemText(int16_t kind, Str255 text)
{
    unsigned char degree[] = {1, kDegreeSign};
    switch (kind) {
    case kFreqKind:
        CopyPStr(gPrefsPtr->freqStr, text, 15);
        ConcatPStr(ql_quorum_passtr(" lpi"), text, 15);
        break;
    case kAngleKind:
        CopyPStr(gPrefsPtr->angleStr, text, 15);
        ConcatPStr(degree, text, 15);
        break;
    default:
        CopyPStr(gPrefsPtr->flatStr, text, 15);
    }
}

// Asks for the value. Where the menu has an item for it, that is chosen.
// Cancelling moves the choice back and leaves the check marks to themselves.
static void EnterValue(Handle popup, int16_t kind)
{
    if (!HandleFreqDialog(kind)) {
        PopupRecord(popup)->curItem = PopupRecord(popup)->prevItem;
        return;
    }
    Str255 text;
    int16_t found = 0;
    ValueItemText(kind, text);
    if (FindMenuItemNumber(PopupRecord(popup)->menu, text, &found))
        SetPopupMenuItem(popup, found);
}

static void DoValuePopup(const PopupPlace &place, int16_t kind)
{
    Handle popup = *place.popup;
    if (!HandlePopupClick(popup, false))
        return;
    if (LastItemIsCurrent(popup))
        EnterValue(popup, kind);
    gPrefsPtr->*place.setting = CurrentItem(popup);
    DrawPopup(popup);
}

// --- The other popups -------------------------------------------------------

static void ImportSpot()
{
    if (!TheErrorHandler(kQuestionDialog, kImportQuestion, 0, ql_quorum_passtr(""), false) || !DoSpotImport())
        RevertPopup(gSpotPopInfo);
}

// What was in use when the dialog opened is kept for cancelling.
static void LeaveImportedSpot()
{
    if (gPrefsPtr->spotImported && gSpotHandle != gSavedSpotHandle)
        ForgetSpot(&gSpotHandle);
    gPrefsPtr->spotImported = 0;
}

static void DoSpotPopup()
{
    if (!HandlePopupClick(gSpotPopInfo, false))
        return;
    if (LastItemIsCurrent(gSpotPopInfo))
        ImportSpot();
    else
        LeaveImportedSpot();
    DrawPopup(gSpotPopInfo);
    gPrefsPtr->spotItem = CurrentItem(gSpotPopInfo);
}

static void DoAnnoPopup()
{
    if (!HandlePopupClick(gAnnoPopInfo, false))
        return;
    if (LastItemIsCurrent(gAnnoPopInfo)) {
        if (HandleAnnoDialog())
            SetPopupMenuItem(gAnnoPopInfo, kAnnotationUsedItem);
        else
            RevertPopup(gAnnoPopInfo);
    }
    DrawPopup(gAnnoPopInfo);
    gPrefsPtr->annoItem = CurrentItem(gAnnoPopInfo);
}

static void DoErrorPopup()
{
    if (HandlePopupClick(gErrorPopInfo, true))
        gPrefsPtr->errorItem = CurrentItem(gErrorPopInfo);
}

static void DoPopup(const PopupPlace &place)
{
    switch (place.menuID) {
    case kFreqMenu:
        return DoValuePopup(place, kFreqKind);
    case kAngleMenu:
        return DoValuePopup(place, kAngleKind);
    case kSpotMenu:
        return DoSpotPopup();
    case kFlatMenu:
        return DoValuePopup(place, kFlatKind);
    case kAnnoMenu:
        return DoAnnoPopup();
    case kErrorMenu:
        return DoErrorPopup();
    }
}

Boolean DoCustomPopups(Point where)
{
    for (const PopupPlace &place : kPopups) {
        Rect bounds = PopupRecord(*place.popup)->bounds;
        if (PtInRect(where, &bounds)) {
            DoPopup(place);
            return true;
        }
    }
    return false;
}

// --- Items ------------------------------------------------------------------

Boolean DoCustomMake()
{
    for (const PopupPlace &place : kPopups) {
        if (CurrentItem(*place.popup) != 1)
            return true;
    }
    TheErrorHandler(kErrorDialog, kNothingChosen, 0, ql_quorum_passtr(""), false);
    return false;
}

static void KeepPositionAndHide()
{
    Point where = {gPrefsPtr->customDlgPos.v, gPrefsPtr->customDlgPos.h};
    GetWindowPosition(gCustomDialog, &where);
    gPrefsPtr->customDlgPos.v = where.v;
    gPrefsPtr->customDlgPos.h = where.h;
    HideWindow(gCustomDialog);
}

Boolean HandleCustomHit(MessageBlock *, int16_t item)
{
    if (item == kMakeItem && DoCustomMake()) {
        KeepPositionAndHide();
        MakeCustomRiders();
        return true;
    }
    if (item == kCancelItem) {
        KeepPositionAndHide();
        DoCustomRevert();
        return true;
    }
    return false;
}
