#include "source/newFile.h"

#include "source/errors.h"
#include "source/strings.h"
#include "source/utilities.h"
#include "toolbox/files.h"
#include "toolbox/system.h"

enum { kTempNameTries = 8 };

static struct {
    int16_t vRefNum;
    int16_t refNum;
    Str63 working;   // the file being written
    Str63 existing;  // the file it is to replace
    Boolean replacing;
    Boolean renamed;  // the new file has the old one's name
    Boolean haveInfo;
    FInfo info;  // the existing file's
} gFile;

// --- Opening ------------------------------------------------------------------

static void TemporaryName(const char *start, Str63 name)
{
    CopyPStr(ql_quorum_passtr(start), name, 63);
    GetUniqueTempName(name);
}

static OSErr CreateText()
{
    return Create(gFile.working, gFile.vRefNum, 'ttxt', 'TEXT');
}

// Failures here show when the file is opened, except a name that is taken, so then
// another one is tried. If all were taken there is no name to open: files of those
// names belong to others.
static void CreateTemporary()
{
    OSErr error = dupFNErr;
    for (int16_t tries = 0; error == dupFNErr && tries < kTempNameTries; ++tries) {
        TemporaryName("KTTemp1", gFile.working);
        error = CreateText();
    }
    if (error == dupFNErr)
        gFile.working[0] = 0;
}

// The old file steps aside, under a name that is free.
static OSErr StepAside(Str63 aside)
{
    OSErr error = dupFNErr;
    for (int16_t tries = 0; error == dupFNErr && tries < kTempNameTries; ++tries) {
        TemporaryName("KTTemp2", aside);
        error = Rename(gFile.existing, gFile.vRefNum, aside);
    }
    return error;
}

static Boolean CreateFile(StringPtr name)
{
    CopyPStr(name, gFile.working, 63);
    OSErr error = CreateText();
    if (error == dupFNErr) {
        gFile.replacing = true;
        CopyPStr(name, gFile.existing, 63);
        CreateTemporary();
    } else if (error != noErr) {
        DoWriteError(error, ql_quorum_passtr(" (create)"));
        return false;
    }
    return true;
}

Boolean OpenNewFile(const SFReply &reply, int16_t *refNum)
{
    SFReply chosen = reply;
    gFile = {};
    gFile.vRefNum = reply.vRefNum;
    if (!CreateFile(chosen.fName))
        return false;
    OSErr error = FSOpen(gFile.working, gFile.vRefNum, &gFile.refNum);
    *refNum = gFile.refNum;
    if (error == noErr)
        return true;
    DoWriteError(error, ql_quorum_passtr(" (fsopen)"));
    FSDelete(gFile.working, gFile.vRefNum);
    return false;
}

// --- Failing ------------------------------------------------------------------

static void CloseAndDelete()
{
    FSClose(gFile.refNum);
    FSDelete(gFile.working, gFile.vRefNum);
}

Boolean StepFailed(OSErr error, const char *context)
{
    if (error == noErr)
        return false;
    DoWriteError(error, ql_quorum_passtr(context));
    CloseAndDelete();
    return true;
}

// Gives the old file its name back and deletes the new one. aside: the name that the
// old file has meanwhile, nil while it still has its own.
static void GiveUpReplacing(OSErr error, const char *context, StringPtr aside)
{
    DoWriteError(error, ql_quorum_passtr(context));
    if (gFile.renamed)
        Rename(gFile.existing, gFile.vRefNum, gFile.working);
    if (aside)
        Rename(aside, gFile.vRefNum, gFile.existing);
    if (gFile.haveInfo)
        SetFInfo(gFile.existing, gFile.vRefNum, &gFile.info);
    CloseAndDelete();
}

// --- Finishing ----------------------------------------------------------------

// The new file gets the old one's type, creator and flags.
static void TakeOverInfo()
{
    FInfo created;
    GetFInfo(gFile.working, gFile.vRefNum, &created);
    gFile.haveInfo = GetFInfo(gFile.existing, gFile.vRefNum, &gFile.info) == noErr;
    if (gFile.haveInfo)
        SetFInfo(gFile.working, gFile.vRefNum, &gFile.info);
}

// The old file gets a temporary name, the new one the old one's, and then the old one
// is deleted.
static void Replace()
{
    Str63 aside;
    TakeOverInfo();
    OSErr error = StepAside(aside);
    if (error != noErr)
        return GiveUpReplacing(error, " (rename1)", nullptr);
    error = Rename(gFile.working, gFile.vRefNum, gFile.existing);
    if (error != noErr)
        return GiveUpReplacing(error, " (rename2)", aside);
    gFile.renamed = true;
    error = FSDelete(aside, gFile.vRefNum);
    if (error != noErr)
        GiveUpReplacing(error, " (fsdelete)", aside);
}

void FinishNewFile(int32_t length)
{
    OSErr error = SetEOF(gFile.refNum, length);
    FlushVol(nullptr, gFile.vRefNum);
    if (!StepFailed(error, " (eof)") && gFile.replacing)
        Replace();
}

void CloseNewFile()
{
    FSClose(gFile.refNum);
}
