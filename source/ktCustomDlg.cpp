#include "source/ktCustomDlg.h"

#include "source/dialogItems.h"
#include "source/errors.h"
#include "source/ktAnnoDlg.h"
#include "source/ktFreqDlg.h"
#include "source/ktMakeRiders.h"
#include "source/ktSpot.h"
#include "source/needs.h"
#include "source/popup.h"
#include "source/reasons.h"
#include "source/strings.h"
#include "source/utilities.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"

#include <type_traits>

Str255 gSavedFontNameStr = {0};

enum { kMakeItem = 1, kCancelItem = 2, kOutlineItem = 3, kPanelItem = 16 };
enum { kAnnotationUsedItem = 2 };

void CustomInit()
{
}

// --- Opening and closing ----------------------------------------------------

static void ReadFontName()
{
    MenuHandle fonts = NeedMenu(kAnnoFontMenu);
    GetItem(fonts, gPrefsPtr->annoFontItem, gFontNameStr);
    RemoveTrailingSpaces(gFontNameStr);
    DeleteMenu(kAnnoFontMenu);
    ReleaseResource(fonts);
}

void SetupCustomDialog()
{
    for (const Setting &setting : kSettings) {
        Rect box = ItemBox(gCustomDialog, setting.dialogItem);
        *setting.popup = NewPopup();
        SetupPopup(*setting.popup, box, ql_quorum_passtr(""), nullptr, setting.menuID, gPrefsPtr->*setting.choice);
    }
    ReadFontName();
}

// A saved position is used as it is, even where there is no display now: that one
// may be back tomorrow, and the keys still make and cancel.
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
    gCustomDialog = OpenDialog(kCustomDialogID, kNoSettingsDialog);
    SetWRefCon(gCustomDialog, reinterpret_cast<intptr_t>(block->hostProcs.as<HostProcs>()));
    DressDialog(gCustomDialog, kOutlineItem, kPanelItem, CustomProc);
    SetupCustomDialog();
    SaveCustomSettings();
    PlaceCustomDialog();
    BringUp(gCustomDialog);
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

void HandleCustomGoAway()
{
    HideWindow(gCustomDialog);
    for (const Setting &setting : kSettings)
        DisposePopup(*setting.popup, false);
    CloseDialog(gCustomDialog);
    gCustomDialog = nullptr;
    for (const Setting &setting : kSettings) {
        DisposeHandle(*setting.popup);
        *setting.popup = nullptr;
    }
    SettleSpot();
}

void CustomProc(DialogPtr dialog, int16_t)
{
    GrafPtr savedPort;
    GetPort(&savedPort);
    SetPort(dialog);
    DrawPanel(dialog, kPanelItem, kCustomDialogID);
    for (const Setting &setting : kSettings)
        DrawPopup(*setting.popup);
    SetPort(savedPort);
}

// --- Keeping and restoring --------------------------------------------------

// What cancelling restores, apart from the spot function. annoFontItem is not part
// of it, though the font's name is: the font popup stays where the user last left
// it, and shows it at the next opening. Nor is the dialog's position: it opens where it
// was last seen.
static void CopySettings(PrefsRec *from, PrefsRec *to)
{
    for (const Setting &setting : kSettings) {
        to->*setting.choice = from->*setting.choice;
        if (setting.value.text)
            CopyPStr(from->*setting.value.text, to->*setting.value.text, kValueLimit);
    }
    CopyPStr(from->annoText, to->annoText, 255);
    CopyPStr(from->annoSizeStr, to->annoSizeStr, 15);
}

void SaveCustomSettings()
{
    CopySettings(gPrefsPtr, gSavedPrefs);
    CopyPStr(gFontNameStr, gSavedFontNameStr, 63);
    KeepSpot();
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
    auto *procs = reinterpret_cast<HostProcs *>(GetWRefCon(dialog));
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

// Return flashes Make even if nothing has been chosen: the report that follows is
// the response to it. With an inactive Cancel *itemHit is 2 anyway: the host's
// filter, which then gets the key, sees which item was meant.
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

// --- The popups -------------------------------------------------------------

// Asks for the value. If the menu has an item for it, that is chosen. Cancelling
// restores the choice and leaves the check marks alone: "Other..." keeps the one
// that the click gave it, so the menu shows next time what was tried last.
static void EnterValue(const Setting &setting, Handle popup)
{
    if (!HandleFreqDialog(setting.value.kind)) {
        PopupRecord(popup)->curItem = PopupRecord(popup)->prevItem;
        return;
    }
    Str255 text;
    int16_t found = 0;
    OwnValueWithUnit(setting, kValueLimit, text);
    if (FindMenuItemNumber(PopupRecord(popup)->menu, text, &found))
        SetPopupMenuItem(popup, found);
}

static void DoValuePopup(const Setting &setting, Handle popup)
{
    if (!HandlePopupClick(popup, false))
        return;
    if (LastItemIsCurrent(popup))
        EnterValue(setting, popup);
    gPrefsPtr->*setting.choice = CurrentItem(popup);
    DrawPopup(popup);
}

static void ImportSpot()
{
    if (!TheErrorHandler(kQuestionDialog, kImportQuestion, kNoReason, ql_quorum_passtr(""), false) ||
        !DoSpotImport())
        RevertPopup(gSpotPopInfo);
}

static void DoSpotPopup()
{
    if (!HandlePopupClick(gSpotPopInfo, false))
        return;
    if (LastItemIsCurrent(gSpotPopInfo))
        ImportSpot();
    else
        LeaveSpot();
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

static void DoPopup(const Setting &setting)
{
    if (setting.value.text)
        DoValuePopup(setting, *setting.popup);
    else if (setting.menuID == kSpotMenu)
        DoSpotPopup();
    else if (setting.menuID == kAnnoMenu)
        DoAnnoPopup();
    else
        DoErrorPopup();
}

Boolean DoCustomPopups(Point where)
{
    for (const Setting &setting : kSettings) {
        Rect bounds = PopupRecord(*setting.popup)->bounds;
        if (PtInRect(where, &bounds)) {
            DoPopup(setting);
            return true;
        }
    }
    return false;
}

// --- Items ------------------------------------------------------------------

Boolean DoCustomMake()
{
    for (const Setting &setting : kSettings) {
        if (CurrentItem(*setting.popup) != 1)
            return true;
    }
    TheErrorHandler(kErrorDialog, kNothingChosen, kNoReason, ql_quorum_passtr(""), false);
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
