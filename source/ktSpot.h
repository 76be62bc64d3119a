// Importing a spot function from a text file.
//
// The file has "%!KT1_Spot" and a carriage return within its first 96 bytes;
// what follows the first carriage return is the function's body.
#pragma once

#include "toolbox/types.h"

// The body of the imported spot function and its length; nil without one.
// Loaded and saved with the settings.
extern Handle gSpotHandle;
extern int32_t gSpotLength;
// The same as it was when the settings dialog opened. May be the same block.
extern Handle gSavedSpotHandle;
extern int32_t gSavedSpotLength;

// Asks for a file and reads it. 1: imported; 0: cancelled or failed, and what
// was imported before stays.
Boolean DoSpotImport();
// Whether the open file starts like a spot file; *offset is then where its
// first carriage return is, -1 without one in the bytes looked at. Leaves the
// file's mark at 0.
Boolean CheckIfSpot(int16_t refNum, int32_t *offset);
