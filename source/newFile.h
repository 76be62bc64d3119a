// A text file that is being written, and that replaces an existing one only when it
// is complete. Every failure is reported here, and the new file deleted.
#pragma once

#include "toolbox/standardfile.h"

// Creates and opens the file that the user named, under another name while one
// of that name exists. False after a report; then there is no new file. One at a time.
Boolean OpenNewFile(const SFReply &reply, int16_t *refNum);
// Whether a step failed. If so it is reported with the context text, and the file is
// closed and deleted.
Boolean StepFailed(OSErr error, const char *context);
// Ends a complete file at that length and gives it the name that the user chose. It
// stays open. Type, creator and flags of an existing file are kept; after a failure
// it is as it was before.
void FinishNewFile(int32_t length);
// To be called last, after a failure too: closing the file twice is harmless.
void CloseNewFile();
