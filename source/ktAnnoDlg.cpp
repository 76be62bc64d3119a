#include "source/ktAnnoDlg.h"

#include "source/dialogItems.h"
#include "source/errors.h"
#include "source/needs.h"
#include "source/popup.h"
#include "source/reasons.h"
#include "source/settingsRecord.h"
#include "source/strings.h"
#include "source/utilities.h"
#include "toolbox/keys.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"

AnnoPrefs *gSavedAnnoPrefs = nullptr;
Handle gAnnoFontPopInfo = nullptr;
Handle gAnnoSizePopInfo = nullptr;
Str255 gFontNameStr = {0};
Str255 gAnnoSavedFontNameStr = {0};

enum { kOutlineItem = 3, kTextItem = 4, kFontItem = 6, kSizePopupItem = 7, kSizeItem = 8, kPanelItem = 9 };
enum { kTextLimit = 254, kSizeLimit = 4 };
enum { kFontTitle = 4 };

void AnnoInit()
{
}

// --- The checks -------------------------------------------------------------

// Says why, corrects the field, and returns false.
static Boolean RefuseField(int16_t message, int16_t item, ConstStr255Param replacement)
{
    TheErrorHandler(kErrorDialog, message, kNoReason, ql_quorum_passtr(""), false);
    SetItemText(gTheDialog, item, replacement);
    SelectItemText(gTheDialog, item);
    return false;
}

static Boolean RefuseSize(Boolean report, int16_t message, ConstStr255Param replacement)
{
    return report ? RefuseField(message, kSizeItem, replacement) : false;
}

Boolean DoSizeStrCheck(Str255 text, Boolean report)
{
    double value;
    int16_t status = PStrToDouble(text, &value);
    if (status == kNumberWithDecimals)
        return RefuseSize(report, kSizeNotWhole, gPrefsPtr->annoSizeStr);
    if (status == kNotANumber)
        return RefuseSize(report, kInvalidCharacter, gPrefsPtr->annoSizeStr);
    // Several separators, or nothing, count as 0.
    if (value < 4.0)
        return RefuseSize(report, kSizeOutOfRange, ql_quorum_passtr("4"));
    if (value > 30.0)
        return RefuseSize(report, kSizeOutOfRange, ql_quorum_passtr("30"));
    return true;
}

static Boolean CheckText(Str255 text)
{
    if (text[0] == 0)
        return RefuseField(kTextLength, kTextItem, gSavedAnnoPrefs->text);
    if (text[0] <= kTextLimit)
        return true;
    text[0] = kTextLimit;
    return RefuseField(kTextLength, kTextItem, text);
}

// The text is stored before the size is checked; Cancel restores it anyway.
// Trailing zeros are removed only after the check, which refuses every separator:
// 12.0 is refused rather than tidied, so that a user who pastes it learns that
// sizes are whole.
Boolean DoAnnoDone()
{
    Str255 text, size;
    GetItemText(gTheDialog, kTextItem, text);
    if (!CheckText(text))
        return false;
    CopyPStr(text, gPrefsPtr->annoText, 255);
    GetItemText(gTheDialog, kSizeItem, size);
    if (size[0] > 15)
        size[0] = 15;
    RemoveLeadingZeros(size);
    if (!DoSizeStrCheck(size, true))
        return false;
    RemoveTrailingZeros(size);
    CopyPStr(size, gPrefsPtr->annoSizeStr, 15);
    return true;
}

// --- Keys -------------------------------------------------------------------

// The field being edited: its length without the selection, and its limit.
struct Field {
    Boolean isText;
    int16_t used;
    int16_t limit;
};

static Field CurrentField(DialogPtr dialog)
{
    Field field = {};
    int16_t item = reinterpret_cast<DialogPeek>(dialog)->editField + 1;
    field.isText = item == kTextItem;
    field.limit = field.isText ? kTextLimit : kSizeLimit;
    field.used = LengthLessSelection(dialog, item);
    return field;
}

static Boolean HasRoom(const Field &field)
{
    return field.used < field.limit;
}

