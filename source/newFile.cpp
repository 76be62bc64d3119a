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
    Str63 aside;     // the name that the old file has meanwhile
    Boolean replacing;
    Boolean steppedAside;  // the old file has that name
    Boolean renamed;       // the new file has the old one's name
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
static OSErr StepAside()
{
    OSErr error = dupFNErr;
    for (int16_t tries = 0; error == dupFNErr && tries < kTempNameTries; ++tries) {
        TemporaryName("KTTemp2", gFile.aside);
        error = Rename(gFile.existing, gFile.vRefNum, gFile.aside);
    }
    gFile.steppedAside = error == noErr;
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

// Gives the old file its name back and deletes the new one.
static void PutBack()
{
    gBeforeEnd = nullptr;
    if (gFile.renamed)
        Rename(gFile.existing, gFile.vRefNum, gFile.working);
    if (gFile.steppedAside)
        Rename(gFile.aside, gFile.vRefNum, gFile.existing);
    if (gFile.haveInfo)
        SetFInfo(gFile.existing, gFile.vRefNum, &gFile.info);
    FSClose(gFile.refNum);
    FSDelete(gFile.working, gFile.vRefNum);
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
    if (error == noErr) {
        gBeforeEnd = PutBack;  // a missing piece is fatal
        return true;
    }
    DoWriteError(error, ql_quorum_passtr(" (fsopen)"));
    FSDelete(gFile.working, gFile.vRefNum);
    return false;
}

Boolean StepFailed(OSErr error, const char *context)
{
    if (error == noErr)
        return false;
    DoWriteError(error, ql_quorum_passtr(context));
    PutBack();
    return true;
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
    TakeOverInfo();
    if (StepFailed(StepAside(), " (rename1)") ||
        StepFailed(Rename(gFile.working, gFile.vRefNum, gFile.existing), " (rename2)"))
        return;
    gFile.renamed = true;
    StepFailed(FSDelete(gFile.aside, gFile.vRefNum), " (fsdelete)");
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
    gBeforeEnd = nullptr;
    FSClose(gFile.refNum);
}
