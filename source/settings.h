// The settings of a riders file, a row each: where one is chosen, where it is
// kept, what its values are, and which pieces surround them in the file.
//
// Whatever is done for each setting uses these rows: popups, defaults, validity,
// value entry, cancelling, writing.
#pragma once

#include "source/settingsRecord.h"
#include "toolbox/menus.h"

// One PopupInfo each; the settings dialog allocates them when it opens and frees them
// when it closes. Otherwise nil.
extern Handle gFreqPopInfo;
extern Handle gAnglePopInfo;
extern Handle gSpotPopInfo;
extern Handle gFlatPopInfo;
extern Handle gAnnoPopInfo;
extern Handle gErrorPopInfo;

// The values that can be typed if the menu does not have them. With any other number
// nothing is set up or stored.
enum : int16_t { kFreqKind = 5, kAngleKind = 6, kFlatKind = 7 };

constexpr int16_t kValueLimit = 15;  // characters

// A number that stands in the menu and the riders file, or is typed if the menu does
// not have it. All zero for a setting without a number.
struct ValueRow {
    int16_t kind = 0;
    Str15 PrefsRec::*text = nullptr;  // what was typed
    const char *unit = nullptr;       // follows the number in the menu
    double lowest = 0, highest = 0;
    const char *lowestText = nullptr, *highestText = nullptr;  // replace a number out of range
    int16_t outOfRange = 0;                                    // message
    int16_t label = 0, unitLabel = 0;                          // in the value dialog; 0: none
    int16_t before = 0, noBefore = 0;                          // pieces, and the reasons reported if missing
    int16_t after = 0, noAfter = 0;
};

// Which choices put something into a riders file: all but item 1, or item 2 alone.
enum Written : int16_t { kUnlessFirst, kIfSecond };

struct Setting {
    int16_t menuID;
    Handle *popup;
    int16_t dialogItem;          // the popup's place in the settings dialog
    BigInt16 PrefsRec::*choice;  // the menu's item
    int16_t standard;            // the item in new settings
    int16_t notInMenu;           // reason reported for a stored item that the menu does not have
    Written written;
    const char *writing;  // context of a failure to write it
    ValueRow value;
};

// In the order of the settings dialog.
extern const Setting kSettings[6];

// nil if there is none.
const Setting *SettingWithMenu(int16_t menuID);
const Setting *SettingOfKind(int16_t kind);

// Whether it is written into a riders file with the live settings.
Boolean IsWritten(const Setting &setting);

// The rest is for settings with numbers.

// The number that the user typed last, in the live settings.
StringPtr OwnValue(const Setting &setting);
// The same as the menu would show it, unit included. out is cut to limit.
void OwnValueWithUnit(const Setting &setting, int16_t limit, Str255 out);
// The characters of the value that the item stands for: the number in the item, or
// for the last item the one that was typed. With a period.
void ValueOfChoice(const Setting &setting, MenuHandle menu, int16_t item, Str255 out);
// What replaces a number below the range.
void LowestValue(const Setting &setting, Str15 out);
