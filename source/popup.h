// The pop-up menu control: a framed box that shows the current choice and pops
// a menu up in its place.
//
// The control is not a dialog item. The owner draws it from a user item's
// procedure, tests clicks against bounds, and reads curItem. Its state lives in
// a block that the owner allocates with NewPopup and frees after DisposePopup.
// Drawing calls draw in the current port, which is the owner's dialog.
#pragma once

#include "source/resourceNumbers.h"
#include "toolbox/menus.h"
#include "toolbox/quickdraw.h"

struct PopupInfo {
    Rect bounds;        // the whole control, as given to SetupPopup
    Rect popupRect;     // the framed box: bounds less the title
    Rect titleRect;     // inverted while the menu is down; all zero without a title
    MenuHandle menu;
    int16_t menuID;
    int16_t prevItem;   // current before the latest click or change
    int16_t curItem;    // from 1; 0 none
    int16_t titleWidth; // pixels, 8 more than the text
    Point menuPos;      // where the menu's item appears, local
    Str31 title;
};

// The record in the block; valid until the next call that may allocate.
inline PopupInfo *PopupRecord(Handle popup)
{
    return reinterpret_cast<PopupInfo *>(*popup);
}

// A zero-filled record. Does not return without memory for it.
Handle NewPopup();
// Fills the record and puts the menu into the list of pop-up menus. The title
// may be empty. menu nil: loaded by menuID; missing: fatal. Item 1 of the menu
// is lengthened with spaces until the menu is as wide as the box, so trailing
// spaces are stripped wherever item texts are read.
void SetupPopup(Handle popup, Rect itemRect, ConstStr255Param title, MenuHandle menu, int16_t menuID, int16_t item);
void DrawPopup(Handle popup);
// Erases what DrawPopup draws for a control of these bounds, shadow included.
void ErasePopup(Rect bounds);
// Pops the menu up and tracks it; the mouse button must be down. True when an
// item was chosen, even the current one. With redraw the control is drawn
// again after a choice.
Boolean HandlePopupClick(Handle popup, Boolean redraw);
// Takes the menu out of the list and releases it, even one that was passed to
// SetupPopup. The owner frees the block.
void DisposePopup(Handle popup, Boolean erase);
// These two change choice and check mark, and leave the drawing to the caller.
void RevertPopup(Handle popup);
void SetPopupMenuItem(Handle popup, int16_t item);
// Whether the item reads exactly "Other..." or "Import...".
Boolean CheckMenuExceptions(MenuHandle menu, int16_t item);
// The text to show in place of such an item; out is left as it was for a menu
// whose values cannot be typed.
void DoMenuExceptionString(Handle popup, Str255 out);
