// The dialogs' colours, for screens that can show them.
//
// Whether the screen can is asked afresh at every call: the depth may change
// while a dialog is open.
#pragma once

#include "toolbox/dialogs.h"

// The tables kColourWindow, kPlainWindow, kColourButton and kPlainButton; good
// between GetKTColor and DisposeKTColor, nil outside.
extern Handle gCDlogColor;
extern Handle gDlogColor;
extern Handle gCCntlColor;
extern Handle gCntlColor;

// Loads the four tables; a missing one is fatal.
void GetKTColor();
void DisposeKTColor();
// Attaches the window's table, and the buttons' to every enabled push button.
// The dialog is not shown yet.
void ColorTheDialog(Boolean colour, DialogPtr dialog);
// Blue foreground for a popup's arrow; the caller restores black.
void ColorThePopup(Boolean colour);
// Frames a dialog's panel: etched in colour, else plain. dialogID is not used.
void ColorDialogRect(Boolean colour, Rect r, int16_t dialogID);
