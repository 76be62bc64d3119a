// The sections of a riders file: pieces of PostScript from the resources, and
// between them the values that the user chose, as bare characters. All pieces in
// their order: docs/riders-file.md.
//
// Each call writes one section to the open file and returns noErr or the first
// write error, at which it stops. A missing piece is fatal. The settings dialog
// and its popups must be open.
#pragma once

#include "toolbox/types.h"

// Bytes of the file so far; each piece is counted before it is written. The
// caller sets it to 0 for a new file.
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
