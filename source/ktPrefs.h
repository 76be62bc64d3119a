// The settings: one record, its defaults and validity, and the file that keeps
// it between calls.
#pragma once

#include "toolbox/bigendian.h"
#include "toolbox/types.h"

// Stored byte for byte as resource 'STUF' 128 of the preferences file, so this
// is a file format. Item numbers count from 1; item 1 of a popup means "leave
// it to the host". Texts are Pascal strings; numbers in them have the user's
// decimal separator.
struct PrefsRec {
    Str31 prefsVersion;        // version text of the plug-in that wrote it
    BigInt16 freqItem;         // MENU 16136
    BigInt16 angleItem;        // MENU 16137
    BigInt16 spotItem;         // MENU 16138
    BigInt16 flatItem;         // MENU 16139
    BigInt16 annoItem;         // MENU 16140; 2: write an annotation
    BigInt16 errorItem;        // MENU 16141; 2: write the error handler
    BigInt16 annoFontItem;     // 1 to 13
    uint8_t spareFlag1;
    uint8_t closeAfterMake;    // 1: close the settings dialog after a make
    uint8_t savePosition;      // 1: open it at customDlgPos, 0: centred
    uint8_t spotImported;      // 1: gSpotHandle holds an imported spot function
    uint8_t useColor;          // 1: draw dialogs with the colour tables
    uint8_t spareFlag2;
    BigPoint customDlgPos;     // settings dialog's top left, global
    BigPoint sparePos;
    Str15 freqStr;             // lines an inch
    Str15 angleStr;            // degrees
    Str15 flatStr;
    Str15 annoSizeStr;         // points
    Str63 spotName;            // name of the imported spot function
    Str255 annoText;
};

static_assert(offsetof(PrefsRec, prefsVersion) == 0);
static_assert(offsetof(PrefsRec, freqItem) == 32);
static_assert(offsetof(PrefsRec, angleItem) == 34);
static_assert(offsetof(PrefsRec, spotItem) == 36);
static_assert(offsetof(PrefsRec, flatItem) == 38);
static_assert(offsetof(PrefsRec, annoItem) == 40);
static_assert(offsetof(PrefsRec, errorItem) == 42);
static_assert(offsetof(PrefsRec, annoFontItem) == 44);
static_assert(offsetof(PrefsRec, spareFlag1) == 46);
static_assert(offsetof(PrefsRec, closeAfterMake) == 47);
static_assert(offsetof(PrefsRec, savePosition) == 48);
static_assert(offsetof(PrefsRec, spotImported) == 49);
static_assert(offsetof(PrefsRec, useColor) == 50);
static_assert(offsetof(PrefsRec, spareFlag2) == 51);
static_assert(offsetof(PrefsRec, customDlgPos) == 52);
static_assert(offsetof(PrefsRec, sparePos) == 56);
static_assert(offsetof(PrefsRec, freqStr) == 60);
static_assert(offsetof(PrefsRec, angleStr) == 76);
static_assert(offsetof(PrefsRec, flatStr) == 92);
static_assert(offsetof(PrefsRec, annoSizeStr) == 108);
static_assert(offsetof(PrefsRec, spotName) == 124);
static_assert(offsetof(PrefsRec, annoText) == 188);
static_assert(sizeof(PrefsRec) == 444);

// The live settings, and the copy the settings dialog goes back to. Good
// within a call only: gPrefsPtr with the About box and commands, gSavedPrefs
// while the settings dialog runs. gPrefsPtr is nil where there are no settings.
extern PrefsRec *gPrefsPtr;
extern PrefsRec *gSavedPrefs;

// Fills gPrefsPtr, and gSpotHandle and gSpotLength when a spot function is
// imported, from the preferences file, or from the defaults.
void GetPrefs();
// Writes both to a new preferences file in place of the old one and frees
// gSpotHandle. Failures are silent.
void WritePrefs();

// Fills the whole live record. Does not return when a text is missing.
void SetDefaults();
// Zeroes what lies behind each text in its field.
void CleanupPrefsStruct();
// Puts the defaults in place of a record that breaks a rule; true when it did.
// Tells the user only of popup items that do not exist.
Boolean DoPrefsResCheck();

// True when a dialog with its top left at *position (global) would have its
// title bar on screen; otherwise *position becomes one that centres it. Does
// not return when there is no such 'DLOG'.
Boolean CheckDlogPos(int16_t dialogID, Point *position);
