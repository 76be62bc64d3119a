// The riders settings dialog.
//
// Choices go into the live settings at once; cancelling puts back what
// SaveCustomSettings kept when the dialog opened.
#pragma once

#include "riders/plugin.h"
#include "source/openDialogs.h"
#include "source/resourceNumbers.h"
#include "source/settings.h"

// The annotation font's name as it was when the dialog opened.
extern Str255 gSavedFontNameStr;

void CustomInit();
// Runs the dialog from opening to closing. Settings, saved settings and
// environment must be there; the block's hostProcs must outlive the call.
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
void SetupCustomDialog();
void SaveCustomSettings();
// Whether anything has been chosen to be made; says so when not.
Boolean DoCustomMake();
void DoCustomRevert();
// Closes the dialog and decides which imported spot functions live on.
void HandleCustomGoAway();
