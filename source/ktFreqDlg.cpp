#include "source/ktFreqDlg.h"

#include "source/dialogItems.h"
#include "source/environment.h"
#include "source/errors.h"
#include "source/popup.h"
#include "source/reasons.h"
#include "source/strings.h"
#include "source/utilities.h"
#include "toolbox/system.h"

Str15 gSavedFreqStr = {0};

enum { kOutlineItem = 3, kValueItem = 4, kPanelItem = 10 };

void FreqInit()
{
}

// --- The check --------------------------------------------------------------

// Returns false, in report mode after saying why and correcting the field. Without a
// setting the field is left alone.
static Boolean Refuse(Boolean report, int16_t message, const Setting *setting, ConstStr255Param replacement)
{
    if (!report)
        return false;
    TheErrorHandler(kErrorDialog, message, kNoReason, ql_quorum_passtr(""), false);
    if (setting) {
        SetItemText(gTheDialog, kValueItem, replacement);
        SelectItemText(gTheDialog, kValueItem);
    }
    return false;
}

static Boolean CheckRange(ConstStr255Param text, double value, const Setting &setting, Boolean report)
{
    const ValueRow &row = setting.value;
    if (text[0] == 0)
        return Refuse(report, row.outOfRange, &setting, gSavedFreqStr);
    if (value < row.lowest) {
        Str15 lowest;
        LowestValue(setting, lowest);
        return Refuse(report, row.outOfRange, &setting, lowest);
    }
    if (value > row.highest)
        return Refuse(report, row.outOfRange, &setting, ql_quorum_passtr(row.highestText));
    return true;
}

// Only an angle may be empty after tidying: it is then 0. A user may type a lone
// separator for 0, since tidying has already removed it; stored settings are not
// tidied, and count as damaged if they hold one.
static Boolean TidyAngle(Str255 text, double value, const Setting &setting, int16_t *position, Boolean report)
{
    if (text[0] == 1 && *position == 1)
        return Refuse(report, setting.value.outOfRange, &setting, gSavedFreqStr);
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

// Counts from the separator, or from -1 without one, so a whole number of four
// characters or more is refused too. Users never meet that, since the range refuses
// such numbers first. Stored settings may hold one, such as 0100, which this dialog
// never writes: they count as damaged.
static Boolean CheckDecimals(Str255 text, int16_t position, const Setting &setting, Boolean report)
{
    if (text[0] - position < 5 || position == 0)
        return true;
    if (report)
        text[0] = position + 4;
    return Refuse(report, kTooManyDecimals, &setting, text);
}

Boolean DoFreqStrCheck(Str255 text, int16_t kind, Boolean report)
{
    const Setting *setting = SettingOfKind(kind);
    double value;
    int16_t status = PStrToDouble(text, &value);
    if (status == kNotANumber)
        return Refuse(report, kInvalidCharacter, setting, gSavedFreqStr);
    if (status == kTooManySeparators)
        return Refuse(report, kTwoSeparators, setting, gSavedFreqStr);
    if (report) {
        RemoveLeadingZeros(text);
        RemoveTrailingZeros(text);
    }
    if (!setting)
        return true;
    int16_t position = GetDecimalPosition(text);
    if (kind == kAngleKind && !TidyAngle(text, value, *setting, &position, report))
        return false;
    return CheckRange(text, value, *setting, report) && CheckDecimals(text, position, *setting, report);
}

// --- Keys -------------------------------------------------------------------

static Boolean IsNumberKey(int16_t key)
{
    return IsDigit(key) || key == static_cast<unsigned char>(gEnvirInfo->decimalPt);
}

static Boolean FreqCommandKey(DialogPtr dialog, int16_t key, int16_t used)
{
    KeyFate fate = CommandKey(dialog, key, used, kValueLimit + 1);
    if (fate == kPasteRefused)
        TheErrorHandler(kErrorDialog, kValuePasteTooLong, kNoReason, ql_quorum_passtr(""), false);
    return fate != kKeyPassed;
}

// A held key never repeats a separator: a second one would only be refused at OK.
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
        return used < kValueLimit ? false : RefuseKey();
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
        return FreqRepeat(*event, used < kValueLimit);
    return GenericFilter(dialog, event, itemHit) || FreqKey(dialog, *event, used);
}

// --- The dialog -------------------------------------------------------------

void FreqProc(DialogPtr dialog, int16_t)
{
    GrafPtr savedPort;
    GetPort(&savedPort);
    SetPort(dialog);
    DrawPanel(dialog, kPanelItem, kFreqDialogID);
    SetPort(savedPort);
}

static void HideLabels(const Setting &setting)
{
    HideDItem(gTheDialog, setting.value.label);
    if (setting.value.unitLabel != 0)
        HideDItem(gTheDialog, setting.value.unitLabel);
}

void SetupFreqDialog(int16_t kind)
{
    const Setting *setting = SettingOfKind(kind);
    if (!setting)
        return;
    SetItemText(gTheDialog, kValueItem, OwnValue(*setting));
    for (const Setting &other : kSettings)
        if (other.value.text && &other != setting)
            HideLabels(other);
    SelectItemText(gTheDialog, kValueItem);
}

void SaveFreqSettings(int16_t kind)
{
    if (const Setting *setting = SettingOfKind(kind))
        CopyPStr(OwnValue(*setting), gSavedFreqStr, kValueLimit);
}

Boolean DoFreqDone(int16_t kind)
{
    const Setting *setting = SettingOfKind(kind);
    Str255 text;
    GetItemText(gTheDialog, kValueItem, text);
    if (!setting || !DoFreqStrCheck(text, kind, true))
        return false;
    CopyPStr(text, OwnValue(*setting), kValueLimit);
    return true;
}

// The check mark of "Other..." stays, see EnterValue in the settings dialog, which
// sets the current item once more.
void DoFreqCancel(int16_t kind)
{
    const Setting *setting = SettingOfKind(kind);
    if (!setting)
        return;
    CopyPStr(gSavedFreqStr, OwnValue(*setting), kValueLimit);
    PopupInfo *popup = PopupRecord(*setting->popup);
    popup->curItem = popup->prevItem;
    CheckItem(popup->menu, popup->curItem, true);
}

static void OpenFreqDialog(int16_t kind)
{
    gTheDialog = OpenDialog(kFreqDialogID, kNoDialog);
    SetWRefCon(gTheDialog, kind);
    DressDialog(gTheDialog, kOutlineItem, kPanelItem, FreqProc);
    SetupFreqDialog(kind);
    SaveFreqSettings(kind);
    CenterWindowInWindow(gCustomDialog, gTheDialog);
    BringUp(gTheDialog);
}

static Boolean AcceptValue()
{
    return DoFreqDone(static_cast<int16_t>(GetWRefCon(gTheDialog)));
}

Boolean HandleFreqDialog(int16_t kind)
{
    GrafPtr savedPort;
    GetPort(&savedPort);
    OpenFreqDialog(kind);
    Boolean confirmed = RunTheDialog(FreqFilter, AcceptValue);
    if (!confirmed)
        DoFreqCancel(kind);
    DisposeTheDialog();
    SetPort(savedPort);
    return confirmed;
}