static Boolean AnnoCommandKey(DialogPtr dialog, int16_t key, const Field &field)
{
    KeyFate fate = CommandKey(dialog, key, field.used, field.limit + 1);
    if (fate == kPasteRefused)
        TheErrorHandler(kErrorDialog, field.isText ? kTextPasteTooLong : kSizePasteTooLong, kNoReason,
                        ql_quorum_passtr(""), false);
    return fate != kKeyPassed;
}

static Boolean TypedKey(int16_t key, const Field &field)
{
    Boolean wanted = field.isText || IsDigit(key);
    return wanted && HasRoom(field) ? false : RefuseKey();
}

static Boolean IsMovingKey(int16_t key)
{
    return IsEditingKey(key) || key == toolbox::key::tab;
}

static Boolean AnnoKeyDown(DialogPtr dialog, const EventRecord &event)
{
    int16_t key = event.message & charCodeMask;
    if (event.modifiers & cmdKey)
        return AnnoCommandKey(dialog, key, CurrentField(dialog));
    return IsMovingKey(key) ? false : TypedKey(key, CurrentField(dialog));
}

// In the text field a held key of any kind needs room, Backspace included, which a
// user of a full field presses once for each character.
static Boolean AnnoRepeat(DialogPtr dialog, const EventRecord &event)
{
    int16_t key = event.message & charCodeMask;
    Field field = CurrentField(dialog);
    return !field.isText && IsMovingKey(key) ? false : TypedKey(key, field);
}

// --- Popups -----------------------------------------------------------------

// The name is set even if nothing was chosen, which takes the spaces off a name
// that SetupAnnoDialog has fetched with them.
static void DoFontPopup()
{
    HandlePopupClick(gAnnoFontPopInfo, true);
    int16_t item = PopupRecord(gAnnoFontPopInfo)->curItem;
    gPrefsPtr->annoFontItem = item;
    GetItem(PopupRecord(gAnnoFontPopInfo)->menu, item, gFontNameStr);
    RemoveTrailingSpaces(gFontNameStr);
}

// The item whose text is what the field holds, 0 when there is none.
static int16_t ItemOfSize(MenuHandle menu, ConstStr255Param size)
{
    for (int16_t item = 1; item <= CountMItems(menu); ++item) {
        Str255 text;
        GetItem(menu, item, text);
        if (ComparePStr(text, size))
            return item;
    }
    return 0;
}

static void MarkTypedSize(DialogPtr dialog)
{
    Str255 size;
    MenuHandle menu = PopupRecord(gAnnoSizePopInfo)->menu;
    GetItemText(dialog, kSizeItem, size);
    CheckItem(menu, PopupRecord(gAnnoSizePopInfo)->curItem, false);
    int16_t item = ItemOfSize(menu, size);
    PopupRecord(gAnnoSizePopInfo)->curItem = item;
    if (item != 0)
        CheckItem(menu, item, true);
}

static void DoSizePopup(DialogPtr dialog)
{
    MarkTypedSize(dialog);
    HandlePopupClick(gAnnoSizePopInfo, true);
    int16_t item = PopupRecord(gAnnoSizePopInfo)->curItem;
    if (item != 0) {
        Str255 text;
        GetItem(PopupRecord(gAnnoSizePopInfo)->menu, item, text);
        CopyPStr(text, gPrefsPtr->annoSizeStr, 15);
        SetItemText(dialog, kSizeItem, gPrefsPtr->annoSizeStr);
    }
    SelectItemText(dialog, kSizeItem);
}

static Boolean AnnoClick(DialogPtr dialog, Point where)
{
    GlobalToLocal(&where);
    Rect font = PopupRecord(gAnnoFontPopInfo)->bounds;
    Rect size = PopupRecord(gAnnoSizePopInfo)->bounds;
    if (PtInRect(where, &font))
        DoFontPopup();
    else if (PtInRect(where, &size))
        DoSizePopup(dialog);
    else
        return false;
    return true;
}

Boolean AnnoFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit)
{
    switch (event->what) {
    case autoKey:
        return AnnoRepeat(dialog, *event);
    case keyDown:
        return GenericFilter(dialog, event, itemHit) || AnnoKeyDown(dialog, *event);
    case mouseDown:
        return AnnoClick(dialog, event->where);
    }
    return false;
}

