// The imported spot function: a text file's body, from the time it is imported or
// loaded until it is freed. Everything that allocates, keeps, swaps or frees it is
// here.
//
// The file has "%!KT1_Spot" and a carriage return within its first 96 bytes;
// what follows the first carriage return, even one before the magic, is the body
// (docs/riders-file.md).
//
// The states, as gSpotHandle, gSavedSpotHandle and the settings' spotImported
// have them:
//   none       nil, nil, 0.
//   in use     a block, and 1: goes into the riders file and the settings file.
//   kept       both the same block: in use when the settings dialog opened, and
//              there for Cancel.
//   replaced   two blocks: another was imported since; the saved one is there for
//              Cancel.
//   left       1 became 0 when a built-in shape was chosen, or when a file to be
//              imported could not be opened or measured. A kept block stays for
//              Cancel; after a built-in shape one imported since is freed.
//   failed     a block, but 0: reading it failed with nothing imported before.
//              It is not used; the next import, or closing the dialog, frees it.
#pragma once

#include "toolbox/types.h"

// The body of the imported spot function and its length. Loaded by GetPrefs,
// freed by WritePrefs or, if that fails, by main_entry.
extern Handle gSpotHandle;
extern int32_t gSpotLength;
// The same as it was when the settings dialog opened; both handles may be the same
// block. Valid while the dialog is open, otherwise nil.
extern Handle gSavedSpotHandle;
extern int32_t gSavedSpotLength;

// Asks for a file and reads it. 1: imported; 0: cancelled or failed, and what was
// imported before stays in use, unless the file could not be opened or measured.
// The settings dialog must be open.
Boolean DoSpotImport();
// Whether the open file starts like a spot file; *offset is then where its
// first carriage return is, or -1 if the first 96 bytes have none. If not, that has
// been reported. Leaves the file's mark at 0.
Boolean CheckIfSpot(int16_t refNum, int32_t *offset);

// --- For the settings file ----------------------------------------------------

// Makes it none, whatever the globals hold from an earlier call. Frees nothing.
void ForgetSpot();
// Allocates a block for a body of that length; false, and none, without memory.
Boolean MakeSpotBlock(int32_t length);
// Makes it in use: fills that block from the open file. After an error it is none.
// The caller sets spotImported.
OSErr ReadSpotText(int16_t refNum, int32_t length);
// Writes the body to the open file.
OSErr WriteSpotText(int16_t refNum);
// Makes it none: frees the block.
void FreeSpot();

// --- For the settings dialog --------------------------------------------------

// When the dialog opens: makes it kept, if one is in use.
void KeepSpot();
// When another shape has been chosen: makes it left.
void LeaveSpot();
// For Cancel, which may come twice: goes back to what was kept.
void RevertSpot();
// When the dialog closes: makes it in use or none. Frees what is no longer used, a
// block with two handles once.
void SettleSpot();
