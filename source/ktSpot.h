// The imported spot function: a text file's body, from its import or its
// loading to its end. Everything that allocates, keeps, swaps or frees it is
// here.
//
// The file has "%!KT1_Spot" and a carriage return within its first 96 bytes;
// what follows the first carriage return is the body (docs/riders-file.md).
//
// The states, as gSpotHandle, gSavedSpotHandle and the settings' spotImported
// have them:
//   none       nil, nil, 0.
//   in use     a block, and 1: the riders file and the settings file get it.
//   kept       both the same block: in use when the settings dialog opened.
//              Cancelling finds it there.
//   replaced   two blocks: another was imported since; the saved one waits for
//              Cancel.
//   left       1 became 0 when a built-in shape was chosen. A block that is
//              kept stays for Cancel; one imported since is freed.
//   failed     a block, but 0: reading it failed with nothing imported before.
//              It is not used; the next import or the end frees it.
#pragma once

#include "toolbox/types.h"

// The body of the imported spot function and its length. Here since GetPrefs,
// gone after WritePrefs.
extern Handle gSpotHandle;
extern int32_t gSpotLength;
// The same as it was when the settings dialog opened; both names may be of one
// block. Good while the dialog is open, nil otherwise.
extern Handle gSavedSpotHandle;
extern int32_t gSavedSpotLength;

// Asks for a file and reads it. 1: imported; 0: cancelled or failed, and what
// was imported before stays.
Boolean DoSpotImport();
// Whether the open file starts like a spot file; *offset is then where its
// first carriage return is, -1 without one in the bytes looked at. Leaves the
// file's mark at 0.
Boolean CheckIfSpot(int16_t refNum, int32_t *offset);

// --- For the settings file ----------------------------------------------------

// None, without a look at what the globals hold from an earlier call.
void ForgetSpot();
// A block for a body of the length; false, and none, without memory for it.
Boolean MakeSpotBlock(int32_t length);
// In use: fills that block from the open file. After an error there is none.
// spotImported is the caller's to set.
OSErr ReadSpotText(int16_t refNum, int32_t length);
// Writes the body to the open file.
OSErr WriteSpotText(int16_t refNum);
// None: frees the block.
void FreeSpot();

// --- For the settings dialog --------------------------------------------------

// Kept, if one is in use: when the dialog opens.
void KeepSpot();
// Left: another shape has been chosen.
void LeaveSpot();
// Back to what was kept: for Cancel, which may come twice.
void RevertSpot();
// In use or none: when the dialog closes. Frees what is not used any more; a
// block with two names once.
void SettleSpot();
