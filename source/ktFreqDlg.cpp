#include "ktFreqDlg.h"

#include "dialogItems.h"
#include "errors.h"
#include "initUtilities.h"
#include "ktColor.h"
#include "ktCustomDlg.h"
#include "ktPrefs.h"
#include "popup.h"
#include "strings.h"
#include "toolbox/system.h"
#include "utilities.h"

DialogPtr gTheDialog = nullptr;
Str15 gSavedFreqStr = {0};

enum { kOKItem = 1, kCancelItem = 2, kOutlineItem = 3, kValueItem = 4, kPanelItem = 10 };
enum { kFieldLimit = 15 };
enum { kDialogMissing = 80 };
enum {
    kInvalidCharacter = 16132,
    kTwoSeparators = 16140,
    kFreqOutOfRange = 16141,
    kAngleOutOfRange = 16142,
    kFlatOutOfRange = 16143,
    kTooManyDecimals = 16144,
    kPasteTooLong = 16162
};

void FreqInit()
{
}

// --- The check --------------------------------------------------------------

static Boolean IsKind(int16_t kind)
{
    return kind >= kFreqKind && kind <= kFlatKind;
}

// Answers false; in report mode after saying why and correcting the field.
static Boolean Refuse(Boolean report, int16_t message, int16_t kind, ConstStr255Param replacement)
{
    if (!report)
        return false;
    TheErrorHandler(kErrorDialog, message, 0, ql_quorum_passtr(""), false);
    if (IsKind(kind)) {
        SetItemText(gTheDialog, kValueItem, replacement);
        SelectItemText(gTheDialog, kValueItem);
    }
    return false;
}

struct Range {
    int16_t message;
    double lowest, highest;
    const char *lowestText, *highestText;
};

static Range RangeOf(int16_t kind)
{
    if (kind == kFreqKind)
        return {kFreqOutOfRange, 1.0, 999.0, "1", "999"};
    if (kind == kAngleKind)
        return {kAngleOutOfRange, 0.0, 360.0, "0", "360"};
    return {kFlatOutOfRange, 0.2, 200.0, gEnvirInfo->decimalPt == '.' ? "0.2" : "0,2", "200"};
}

static Boolean CheckRange(ConstStr255Param text, double value, int16_t kind, Boolean report)
{
    Range range = RangeOf(kind);
    if (text[0] == 0)
        return Refuse(report, range.message, kind, gSavedFreqStr);
    if (value < range.lowest)
        return Refuse(report, range.message, kind, ql_quorum_passtr(range.lowestText));
    if (value > range.highest)
        return Refuse(report, range.message, kind, ql_quorum_passtr(range.highestText));
    return true;
}

// An angle alone may be nothing, when it is tidied: that is 0.
static Boolean TidyAngle(Str255 text, double value, int16_t *position, Boolean report)
{
    if (text[0] == 1 && *position == 1)
        return Refuse(report, kAngleOutOfRange, kAngleKind, gSavedFreqStr);
    if (!report)
        return true;
    if (AddLeadingZero(text))
        *position = 2;
    if (value == 0.0) {
        text[0] = 1;
        text[1] = '0';
    }
    return true;
}

// Counts from the separator, or from -1 without one: a whole number of four
// digits and more is refused too.
static Boolean CheckDecimals(Str255 text, int16_t position, int16_t kind, Boolean report)
{
    if (text[0] - position < 5 || position == 0)
        return true;
    if (report)
        text[0] = position + 4;
    return Refuse(report, kTooManyDecimals, kind, text);
}

Boolean DoFreqStrCheck(Str255 text, int16_t kind, Boolean report)
{
    double value;
    int16_t status = PStrToDouble(text, &value);
    if (status == kNotANumber)
        return Refuse(report, kInvalidCharacter, kind, gSavedFreqStr);
    if (status == kTooManySeparators)
        return Refuse(report, kTwoSeparators, kind, gSavedFreqStr);
    if (report) {
        RemoveLeadingZeros(text);
        RemoveTrailingZeros(text);
    }
    if (!IsKind(kind))
        return true;
    int16_t position = GetDecimalPosition(text);
    if (kind == kAngleKind && !TidyAngle(text, value, &position, report))
        return false;
    return CheckRange(text, value, kind, report) && CheckDecimals(text, position, kind, report);
}

// --- Keys -------------------------------------------------------------------

static Boolean IsNumberKey(int16_t key)
{
    return IsDigit(key) || key == static_cast<unsigned char>(gEnvirInfo->decimalPt);
}

static Boolean FreqCommandKey(DialogPtr dialog, int16_t key, int16_t used)
{
    KeyFate fate = CommandKey(dialog, key, used, kFieldLimit + 1);
    if (fate == kPasteRefused)
        TheErrorHandler(kErrorDialog, kPasteTooLong, 0, ql_quorum_passtr(""), false);
    return fate != kKeyPassed;
}

