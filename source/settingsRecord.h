// The settings: one record, which is also a file format; docs/riders-file.md
// describes it field by field.
#pragma once

#include "toolbox/bigendian.h"
#include "toolbox/types.h"

// Stored byte for byte as resource 'STUF' 128 of the preferences file. Item numbers
// count from 1; item 1 of a popup means "leave it to the printer". Texts are Pascal
// strings; numbers in them have the user's decimal separator.
struct PrefsRec {
    Str31 prefsVersion;      // version text of the plug-in that wrote it
    BigInt16 freqItem;       // kFreqMenu
    BigInt16 angleItem;      // kAngleMenu
    BigInt16 spotItem;       // kSpotMenu
    BigInt16 flatItem;       // kFlatMenu
    BigInt16 annoItem;       // kAnnoMenu; 2: write an annotation
    BigInt16 errorItem;      // kErrorMenu; 2: write the error handler
    BigInt16 annoFontItem;   // kAnnoFontMenu; 1 to 13
    uint8_t spareFlag1;      // 1 in new settings; nothing reads it
    uint8_t closeAfterMake;  // 1: set gDone after a make; the dialog closes anyway
    uint8_t savePosition;    // 1: open it at customDlgPos, 0: centred
    uint8_t spotImported;    // 1: an imported spot function is in use
    uint8_t useColor;        // 1: draw dialogs with the colour tables
    uint8_t spareFlag2;      // nothing reads it
    BigPoint customDlgPos;   // settings dialog's top left, global
    BigPoint sparePos;       // nothing reads it
    Str15 freqStr;           // lines per inch
    Str15 angleStr;          // degrees
    Str15 flatStr;
    Str15 annoSizeStr;  // points
    Str63 spotName;     // name of the imported spot function
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

// The texts whose standard values are in the resources, with their capacities and
// their indexes in kPrefsStrings.
struct PrefsText {
    size_t offset;
    int16_t capacity;
    int16_t standard;
};

inline constexpr PrefsText kPrefsTexts[] = {
    {offsetof(PrefsRec, spotName), 63, 6},  {offsetof(PrefsRec, freqStr), 15, 2},
    {offsetof(PrefsRec, angleStr), 15, 3},  {offsetof(PrefsRec, flatStr), 15, 4},
    {offsetof(PrefsRec, annoText), 255, 5}, {offsetof(PrefsRec, annoSizeStr), 15, 7},
};

inline StringPtr TextIn(PrefsRec *prefs, const PrefsText &text)
{
    return reinterpret_cast<StringPtr>(prefs) + text.offset;
}

// The live settings, and the copy that cancelling the settings dialog restores.
// main_entry allocates and frees both. Valid within a call only: gPrefsPtr during the
// About box and commands, gSavedPrefs while the settings dialog runs. Otherwise nil,
// or stale after a fatal error.
extern PrefsRec *gPrefsPtr;
extern PrefsRec *gSavedPrefs;
