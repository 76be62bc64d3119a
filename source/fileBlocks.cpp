#include "source/fileBlocks.h"

#include "source/errors.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"
#include "toolbox/system.h"

enum { kReserve = 10240 };

Boolean FitsInMemory(int32_t size)
{
    Size grow;
    return size < MaxMem(&grow) - kReserve;
}

OSErr ReadLocked(int16_t refNum, Handle block, int32_t *count)
{
    HLock(block);
    OSErr error = FSRead(refNum, count, *block);
    HUnlock(block);
    return error;
}

Boolean Refused(int16_t messageID, int32_t reason, const char *context)
{
    TheErrorHandler(kErrorDialog, messageID, reason, ql_quorum_passtr(context), false);
    return false;
}
