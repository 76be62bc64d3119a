// The dialogs' colours, for displays that can show them.
//
// Every call checks afresh whether the display can: its depth may change while a
// dialog is open.
#pragma once

#include "toolbox/dialogs.h"

// The tables kColourWindow, kPlainWindow, kColourButton and kPlainButton; valid
// from GetKTColor to DisposeKTColor, otherwise nil.
extern Handle gCDlogColor;
extern Handle gDlogColor;
extern Handle gCCntlColor;
extern Handle gCntlColor;

// Loads the four tables; a missing one is fatal. main_entry calls this before a
// command, and DisposeKTColor after it, where there is colour QuickDraw.
void GetKTColor();
void DisposeKTColor();
// Attaches the window's table, and the buttons' to every enabled push button.
// To be called before the dialog is shown.
void ColorTheDialog(Boolean colour, DialogPtr dialog);
// Blue foreground for a popup's arrow; the caller restores black.
void ColorThePopup(Boolean colour);
// Frames a dialog's panel: etched in colour, else plain. dialogID is not used.
void ColorDialogRect(Boolean colour, Rect r, int16_t dialogID);
