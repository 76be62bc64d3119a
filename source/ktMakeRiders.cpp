#include "ktMakeRiders.h"

#include "errors.h"
#include "ktCustomDlg.h"
#include "ktPrefs.h"
#include "strings.h"
#include "toolbox/files.h"
#include "toolbox/resources.h"
#include "toolbox/standardfile.h"
#include "toolbox/system.h"
#include "utilities.h"

enum { kSaveDialogID = 16399, kSaveDialogWidth = 328, kSaveDialogHeight = 148 };
enum { kStringMissing = 90 };
enum { kTempNameTries = 8 };

// One make, from the user's answer to the end.
struct Make {
    SFReply reply;
    Str63 working;       // the file being written
    Str63 existing;      // the file it is to replace
    Boolean replacing;
    Boolean renamed;     // the new file has its name
    int16_t refNum;
    FInfo info;          // the existing file's
    Boolean haveInfo;
};

static void FetchString(Str255 text, int16_t index)
{
    GetIndString(text, 16129, index);
    if (text[0] == 0)
        TheErrorHandler(kErrorDialog, 16129, kStringMissing, ql_quorum_passtr(" (STR# resource)"), true);
}

static Boolean AskWhereToSave(SFReply *reply)
{
    Point where;
    Str255 prompt, name;
    CenterSFPut(gCustomDialog, &where, kSaveDialogWidth, kSaveDialogHeight);
    FetchString(prompt, 3);
    FetchString(name, 1);
    SFPPutFile(where, prompt, name, nullptr, reply, kSaveDialogID, nullptr);
    return reply->good;
}

static void CopyLiteral(const char *text, Str63 out)
{
    CopyPStr(ql_quorum_passtr(text), out, 63);
}

static OSErr CreateText(Make *make)
{
    return Create(make->working, make->reply.vRefNum, 'ttxt', 'TEXT');
}

// What goes wrong here shows when the file is opened; only a name that is taken
// would not, so another one is tried.
static void CreateTemporary(Make *make)
{
    OSErr error = dupFNErr;
    for (int16_t tries = 0; error == dupFNErr && tries < kTempNameTries; ++tries) {
        CopyLiteral("KTTemp1", make->working);
        GetUniqueTempName(make->working);
        error = CreateText(make);
    }
}

static Boolean CreateFile(Make *make)
{
    CopyPStr(make->reply.fName, make->working, 63);
    OSErr error = CreateText(make);
    if (error == dupFNErr) {
        make->replacing = true;
        CopyPStr(make->reply.fName, make->existing, 63);
        CreateTemporary(make);
    } else if (error != noErr) {
        DoWriteError(error, ql_quorum_passtr(" (create)"));
        return false;
    }
    return true;
}

static void DeleteWorking(Make *make)
{
    FSDelete(make->working, make->reply.vRefNum);
}

static Boolean OpenFile(Make *make)
{
    OSErr error = FSOpen(make->working, make->reply.vRefNum, &make->refNum);
    if (error == noErr)
        return true;
    DoWriteError(error, ql_quorum_passtr(" (fsopen)"));
    DeleteWorking(make);
    return false;
}

static void CloseAndDelete(Make *make)
{
    FSClose(make->refNum);
    DeleteWorking(make);
}

// Reports a failed step and takes the file away.
static Boolean Failed(Make *make, OSErr error, const char *context)
{
    if (error == noErr)
        return false;
    DoWriteError(error, ql_quorum_passtr(context));
    CloseAndDelete(make);
    return true;
}

static Boolean WriteSpotOrCheck(Make *make)
{
    OSErr error = noErr;
    if (gPrefsPtr->spotItem != 1)
        error = WriteSpot(make->refNum);
    else if (gPrefsPtr->freqItem != 1 || gPrefsPtr->angleItem != 1)
        error = WriteScreenCheck(make->refNum);
    return !Failed(make, error, " (writespot)");
}

static Boolean WriteRest(Make *make)
{
    if (gPrefsPtr->angleItem != 1 && Failed(make, WriteAngle(make->refNum), " (writeangle)"))
        return false;
    if (gPrefsPtr->flatItem != 1 && Failed(make, WriteFlat(make->refNum), " (writeflat)"))
        return false;
    if (gPrefsPtr->annoItem == 2 && Failed(make, WriteAnno(make->refNum), " (writeanno)"))
        return false;
    return gPrefsPtr->errorItem != 2 || !Failed(make, WriteError(make->refNum), " (writeerror)");
}

// The frequency is written also after a failed spot function: its failure, the
// file being closed by then, is reported too.
static Boolean WriteSections(Make *make)
{
    Boolean going = WriteSpotOrCheck(make);
    if (gPrefsPtr->freqItem != 1 && Failed(make, WriteFreq(make->refNum), " (writefreq)"))
        going = false;
    return going && WriteRest(make);
}

static Boolean FinishContents(Make *make)
{
    if (Failed(make, WriteEnd(make->refNum), " (fswrite)"))
        return false;
    OSErr error = SetEOF(make->refNum, gTotalLength);
    FlushVol(nullptr, make->reply.vRefNum);
    return !Failed(make, error, " (eof)");
}

// The new file gets the old one's type, creator and flags.
static void TakeOverInfo(Make *make)
{
    FInfo created;
    GetFInfo(make->working, make->reply.vRefNum, &created);
    make->haveInfo = GetFInfo(make->existing, make->reply.vRefNum, &make->info) == noErr;
    if (make->haveInfo)
        SetFInfo(make->working, make->reply.vRefNum, &make->info);
}

// Puts the old file back under its name and takes the new one away. aside: the
// name the old file has meanwhile, nil while it still has its own.
static void GiveUpReplacing(Make *make, OSErr error, const char *context, StringPtr aside)
{
    DoWriteError(error, ql_quorum_passtr(context));
    if (make->renamed)
        Rename(make->existing, make->reply.vRefNum, make->working);
    if (aside)
        Rename(aside, make->reply.vRefNum, make->existing);
    if (make->haveInfo)
        SetFInfo(make->existing, make->reply.vRefNum, &make->info);
    CloseAndDelete(make);
}

// The old file steps aside under a temporary name, the new one takes its name,
// and the old one goes.
static void Replace(Make *make)
{
    Str63 aside;
    int16_t vRefNum = make->reply.vRefNum;
    TakeOverInfo(make);
    CopyLiteral("KTTemp2", aside);
    GetUniqueTempName(aside);
    OSErr error = Rename(make->existing, vRefNum, aside);
    if (error != noErr)
        return GiveUpReplacing(make, error, " (rename1)", nullptr);
    error = Rename(make->working, vRefNum, make->existing);
    if (error != noErr)
        return GiveUpReplacing(make, error, " (rename2)", aside);
    make->renamed = true;
    error = FSDelete(aside, vRefNum);
    if (error != noErr)
        GiveUpReplacing(make, error, " (fsdelete)", aside);
}

static void WriteFile(Make *make)
{
    if (Failed(make, WriteBegin(make->refNum), " (fswrite)"))
        return;
    if (WriteSections(make) && FinishContents(make) && make->replacing)
        Replace(make);
}

int16_t MakeCustomRiders()
{
    Make make = {};
    gHaveWriteError = false;
    gTotalLength = 0;
    if (!AskWhereToSave(&make.reply))
        return 0;
    if (CreateFile(&make) && OpenFile(&make)) {
        WriteFile(&make);
        // Once more after a failure, where it is closed already.
        FSClose(make.refNum);
    }
    if (gPrefsPtr->closeAfterMake == 1 && !gHaveWriteError)
        gDone = true;
    return 1;
}
