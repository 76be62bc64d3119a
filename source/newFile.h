// A text file that is being written, and takes the place of an existing one only
// when it is whole. Every failure is reported here and takes the new file away.
#pragma once

#include "toolbox/standardfile.h"

// Creates and opens the file that the user named, under another name while one
// of that name exists. False after a report; nothing is left then. One at a time.
Boolean OpenNewFile(const SFReply &reply, int16_t *refNum);
// Whether a step failed: then it is reported with the context text, and the file
// is closed and deleted.
Boolean StepFailed(OSErr error, const char *context);
// Ends a whole file at that length and puts it under the name the user chose. It
// stays open. An existing file keeps type, creator and flags; after a failure it
// is back as it was.
void FinishNewFile(int32_t length);
// Last of all, after a failure too: closing once more is harmless.
void CloseNewFile();
