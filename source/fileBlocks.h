// Reading files into blocks, as the import and the removal do it.
#pragma once

#include "toolbox/types.h"

// Whether a block of that size may be allocated: 10 KB are left to the host.
Boolean FitsInMemory(int32_t size);
// FSRead into the block, which is locked while it is read.
OSErr ReadLocked(int16_t refNum, Handle block, int32_t *count);
// Reports a refusal in the error dialog, not fatal; returns false.
Boolean Refused(int16_t messageID, int32_t reason, const char *context);