void AnnoProc(DialogPtr dialog, int16_t)
{
    GrafPtr savedPort;
    GetPort(&savedPort);
    SetPort(dialog);
    DrawPanel(dialog, kPanelItem, kAnnoDialogID);
    DrawPopup(gAnnoFontPopInfo);
    DrawPopup(gAnnoSizePopInfo);
    SetPort(savedPort);
}

// --- The dialog -------------------------------------------------------------

static void SetupAnnoPopups()
{
    Str255 title;
    NeedString(title, kAnnoStrings, kFontTitle);
    gAnnoFontPopInfo = NewPopup();
    SetupPopup(gAnnoFontPopInfo, ItemBox(gTheDialog, kFontItem), title, nullptr, kAnnoFontMenu,
               gPrefsPtr->annoFontItem);
    gAnnoSizePopInfo = NewPopup();
    SetupPopup(gAnnoSizePopInfo, ItemBox(gTheDialog, kSizePopupItem), ql_quorum_passtr(""), nullptr, kAnnoSizeMenu,
               0);
}

// The font's name keeps the spaces that its popup may have added to the first
// item. They do no harm: the riders file drops them before it looks for the font.
void SetupAnnoDialog()
{
    GetItem(PopupRecord(gAnnoFontPopInfo)->menu, PopupRecord(gAnnoFontPopInfo)->curItem, gFontNameStr);
    gSavedAnnoPrefs->fontItem = gPrefsPtr->annoFontItem;
    SetItemText(gTheDialog, kSizeItem, gPrefsPtr->annoSizeStr);
    SetItemText(gTheDialog, kTextItem, gPrefsPtr->annoText);
    SelectItemText(gTheDialog, kTextItem);
}

static void SaveAnnoSettings()
{
    CopyPStr(gPrefsPtr->annoText, gSavedAnnoPrefs->text, 255);
    CopyPStr(gPrefsPtr->annoSizeStr, gSavedAnnoPrefs->sizeStr, 15);
    CopyPStr(gFontNameStr, gAnnoSavedFontNameStr, 63);
}

static void RestoreAnnoSettings()
{
    CopyPStr(gSavedAnnoPrefs->text, gPrefsPtr->annoText, 255);
    CopyPStr(gAnnoSavedFontNameStr, gFontNameStr, 63);
    gPrefsPtr->annoFontItem = gSavedAnnoPrefs->fontItem;
    CopyPStr(gSavedAnnoPrefs->sizeStr, gPrefsPtr->annoSizeStr, 15);
}

static void OpenAnnoDialog()
{
    gTheDialog = OpenDialog(kAnnoDialogID, kNoDialog);
    gSavedAnnoPrefs = reinterpret_cast<AnnoPrefs *>(NewPtr(sizeof(AnnoPrefs)));
    Need(gSavedAnnoPrefs, kNoRecordBlock, " (newptr)");
    DressDialog(gTheDialog, kOutlineItem, kPanelItem, AnnoProc);
    SetupAnnoPopups();
    SetupAnnoDialog();
    SaveAnnoSettings();
    CenterWindowInWindow(gCustomDialog, gTheDialog);
    BringUp(gTheDialog);
}

static void CloseAnnoDialog()
{
    DisposePopup(gAnnoFontPopInfo, false);
    DisposePopup(gAnnoSizePopInfo, false);
    DisposeTheDialog();
    DisposePtr(reinterpret_cast<Ptr>(gSavedAnnoPrefs));
    gSavedAnnoPrefs = nullptr;
    DisposeHandle(gAnnoFontPopInfo);
    DisposeHandle(gAnnoSizePopInfo);
    gAnnoFontPopInfo = gAnnoSizePopInfo = nullptr;
}

Boolean HandleAnnoDialog()
{
    GrafPtr savedPort;
    GetPort(&savedPort);
    OpenAnnoDialog();
    Boolean confirmed = RunTheDialog(AnnoFilter, DoAnnoDone);
    if (!confirmed)
        RestoreAnnoSettings();
    CloseAnnoDialog();
    SetPort(savedPort);
    return confirmed;
}
