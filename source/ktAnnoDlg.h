// The annotation dialog: text, font and size of the line that a riders file
// adds to each page.
#pragma once

#include "source/openDialogs.h"
#include "source/resourceNumbers.h"

// What cancelling the dialog restores, with the font's name.
struct AnnoPrefs {
    int16_t fontItem;
    Str15 sizeStr;
    Str255 text;
};

static_assert(sizeof(AnnoPrefs) == 274);

// These three are allocated when the dialog opens and freed when it closes; nil
// otherwise.
extern AnnoPrefs *gSavedAnnoPrefs;
extern Handle gAnnoFontPopInfo;
extern Handle gAnnoSizePopInfo;
// The annotation font's name as it goes into the riders file; at most 63 characters
// are used.
extern Str255 gFontNameStr;
// The same as it was when the dialog opened.
extern Str255 gAnnoSavedFontNameStr;

void AnnoInit();
// Runs the dialog over the settings dialog, which must be open. True: stored.
// False: cancelled, everything is as it was before.
Boolean HandleAnnoDialog();
// Whether the text is a size, a whole number from 4 to 30. With report set it
// shows what is wrong and corrects the dialog's field; without, it touches
// nothing.
Boolean DoSizeStrCheck(Str255 text, Boolean report);
Boolean AnnoFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit);
void AnnoProc(DialogPtr dialog, int16_t item);
void SetupAnnoDialog();
// Checks and stores what is in the fields. False: refused and corrected there.
Boolean DoAnnoDone();
