#include "source/newFile.h"

#include "source/errors.h"
#include "source/strings.h"
#include "source/utilities.h"
#include "toolbox/system.h"

enum { kTempNameTries = 8 };

// --- Opening ------------------------------------------------------------------

static void TemporaryName(const char *start, Str63 name)
{
    CopyPStr(ql_quorum_passtr(start), name, 63);
    GetUniqueTempName(name);
}

static OSErr CreateText(NewFile *file)
{
    return Create(file->working, file->vRefNum, 'ttxt', 'TEXT');
}

// What goes wrong here shows when the file is opened; only a name that is taken
// would not, so another one is tried.
static void CreateTemporary(NewFile *file)
{
    OSErr error = dupFNErr;
    for (int16_t tries = 0; error == dupFNErr && tries < kTempNameTries; ++tries) {
        TemporaryName("KTTemp1", file->working);
        error = CreateText(file);
    }
}

static Boolean CreateFile(NewFile *file, StringPtr name)
{
    CopyPStr(name, file->working, 63);
    OSErr error = CreateText(file);
    if (error == dupFNErr) {
        file->replacing = true;
        CopyPStr(name, file->existing, 63);
        CreateTemporary(file);
    } else if (error != noErr) {
        DoWriteError(error, ql_quorum_passtr(" (create)"));
        return false;
    }
    return true;
}

Boolean OpenNewFile(NewFile *file, const SFReply &reply)
{
    SFReply chosen = reply;
    *file = {};
    file->vRefNum = reply.vRefNum;
    if (!CreateFile(file, chosen.fName))
        return false;
    OSErr error = FSOpen(file->working, file->vRefNum, &file->refNum);
    if (error == noErr)
        return true;
    DoWriteError(error, ql_quorum_passtr(" (fsopen)"));
    FSDelete(file->working, file->vRefNum);
    return false;
}

// --- Failing ------------------------------------------------------------------

static void CloseAndDelete(NewFile *file)
{
    FSClose(file->refNum);
    FSDelete(file->working, file->vRefNum);
}

Boolean StepFailed(NewFile *file, OSErr error, const char *context)
{
    if (error == noErr)
        return false;
    DoWriteError(error, ql_quorum_passtr(context));
    CloseAndDelete(file);
    return true;
}

// Puts the old file back under its name and takes the new one away. aside: the
// name the old file has meanwhile, nil while it still has its own.
static void GiveUpReplacing(NewFile *file, OSErr error, const char *context, StringPtr aside)
{
    DoWriteError(error, ql_quorum_passtr(context));
    if (file->renamed)
        Rename(file->existing, file->vRefNum, file->working);
    if (aside)
        Rename(aside, file->vRefNum, file->existing);
    if (file->haveInfo)
        SetFInfo(file->existing, file->vRefNum, &file->info);
    CloseAndDelete(file);
}

// --- Finishing ----------------------------------------------------------------

// The new file gets the old one's type, creator and flags.
static void TakeOverInfo(NewFile *file)
{
    FInfo created;
    GetFInfo(file->working, file->vRefNum, &created);
    file->haveInfo = GetFInfo(file->existing, file->vRefNum, &file->info) == noErr;
    if (file->haveInfo)
        SetFInfo(file->working, file->vRefNum, &file->info);
}

// The old file steps aside under a temporary name, the new one takes its name,
// and the old one goes.
static void Replace(NewFile *file)
{
    Str63 aside;
    TakeOverInfo(file);
    TemporaryName("KTTemp2", aside);
    OSErr error = Rename(file->existing, file->vRefNum, aside);
    if (error != noErr)
        return GiveUpReplacing(file, error, " (rename1)", nullptr);
    error = Rename(file->working, file->vRefNum, file->existing);
    if (error != noErr)
        return GiveUpReplacing(file, error, " (rename2)", aside);
    file->renamed = true;
    error = FSDelete(aside, file->vRefNum);
    if (error != noErr)
        GiveUpReplacing(file, error, " (fsdelete)", aside);
}

void FinishNewFile(NewFile *file, int32_t length)
{
    OSErr error = SetEOF(file->refNum, length);
    FlushVol(nullptr, file->vRefNum);
    if (!StepFailed(file, error, " (eof)") && file->replacing)
        Replace(file);
}