// A held key never repeats a separator.
static Boolean FreqRepeat(const EventRecord &event, Boolean room)
{
    int16_t key = event.message & charCodeMask;
    Boolean command = (event.modifiers & cmdKey) != 0;
    if (IsEditingKey(key) || (IsDigit(key) && !command && room))
        return false;
    return RefuseKey();
}

static Boolean FreqKey(DialogPtr dialog, const EventRecord &event, int16_t used)
{
    int16_t key = event.message & charCodeMask;
    if (IsEditingKey(key))
        return false;
    if (IsNumberKey(key))
        return used < kFieldLimit ? false : RefuseKey();
    if (event.modifiers & cmdKey)
        return FreqCommandKey(dialog, key, used);
    return RefuseKey();
}

Boolean FreqFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit)
{
    if (event->what != keyDown && event->what != autoKey)
        return false;
    int16_t used = LengthLessSelection(dialog, kValueItem);
    if (event->what == autoKey)
        return FreqRepeat(*event, used < kFieldLimit);
    return GenericFilter(dialog, event, itemHit) || FreqKey(dialog, *event, used);
}

// --- The dialog -------------------------------------------------------------

static StringPtr SettingOf(int16_t kind)
{
    switch (kind) {
    case kFreqKind:
        return gPrefsPtr->freqStr;
    case kAngleKind:
        return gPrefsPtr->angleStr;
    case kFlatKind:
        return gPrefsPtr->flatStr;
    }
    return nullptr;
}

void FreqProc(DialogPtr dialog, int16_t)
{
    GrafPtr savedPort;
    GetPort(&savedPort);
    SetPort(dialog);
    ColorDialogRect(gPrefsPtr->useColor, ItemBox(dialog, kPanelItem), kFreqDialogID);
    SetPort(savedPort);
}

void SetupFreqDialog(int16_t kind)
{
    static const int16_t others[][5] = {{6, 7, 9, 0}, {5, 7, 8, 0}, {6, 5, 9, 8, 0}};
    if (!IsKind(kind))
        return;
    SetItemText(gTheDialog, kValueItem, SettingOf(kind));
    for (const int16_t *item = others[kind - kFreqKind]; *item != 0; ++item)
        HideDItem(gTheDialog, *item);
    SelectItemText(gTheDialog, kValueItem);
}

void SaveFreqSettings(int16_t kind)
{
    if (IsKind(kind))
        CopyPStr(SettingOf(kind), gSavedFreqStr, 15);
}

Boolean DoFreqDone(int16_t kind)
{
    Str255 text;
    GetItemText(gTheDialog, kValueItem, text);
    if (!IsKind(kind) || !DoFreqStrCheck(text, kind, true))
        return false;
    CopyPStr(text, SettingOf(kind), 15);
    return true;
}

static Handle PopupOf(int16_t kind)
{
    return kind == kFreqKind ? gFreqPopInfo : kind == kAngleKind ? gAnglePopInfo : gFlatPopInfo;
}

// The check mark that choosing "Other..." gave it stays there.
void DoFreqCancel(int16_t kind)
{
    if (!IsKind(kind))
        return;
    CopyPStr(gSavedFreqStr, SettingOf(kind), 15);
    Handle popup = PopupOf(kind);
    PopupRecord(popup)->curItem = PopupRecord(popup)->prevItem;
    CheckItem(PopupRecord(popup)->menu, PopupRecord(popup)->curItem, true);
}

static void OpenFreqDialog(int16_t kind)
{
    gTheDialog = GetNewDialog(kFreqDialogID, nullptr, reinterpret_cast<WindowPtr>(-1));
    if (!gTheDialog)
        TheErrorHandler(kErrorDialog, 16129, kDialogMissing, ql_quorum_passtr(" (dlog resource)"), true);
    SetPort(gTheDialog);
    SetWRefCon(gTheDialog, kind);
    if (gPrefsPtr->useColor)
        ColorTheDialog(true, gTheDialog);
    InstallUserProc(gTheDialog, kOutlineItem, OutlineDefault);
    InstallUserProc(gTheDialog, kPanelItem, FreqProc);
    SetupFreqDialog(kind);
    SaveFreqSettings(kind);
    CenterWindowInWindow(gCustomDialog, gTheDialog);
    SelectWindow(gTheDialog);
    ShowWindow(gTheDialog);
    SetCursor(&qd.arrow);
}

// True when it ended with a value.
static Boolean RunFreqDialog(int16_t kind)
{
    for (;;) {
        int16_t itemHit = 0;
        ModalDialog(FreqFilter, &itemHit);
        if (itemHit == kOKItem && DoFreqDone(kind)) {
            HideWindow(gTheDialog);
            return true;
        }
        if (itemHit == kCancelItem) {
            HideWindow(gTheDialog);
            DoFreqCancel(kind);
            return false;
        }
    }
}

Boolean HandleFreqDialog(int16_t kind)
{
    GrafPtr savedPort;
    GetPort(&savedPort);
    OpenFreqDialog(kind);
    Boolean confirmed = RunFreqDialog(kind);
    DisposDialog(gTheDialog);
    gTheDialog = nullptr;
    SetPort(savedPort);
    return confirmed;
}
