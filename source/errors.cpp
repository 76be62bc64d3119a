#include "source/errors.h"

#include "source/needs.h"
#include "source/openDialogs.h"
#include "source/dialogItems.h"
#include "source/strings.h"
#include "source/utilities.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"

// The modules below this one report through it what is missing.
// NOLINTNEXTLINE(cppcoreguidelines-interfaces-global-init): its null is there before any code runs
[[maybe_unused]] static const ReportProc kInstalled = gReport = TheErrorHandler;

Boolean gHaveWriteError = false;
void (*gBeforeEnd)() = nullptr;

namespace {

constexpr int16_t kFrameItem = 2;
constexpr int16_t kSecondButton = 5;

struct ErrorMessage {
    OSErr error;
    int16_t stringID;
};

constexpr ErrorMessage kWriteMessages[] = {
    {ioErr, kDiskTrouble},   {dskFulErr, kDiskFull},  {fnfErr, kFileGone},   {wPrErr, kDiskLocked},
    {fLckdErr, kFileLocked}, {vLckdErr, kDiskLocked}, {fBsyErr, kFileInUse}, {wrPermErr, kNotAllowed},
};
constexpr ErrorMessage kReadMessages[] = {{ioErr, kDiskTrouble}, {fnfErr, kFileGone}};

template <size_t count>
int16_t MessageFor(OSErr error, const ErrorMessage (&messages)[count], int16_t otherwise)
{
    for (const ErrorMessage &message : messages)
        if (message.error == error)
            return message.stringID;
    return otherwise;
}

int16_t ShowAlert(int16_t kind, int16_t unknownKind)
{
    SetCursor(&qd.arrow);
    CenterAlert(gCustomDialog, kAlertID);
    switch (kind) {
    case kStopAlert:
        return StopAlert(kAlertID, nullptr);
    case kCautionAlert:
        return CautionAlert(kAlertID, nullptr);
    case kNoteAlert:
        return NoteAlert(kAlertID, nullptr);
    default:
        return unknownKind;
    }
}

void EndProcess()
{
    if (gBeforeEnd)
        gBeforeEnd();
    ExitToShell();
}

// If a message is missing this is all that can be said; it is fatal even for a question
// or a warning. The words lack a letter, and the number is fixed: mended, this end
// would no longer be recognised in what users report.
void EndWithFixedText()
{
    StringPtr none = ql_quorum_passtr("");
    ParamText(ql_quorum_passtr("Sorry, a Fatal Error has occured!"),
              ql_quorum_passtr("\r\rID = 8 (string resource)"), none, none);
    // Without alert and message alike, reporting the alert would end up here
    // again.
    if (GetResource('ALRT', kAlertID) || GetString(kSomethingMissing)) {
        CenterAlert(gCustomDialog, kAlertID);
        StopAlert(kAlertID, nullptr);
    }
    EndProcess();
}

void SetReportTexts(int16_t stringID, int32_t number, ConstStr255Param context)
{
    Str255 numberText;
    CopyPStr(ql_quorum_passtr("\r\rID = "), numberText, 255);
    if (number != 0) {
        Str255 digits;
        NumToString(number, digits);
        ConcatPStr(digits, numberText, 255);
    }
    Handle message = reinterpret_cast<Handle>(GetString(stringID));
    if (!message)
        EndWithFixedText();
    MoveHHi(message);
    HLock(message);
    ConstStr255Param text = reinterpret_cast<ConstStr255Param>(*message);
    StringPtr none = ql_quorum_passtr("");
    if (number != 0)
        ParamText(text, numberText, context, none);
    else
        ParamText(text, context, none, none);
    HUnlock(message);
}

// Colours the dialog, draws its outline, and fills in the texts.
void PrepareReport(DialogPtr dialog, int16_t stringID, int32_t number, ConstStr255Param context)
{
    ColourIfWanted(dialog);
    InstallUserProc(dialog, kFrameItem, OutlineDefault);
    SetReportTexts(stringID, number, context);
}

Boolean RunReport(DialogPtr dialog)
{
    SysBeep(1);
    CenterWindow(gCustomDialog, dialog, kCenterThird);
    BringUp(dialog);
    int16_t hit = 0;
    do {
        ModalDialog(ErrorFilter, &hit);
    } while (hit != ok && hit != kSecondButton);
    HideWindow(dialog);
    return hit == ok;
}

}  // namespace

void ErrorInit()
{
}

Boolean TheErrorHandler(int16_t dialogID, int16_t stringID, int32_t number, ConstStr255Param context,
                        Boolean fatal)
{
    DialogPtr dialog = GetNewDialog(dialogID, nullptr, reinterpret_cast<WindowPtr>(-1));
    if (!dialog) {
        // Without the dialog the alert must do; without both, nothing can be shown.
        if (!GetResource('ALRT', kAlertID))
            EndProcess();
        return AlrtErrorHandler(kStopAlert, stringID, number, context, true);
    }
    GrafPtr savedPort;
    GetPort(&savedPort);
    SetPort(dialog);
    PrepareReport(dialog, stringID, number, context);
    Boolean result = RunReport(dialog);
    if (fatal)
        EndProcess();
    DisposDialog(dialog);
    SetPort(savedPort);
    return result;
}

Boolean ErrorFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit)
{
    return TwoButtonKeys(dialog, event, itemHit, kSecondButton);
}

Boolean AlrtErrorHandler(int16_t kind, int16_t stringID, int32_t number, ConstStr255Param context, Boolean fatal)
{
    SetReportTexts(stringID, number, context);
    ShowAlert(kind, 0);
    if (fatal)
        EndProcess();
    return true;
}

Boolean DoWriteError(OSErr error, ConstStr255Param context)
{
    TheErrorHandler(kErrorDialog, MessageFor(error, kWriteMessages, kNotWritten), error, context, false);
    gHaveWriteError = true;
    return true;
}

Boolean DoReadError(OSErr error, ConstStr255Param context)
{
    return TheErrorHandler(kErrorDialog, MessageFor(error, kReadMessages, kNotRead), error, context, false);
}

int16_t DoAlert(int16_t kind, ConstStr255Param text0, ConstStr255Param text1, ConstStr255Param text2,
                ConstStr255Param text3)
{
    ParamText(text0, text1, text2, text3);
    return ShowAlert(kind, 2);
}
