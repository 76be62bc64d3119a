#include "source/ktSpot.h"

#include "source/errors.h"
#include "source/fileBlocks.h"
#include "source/openDialogs.h"
#include "source/reasons.h"
#include "source/settingsRecord.h"
#include "source/strings.h"
#include "source/utilities.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"
#include "toolbox/standardfile.h"
#include "toolbox/system.h"

Handle gSpotHandle = nullptr;
int32_t gSpotLength = 0;
Handle gSavedSpotHandle = nullptr;
int32_t gSavedSpotLength = 0;

enum { kHeaderBytes = 96 };
enum { kOpenDialogWidth = 348, kOpenDialogHeight = 136 };

static const char kMagic[] = "%!KT1_Spot";

// --- Loading, writing, freeing ------------------------------------------------

void ForgetSpot()
{
    gSpotHandle = nullptr;
    gSpotLength = 0;
    gSavedSpotHandle = nullptr;
}

static void FreeBlock(Handle *block)
{
    if (*block)
        DisposeHandle(*block);
    *block = nullptr;
}

Boolean MakeSpotBlock(int32_t length)
{
    gSpotHandle = NewHandleClear(length);
    return gSpotHandle != nullptr;
}

OSErr ReadSpotText(int16_t refNum, int32_t length)
{
    MoveHHi(gSpotHandle);
    int32_t count = length;
    OSErr error = ReadLocked(refNum, gSpotHandle, &count);
    if (error == noErr)
        gSpotLength = length;
    else
        FreeBlock(&gSpotHandle);
    return error;
}

OSErr WriteSpotText(int16_t refNum)
{
    MoveHHi(gSpotHandle);
    HLock(gSpotHandle);
    OSErr error = FSWrite(refNum, &gSpotLength, *gSpotHandle);
    HUnlock(gSpotHandle);
    return error;
}

void FreeSpot()
{
    FreeBlock(&gSpotHandle);
}

// --- While the settings dialog is open ----------------------------------------

void KeepSpot()
{
    gSavedPrefs->spotImported = gPrefsPtr->spotImported;
    gSavedSpotHandle = nullptr;
    gSavedSpotLength = 0;
    if (!gPrefsPtr->spotImported)
        return;
    CopyPStr(gPrefsPtr->spotName, gSavedPrefs->spotName, 63);
    gSavedSpotHandle = gSpotHandle;
    gSavedSpotLength = gSpotLength;
}

void LeaveSpot()
{
    if (gPrefsPtr->spotImported && gSpotHandle != gSavedSpotHandle)
        FreeBlock(&gSpotHandle);
    gPrefsPtr->spotImported = 0;
}

void RevertSpot()
{
    if (gSpotHandle != gSavedSpotHandle)
        FreeBlock(&gSpotHandle);
    if (gSavedPrefs->spotImported) {
        gSpotHandle = gSavedSpotHandle;
        gSpotLength = gSavedSpotLength;
        CopyPStr(gSavedPrefs->spotName, gPrefsPtr->spotName, 63);
    }
    gPrefsPtr->spotImported = gSavedPrefs->spotImported;
}

void SettleSpot()
{
    Boolean shared = gSavedSpotHandle == gSpotHandle;
    if (!gPrefsPtr->spotImported)
        FreeBlock(&gSpotHandle);
    if (!shared)
        FreeBlock(&gSavedSpotHandle);
    gSavedSpotHandle = nullptr;
}

// --- Importing ----------------------------------------------------------------

static Boolean ReadBlock(int16_t refNum, Handle block, int32_t *count, const char *context)
{
    OSErr error = ReadLocked(refNum, block, count);
    if (error != noErr)
        DoReadError(error, ql_quorum_passtr(context));
    return error == noErr;
}

static Boolean HeaderIsSpot(Handle header, int32_t *offset)
{
    if (Munger(header, 0, kMagic, sizeof kMagic - 1, nullptr, 0) < 0)
        return Refused(kNoSpotFile, kNoSpotMagic, " (%!KT1_Spot)");
    *offset = FindCharOffset('\r', header, 0);
    return true;
}

