#include "source/ktDeleteRiders.h"

#include "source/errors.h"
#include "source/fileBlocks.h"
#include "source/openDialogs.h"
#include "source/reasons.h"
#include "source/strings.h"
#include "source/utilities.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"
#include "toolbox/standardfile.h"
#include "toolbox/system.h"

namespace {

constexpr int16_t kOpenWidth = 348;
constexpr int16_t kOpenHeight = 221;
// Shorter files are refused even if they hold the magic, which may begin up to 3 bytes
// in. `riders apply` accepts the same files; mended here alone, the two would differ.
constexpr int32_t kBytesChecked = 15;
constexpr char kMagic[] = "%!Zu3_Riders";
constexpr int32_t kMagicLength = sizeof kMagic - 1;

// The file's first bytes in a block that the caller frees; nil after a report.
Handle ReadStart(int16_t refNum, OSErr *error)
{
    *error = memFullErr;
    if (!FitsInMemory(kBytesChecked)) {
        Refused(kNoMemoryToCheck, kFileTooLarge, " (maxmem)");
        return nullptr;
    }
    Handle start = NewHandleClear(kBytesChecked);
    if (!start) {
        Refused(kNoMemoryToCheck, kNoFileBlock, " (newhandle)");
        return nullptr;
    }
    int32_t count = kBytesChecked;
    *error = ReadLocked(refNum, start, &count);
    if (*error == noErr)
        return start;
    DoReadError(*error, ql_quorum_passtr(" (fsread)"));
    DisposeHandle(start);
    return nullptr;
}

// Whether the open file is a riders file; reports it if not.
Boolean StartsLikeRiders(int16_t refNum, OSErr *error)
{
    int32_t length = 0;
    *error = GetEOF(refNum, &length);
    if (*error != noErr) {
        DoReadError(*error, ql_quorum_passtr(" (eof)"));
        return false;
    }
    if (length < kBytesChecked)
        return Refused(kNoRidersFile, kNoReason, "");
    Handle start = ReadStart(refNum, error);
    if (!start)
        return false;
    Boolean found = Munger(start, 0, kMagic, kMagicLength, nullptr, 0) >= 0;
    DisposeHandle(start);
    return found || Refused(kNoRidersFile, kNoReason, "");
}

}  // namespace

int16_t RemoveRiders()
{
    Point where;
    CenterSFGet(gCustomDialog, &where, kOpenWidth, kOpenHeight);
    OSType type = 'TEXT';
    SFReply reply;
    SFPGetFile(where, ql_quorum_passtr(""), nullptr, 1, &type, nullptr, &reply, kRemoveDialogID, nullptr);
    if (!reply.good)
        return 1;
    Str63 name;
    CopyPStr(reply.fName, name, 63);

    int16_t refNum = 0;
    OSErr error = FSOpen(name, reply.vRefNum, &refNum);
    if (error != noErr) {
        DoReadError(error, ql_quorum_passtr(" (fsopen)"));
        return error;
    }
    Boolean riders = StartsLikeRiders(refNum, &error);
    FSClose(refNum);
    if (!riders)
        return error;
    error = FSDelete(name, reply.vRefNum);
    if (error != noErr)
        DoWriteError(error, ql_quorum_passtr(" (fsdelete)"));
    return error;
}
