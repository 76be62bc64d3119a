// The dialogs that are open, and what every one of them takes to open, draw and
// run.
#pragma once

#include "toolbox/dialogs.h"

// The settings dialog, nil while it is not open. Other dialogs are placed over
// it.
extern DialogPtr gCustomDialog;
// The value entry or annotation dialog, the About box or the credits panel: one
// at a time; nil when none is open.
extern DialogPtr gTheDialog;
// Set by a make that went well when the settings want the settings dialog to
// end.
extern Boolean gDone;

// The dialog from the resources, hidden still, as the current port. Does not
// return without it; reason: see reasons.h.
DialogPtr OpenDialog(int16_t dialogID, int16_t reason);
// Colours, if the settings want them; without settings none.
void ColourIfWanted(DialogPtr dialog);
// The same, with the default button's outline and the panel's drawing procedure.
void DressDialog(DialogPtr dialog, int16_t outlineItem, int16_t panelItem, UserItemProcPtr drawPanel);
// Shows the dialog in front, with the arrow for a cursor.
void BringUp(DialogPtr dialog);
// The panel's frame. dialogID goes through to ColorDialogRect.
void DrawPanel(DialogPtr dialog, int16_t panelItem, int16_t dialogID);
// Runs gTheDialog until OK is pressed and accept is content, or Cancel, and
// hides it. True for OK.
Boolean RunTheDialog(ModalFilterProcPtr filter, Boolean (*accept)());
void DisposeTheDialog();