Boolean CheckIfSpot(int16_t refNum, int32_t *offset)
{
    int32_t size;
    OSErr error = GetEOF(refNum, &size);
    if (error != noErr) {
        DoReadError(error, ql_quorum_passtr(" (eof -check)"));
        return false;
    }
    if (size > kHeaderBytes)
        size = kHeaderBytes;
    if (!FitsInMemory(size))
        return Refused(kNoMemoryForFile, kFileTooLarge, " (maxmem -check)");
    Handle header = NewHandleClear(size);
    if (!header)
        return Refused(kNoMemoryForFile, kNoFileBlock, " (newhandle -check)");
    Boolean isSpot = ReadBlock(refNum, header, &size, " (fsread -check)") && HeaderIsSpot(header, offset);
    SetFPos(refNum, fsFromStart, 0);
    DisposeHandle(header);
    return isSpot;
}

static Boolean AskForFile(SFReply *reply)
{
    Point where;
    OSType types[] = {'TEXT'};
    CenterSFGet(gCustomDialog, &where, kOpenDialogWidth, kOpenDialogHeight);
    SFPGetFile(where, ql_quorum_passtr(""), nullptr, 1, types, nullptr, reply, kImportDialogID, nullptr);
    return reply->good;
}

// Puts the file's mark at the body and the body's length into gSpotLength.
static Boolean FindBody(int16_t refNum)
{
    int32_t offset = -1;
    OSErr error = GetEOF(refNum, &gSpotLength);
    if (error != noErr) {
        DoReadError(error, ql_quorum_passtr(" (eof)"));
        gPrefsPtr->spotImported = 0;
        return false;
    }
    if (gSpotLength <= 0)
        return Refused(kFileIsEmpty, kNoReason, "");
    if (!CheckIfSpot(refNum, &offset))
        return false;
    if (offset < 0)
        return Refused(kNoSpotFile, kNoSpotReturn, " (no return offset)");
    gSpotLength -= offset + 1;
    // Otherwise the first line would count as the body's beginning.
    error = SetFPos(refNum, fsFromStart, offset + 1);
    if (error != noErr) {
        DoReadError(error, ql_quorum_passtr(" (fsread)"));
        return false;
    }
    if (!FitsInMemory(gSpotLength))
        return Refused(kNoMemoryForFile, kFileTooLarge, " (maxmem)");
    return true;
}

// Reads the body into a new gSpotHandle. After a failure the handle of a spot function
// imported before is put back; without one the new block stays, unused.
static Boolean ReadBody(int16_t refNum, Handle old, int32_t oldLength)
{
    gSpotHandle = NewHandleClear(gSpotLength);
    if (!gSpotHandle)
        Refused(kNoMemoryForFile, kNoFileBlock, " (newhandle)");
    else if (ReadBlock(refNum, gSpotHandle, &gSpotLength, " (fsread)"))
        return true;
    Handle failed = gSpotHandle;
    if (gPrefsPtr->spotImported) {
        gSpotHandle = old;
        if (failed)
            DisposeHandle(failed);
    }
    if (gPrefsPtr->spotImported || !failed)
        gSpotLength = oldLength;
    return false;
}

static Boolean ImportFrom(int16_t refNum, StringPtr name)
{
    int32_t oldLength = gSpotLength;
    if (!FindBody(refNum)) {
        gSpotLength = oldLength;
        return false;
    }
    // May also be a block that an earlier failure left, which is freed as well.
    Handle old = gSpotHandle;
    Boolean imported = ReadBody(refNum, old, oldLength);
    if (imported) {
        gPrefsPtr->spotImported = 1;
        CopyPStr(name, gPrefsPtr->spotName, 63);
    }
    if (old && old != gSpotHandle && old != gSavedSpotHandle)
        DisposeHandle(old);
    return imported;
}

Boolean DoSpotImport()
{
    SFReply reply;
    if (!AskForFile(&reply))
        return false;
    int16_t refNum;
    OSErr error = FSOpen(reply.fName, reply.vRefNum, &refNum);
    if (error != noErr) {
        DoReadError(error, ql_quorum_passtr(" (fsopen)"));
        // Here, and if its length cannot be read, an earlier import is dropped
        // unless the user cancels. Mended, it would still be there at the next opening.
        gPrefsPtr->spotImported = 0;
        return false;
    }
    Boolean imported = ImportFrom(refNum, reply.fName);
    FSClose(refNum);
    return imported;
}
