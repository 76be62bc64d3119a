// The settings between calls: their defaults, their validity, and the file that
// keeps them.
#pragma once

#include "source/settingsRecord.h"

// Fills gPrefsPtr from the preferences file, or with the defaults; if a spot function
// is imported, also gSpotHandle and gSpotLength. main_entry calls this before a
// command or the About box, and WritePrefs after it.
void GetPrefs();
// Writes both to a new preferences file in place of the old one and, once it has
// been created, frees gSpotHandle. Failures are silent: on a disk that can only be
// read, users would otherwise see a report after every command.
void WritePrefs();

// Fills the whole live record. Does not return when a text is missing.
void SetDefaults();
// Zeroes what follows each text in its field.
void CleanupPrefsStruct();
// Replaces a record that breaks a rule by the defaults; true if it did. Only popup
// items that do not exist are reported: settings of another version are replaced
// too, and a message would come with every update.
Boolean DoPrefsResCheck();

// True if a dialog with its top left at *position (global) would have its title
// bar on a display; otherwise *position becomes one that centres it. Does not
// return when there is no such 'DLOG'.
Boolean CheckDlogPos(int16_t dialogID, Point *position);
