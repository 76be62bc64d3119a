#include "ktDeleteRiders.h"

#include "errors.h"
#include "ktCustomDlg.h"
#include "strings.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"
#include "toolbox/standardfile.h"
#include "toolbox/system.h"
#include "utilities.h"

namespace {

constexpr int16_t kOpenDialog = 16400;
constexpr int16_t kOpenWidth = 348;
constexpr int16_t kOpenHeight = 221;
constexpr int32_t kBytesChecked = 15;
constexpr Size kReserve = 10240;
constexpr char kMagic[] = "%!Zu3_Riders";
constexpr int32_t kMagicLength = sizeof kMagic - 1;

void Refuse(int16_t stringID, int32_t number, const char *context)
{
    TheErrorHandler(kErrorDialog, stringID, number, ql_quorum_passtr(context), false);
}

// The file's first bytes in a block of the caller's; nil after a report.
Handle ReadStart(int16_t refNum, OSErr *error)
{
    *error = memFullErr;
    if (kBytesChecked >= MaxMem(nullptr) - kReserve) {
        Refuse(16161, 96, " (maxmem)");
        return nullptr;
    }
    Handle start = NewHandleClear(kBytesChecked);
    if (!start) {
        Refuse(16161, 95, " (newhandle)");
        return nullptr;
    }
    int32_t count = kBytesChecked;
    HLock(start);
    *error = FSRead(refNum, &count, *start);
    HUnlock(start);
    if (*error == noErr)
        return start;
    DoReadError(*error, ql_quorum_passtr(" (fsread)"));
    DisposeHandle(start);
    return nullptr;
}

// Whether the open file is a riders file; tells the user why not.
Boolean StartsLikeRiders(int16_t refNum, OSErr *error)
{
    int32_t length = 0;
    *error = GetEOF(refNum, &length);
    if (*error != noErr) {
        DoReadError(*error, ql_quorum_passtr(" (eof)"));
        return false;
    }
    if (length < kBytesChecked) {
        Refuse(16159, 0, "");
        return false;
    }
    Handle start = ReadStart(refNum, error);
    if (!start)
        return false;
    Boolean found = Munger(start, 0, kMagic, kMagicLength, nullptr, 0) >= 0;
    DisposeHandle(start);
    if (!found)
        Refuse(16159, 0, "");
    return found;
}

}  // namespace

int16_t RemoveRiders()
{
    Point where;
    CenterSFGet(gCustomDialog, &where, kOpenWidth, kOpenHeight);
    OSType type = 'TEXT';
    SFReply reply;
    SFPGetFile(where, ql_quorum_passtr(""), nullptr, 1, &type, nullptr, &reply, kOpenDialog, nullptr);
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
