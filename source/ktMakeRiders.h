// Writing a riders file: the order of its pieces and the care taken with the
// file that is replaced (ktMakeRiders), and the pieces (ktRiderSections).
#pragma once

#include "toolbox/types.h"

// Bytes of the file so far; each piece is counted before it is written.
extern int32_t gTotalLength;

// Asks where to save, and writes. 0: the user cancelled; 1: written, or the
// failure has been shown. The settings dialog must be open, its popups with it.
int16_t MakeCustomRiders();

// The sections. Each answers noErr or the first error of writing, at which it
// stops. A missing TEXT resource is fatal.
OSErr WriteBegin(int16_t refNum);
OSErr WriteSpot(int16_t refNum);
OSErr WriteScreenCheck(int16_t refNum);
OSErr WriteFreq(int16_t refNum);
OSErr WriteAngle(int16_t refNum);
OSErr WriteFlat(int16_t refNum);
OSErr WriteAnno(int16_t refNum);
OSErr WriteError(int16_t refNum);
OSErr WriteEnd(int16_t refNum);
