// The dialogs that are open, and what each of them needs to open, draw and run.
#pragma once

#include "toolbox/dialogs.h"

// The settings dialog, nil while it is not open. Other dialogs are placed over
// it.
extern DialogPtr gCustomDialog;
// The value entry or annotation dialog, the About box or the credits panel: one
// at a time; nil when none is open.
extern DialogPtr gTheDialog;
// Set by a make without a write error if closeAfterMake is set. Nothing reads it: the
// settings dialog ends after every make.
extern Boolean gDone;

// Makes the dialog from the resources, still hidden, and the current port. Does not
// return if it is missing; reason: see reasons.h.
DialogPtr OpenDialog(int16_t dialogID, int16_t reason);
// Colours the dialog if there are settings and they ask for it.
void ColourIfWanted(DialogPtr dialog);
// The same, with the default button's outline and the panel's drawing procedure.
void DressDialog(DialogPtr dialog, int16_t outlineItem, int16_t panelItem, UserItemProcPtr drawPanel);
// Shows the dialog in front, with the arrow for a cursor.
void BringUp(DialogPtr dialog);
// Draws the panel's frame. dialogID is passed on to ColorDialogRect.
void DrawPanel(DialogPtr dialog, int16_t panelItem, int16_t dialogID);
// Runs gTheDialog until Cancel is pressed, or OK and accept returns true, and hides
// it. True for OK.
Boolean RunTheDialog(ModalFilterProcPtr filter, Boolean (*accept)());
void DisposeTheDialog();
