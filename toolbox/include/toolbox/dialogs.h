// Dialog Manager: dialogs and alerts from 'DLOG', 'DITL' and 'ALRT' resources.
//
// Items are numbered from 1 in the order of their list. Where items overlap,
// the first one in the list is hit. An item hidden by HideDItem lies 16384
// pixels to the right. A picture is stretched to its item. Icons 0 to 2 have
// built-in drawings, used if there is no such 'ICON'.
//
// When the program is asked to end, a dialog is asked to cancel, as by Escape:
// see toolbox/host/quit.h.
//
// All calls here may allocate, and so move blocks; ModalDialog and the alerts
// call filters and user items, and pass on whatever those throw.
#pragma once

#include "toolbox/controls.h"
#include "toolbox/textedit.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef WindowPtr DialogPtr;

typedef struct DialogRecord {
    WindowRecord window;
    Handle items;          // the Dialog Manager's
    TEHandle textH;        // the text being edited; nil without edit items
    int16_t editField;     // current edit item minus 1; -1 without one
    int16_t editOpen;
    int16_t aDefItem;
} DialogRecord, *DialogPeek;

// True: the event is dealt with, and ModalDialog returns what was stored in
// *itemHit, or 0. False: the event is handled as it now stands in *event. May
// call any dialog routine, including nested ModalDialogs and alerts.
typedef Boolean (*ModalFilterProcPtr)(DialogPtr dialog, EventRecord *event, int16_t *itemHit);
// Called with the port set to the dialog whenever the item is to be drawn.
typedef void (*UserItemProcPtr)(DialogPtr dialog, int16_t item);

enum {
    userItem = 0, ctrlItem = 4, btnCtrl = 0, chkCtrl = 1, radCtrl = 2, resCtrl = 3,
    statText = 8, editText = 16, iconItem = 32, picItem = 64, itemDisable = 128
};
enum { ok = 1, cancel = 2 };

// Makes a dialog from 'DLOG' id and its 'DITL'; nil when either is missing or
// damaged or the heap has no room, and then nothing is left over. storage:
// sizeof(DialogRecord) bytes that the caller provides, or nil to allocate them.
// behind (WindowPtr)-1: in front of all. The first edit item is current, with all
// its text selected. A 'dctb' of the same number gives the colours. The current
// port does not change. Shown at once if the resource says so; otherwise by
// ShowWindow.
DialogPtr GetNewDialog(int16_t id, void *storage, WindowPtr behind);
// Close the window and free the items. DisposDialog also frees the record, and so
// does CloseDialog if GetNewDialog allocated it.
void CloseDialog(DialogPtr dialog);
void DisposDialog(DialogPtr dialog);
// Runs until an enabled item is hit or the filter returns true, and sets
// *itemHit. The front window must be a dialog (std::logic_error if not); it is
// the current port meanwhile. The filter sees every event, including null events
// (one per tick while nothing happens), but not a press outside a dialog that
// cannot be moved: that beeps. Nil filter: Return and Enter press the default
// item, 1 unless aDefItem says otherwise.
// What the filter leaves to ModalDialog: a control is tracked, and hit when the
// button is released inside; other items are hit by the press; keys go to the
// current edit item, and Tab moves to the next one; from system version 7 on
// Command-X, C, V, A and Z edit as DlgCommandKey does. All dialogs are redrawn where
// they need it; updates of other windows wait.
void ModalDialog(ModalFilterProcPtr filter, int16_t *itemHit);
// Draws all items, or those in the update region; does nothing for a window that
// is not a dialog.
void DrawDialog(DialogPtr dialog);
void UpdtDialog(DialogPtr dialog, RgnHandle update);

// How many items the dialog has; 0 for a window that is not one.
int16_t CountDITL(DialogPtr dialog);
// Nothing happens if there is no item of that number.
// *item: for controls the ControlHandle, for user items the procedure, for
// texts a handle to the characters; the type with itemDisable as it is.
void GetDItem(DialogPtr dialog, int16_t number, int16_t *type, Handle *item, Rect *box);
// Draws nothing, and does not move a control (MoveControl does).
void SetDItem(DialogPtr dialog, int16_t number, int16_t type, Handle item, const Rect *box);
// Move the item away and back. Its place is erased when it leaves, and is to be
// updated both times. Nothing happens if it is hidden, or shown, already.
void HideDItem(DialogPtr dialog, int16_t number);
void ShowDItem(DialogPtr dialog, int16_t number);
// The number minus 1 of the first item at the local point, -1 for none.
int16_t FindDItem(DialogPtr dialog, Point where);
// GetIText gives the first 255 characters of a text item's handle; SetIText
// replaces the text and draws the item. While the item is being edited, textH's
// hText is the same handle.
void GetIText(Handle item, Str255 text);
void SetIText(Handle item, ConstStr255Param text);
// Makes the edit item the current one and selects from start to end, both cut to
// the length of its text.
void SelIText(DialogPtr dialog, int16_t number, int16_t start, int16_t end);
// Sets the four texts that replace ^0 to ^3 in static text whenever it is drawn,
// in all dialogs. They are copied; nil leaves a text as it was.
void ParamText(ConstStr255Param p0, ConstStr255Param p1, ConstStr255Param p2, ConstStr255Param p3);
// Edit the dialog's current edit item, through TextEdit's private scrap. DlgPaste
// first takes in the desk scrap's text if that is newer.
void DlgCut(DialogPtr dialog);
void DlgCopy(DialogPtr dialog);
void DlgPaste(DialogPtr dialog);
void DlgDelete(DialogPtr dialog);
// Command-X, C and V, capital or small, on the current edit item through the
// desk scrap; Command-A selects all of it, Command-Z takes the last change back, and
// again the next time. False for any other key, and when the dialog has no current edit
// item.
Boolean DlgCommandKey(DialogPtr dialog, int16_t character);

// Shows 'ALRT' id, with the bounds that it has in memory now, and returns the item
// hit; -1 when the resource or its item list is missing or its stage shows no box.
// An alert shown several times in succession goes through its four stages; each
// has its number of beeps, a box or none, and a default item, which is outlined
// and which Return and Enter press.
int16_t Alert(int16_t id, ModalFilterProcPtr filter);
int16_t StopAlert(int16_t id, ModalFilterProcPtr filter);
int16_t NoteAlert(int16_t id, ModalFilterProcPtr filter);
int16_t CautionAlert(int16_t id, ModalFilterProcPtr filter);
// The stage of the latest alert, 0 to 3. After ResetAlrtStage the next alert,
// whichever it is, is at its first stage.
int16_t GetAlrtStage(void);
void ResetAlrtStage(void);

#ifdef __cplusplus
}
#endif
