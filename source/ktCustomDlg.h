// The riders settings dialog.
//
// Choices go into the live settings at once; cancelling restores what
// SaveCustomSettings kept when the dialog opened.
#pragma once

#include "riders/plugin.h"
#include "source/openDialogs.h"
#include "source/resourceNumbers.h"
#include "source/settings.h"

// The annotation font's name as it was when the dialog opened.
extern Str255 gSavedFontNameStr;

void CustomInit();
// Runs the dialog from opening to closing. Needs the settings, the record for the
// saved settings and the environment; the block's hostProcs must outlive the call.
void HandleCustomDialog(MessageBlock *block);
// Acts on an item that was hit; true when the dialog is to close.
Boolean HandleCustomHit(MessageBlock *block, int16_t item);
Boolean CustomFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit);
// Keys, clicks on popups; everything else goes to the host's filter.
Boolean HandleCustomEvents(DialogPtr dialog, EventRecord *event, int16_t *itemHit);
// True when the point, local to the dialog, is on a popup.
Boolean DoCustomPopups(Point where);
// Draws the panel and the popups.
void CustomProc(DialogPtr dialog, int16_t item);
// Makes the six popups, and reads the font's name.
void SetupCustomDialog();
// Keeps what cancelling is to restore.
void SaveCustomSettings();
// Whether anything has been chosen; if not, the user is shown a message.
Boolean DoCustomMake();
// Restores what SaveCustomSettings kept. Cancelling with the keys calls it twice;
// the second call changes nothing.
void DoCustomRevert();
// Closes the dialog, frees its popups, and settles which imported spot function stays.
void HandleCustomGoAway();
