#include "ktSpot.h"

#include "errors.h"
#include "ktCustomDlg.h"
#include "ktPrefs.h"
#include "strings.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"
#include "toolbox/standardfile.h"
#include "toolbox/system.h"
#include "utilities.h"

Handle gSpotHandle = nullptr;
int32_t gSpotLength = 0;
Handle gSavedSpotHandle = nullptr;
int32_t gSavedSpotLength = 0;

enum { kHeaderBytes = 96 };
enum { kOpenDialogID = 16401, kOpenDialogWidth = 348, kOpenDialogHeight = 136 };
enum { kFileIsEmpty = 16151, kNoMemoryForFile = 16152, kNoSpotFile = 16164 };
enum { kNoMagic = 51, kNoReturn = 52, kNoBlock = 95, kTooLarge = 96 };

static const char kMagic[] = "%!KT1_Spot";

// Reports without an end, and answers false.
static Boolean Refuse(int16_t message, int32_t number, const char *context)
{
    TheErrorHandler(kErrorDialog, message, number, ql_quorum_passtr(context), false);
    return false;
}

// 10 KB are left to the host.
static Boolean FitsInMemory(int32_t size)
{
    Size grow;
    return size < MaxMem(&grow) - 10240;
}

static Boolean ReadBlock(int16_t refNum, Handle block, int32_t *count, const char *context)
{
    HLock(block);
    OSErr error = FSRead(refNum, count, *block);
    HUnlock(block);
    if (error != noErr)
        DoReadError(error, ql_quorum_passtr(context));
    return error == noErr;
}

static Boolean HeaderIsSpot(Handle header, int32_t *offset)
{
    if (Munger(header, 0, kMagic, sizeof kMagic - 1, nullptr, 0) < 0)
        return Refuse(kNoSpotFile, kNoMagic, " (%!KT1_Spot)");
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
        return Refuse(kNoMemoryForFile, kTooLarge, " (maxmem -check)");
    Handle header = NewHandleClear(size);
    if (!header)
        return Refuse(kNoMemoryForFile, kNoBlock, " (newhandle -check)");
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
    SFPGetFile(where, ql_quorum_passtr(""), nullptr, 1, types, nullptr, reply, kOpenDialogID, nullptr);
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
        return Refuse(kFileIsEmpty, 0, "");
    if (!CheckIfSpot(refNum, &offset))
        return false;
    if (offset < 0)
        return Refuse(kNoSpotFile, kNoReturn, " (no return offset)");
    gSpotLength -= offset + 1;
    SetFPos(refNum, fsFromStart, offset + 1);
    if (!FitsInMemory(gSpotLength))
        return Refuse(kNoMemoryForFile, kTooLarge, " (maxmem)");
    return true;
}

// Reads the body into a new gSpotHandle. With a spot function imported already
// a failure puts its handle back; without one the new block stays, unused.
static Boolean ReadBody(int16_t refNum, Handle old, int32_t oldLength)
{
    gSpotHandle = NewHandleClear(gSpotLength);
    if (!gSpotHandle)
        Refuse(kNoMemoryForFile, kNoBlock, " (newhandle)");
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
    // Whatever is there: what an earlier failure left is to be freed as well.
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
        gPrefsPtr->spotImported = 0;
        return false;
    }
    Boolean imported = ImportFrom(refNum, reply.fName);
    FSClose(refNum);
    return imported;
}
