// The pieces of a riders file: PostScript from the resources, and between its
// parts the values that the user chose, as bare characters.
//
// Each call writes one section to the open file and returns noErr or the first
// error of writing, at which it stops. A missing piece is fatal. All pieces in
// their order: docs/riders-file.md.
#pragma once

#include "toolbox/types.h"

// Bytes of the file so far; each piece is counted before it is written.
extern int32_t gTotalLength;

OSErr WriteBegin(int16_t refNum);
OSErr WriteSpot(int16_t refNum);
OSErr WriteScreenCheck(int16_t refNum);
OSErr WriteFreq(int16_t refNum);
OSErr WriteAngle(int16_t refNum);
OSErr WriteFlat(int16_t refNum);
OSErr WriteAnno(int16_t refNum);
OSErr WriteError(int16_t refNum);
OSErr WriteEnd(int16_t refNum);
