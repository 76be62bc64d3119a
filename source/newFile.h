// A text file that is being written, and takes the place of an existing one only
// when it is whole. Every failure is reported here and takes the new file away.
#pragma once

#include "toolbox/files.h"
#include "toolbox/standardfile.h"

struct NewFile {
    int16_t vRefNum;
    int16_t refNum;      // open from OpenNewFile on
    Str63 working;       // the file being written
    Str63 existing;      // the file it is to replace
    Boolean replacing;
    Boolean renamed;     // the new file has its name
    Boolean haveInfo;
    FInfo info;          // the existing file's
};

// Creates and opens the file that the user named, under another name while one
// of that name exists. False after a report; nothing is left then.
Boolean OpenNewFile(NewFile *file, const SFReply &reply);
// Whether a step failed: then it is reported with the context text, and the file
// is closed and deleted.
Boolean StepFailed(NewFile *file, OSErr error, const char *context);
// Ends a whole file at that length and puts it under the name the user chose. It
// stays open. An existing file keeps type, creator and flags; after a failure it
// is back as it was.
void FinishNewFile(NewFile *file, int32_t length);
