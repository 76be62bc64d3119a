// The settings between calls: their defaults, their validity, and the file that
// keeps them.
#pragma once

#include "source/settingsRecord.h"

// Fills gPrefsPtr, and gSpotHandle and gSpotLength when a spot function is
// imported, from the preferences file, or from the defaults.
void GetPrefs();
// Writes both to a new preferences file in place of the old one and frees
// gSpotHandle. Failures are silent.
void WritePrefs();

// Fills the whole live record. Does not return when a text is missing.
void SetDefaults();
// Zeroes what follows each text in its field.
void CleanupPrefsStruct();
// Puts the defaults in place of a record that breaks a rule; true when it did.
// Only popup items that do not exist are reported to the user.
Boolean DoPrefsResCheck();

// True when a dialog with its top left at *position (global) would have its
// title bar on screen; otherwise *position becomes one that centres it. Does
// not return when there is no such 'DLOG'.
Boolean CheckDlogPos(int16_t dialogID, Point *position);
