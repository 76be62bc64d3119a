// Dialog Manager: dialogs and alerts from 'DLOG', 'DITL' and 'ALRT' resources.
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

// May call any dialog routine, nested ModalDialogs and alerts too.
typedef Boolean (*ModalFilterProcPtr)(DialogPtr dialog, EventRecord *event, int16_t *itemHit);
// Called with the port set to the dialog whenever the item is to be drawn.
typedef void (*UserItemProcPtr)(DialogPtr dialog, int16_t item);

enum {
    userItem = 0, ctrlItem = 4, btnCtrl = 0, chkCtrl = 1, radCtrl = 2, resCtrl = 3,
    statText = 8, editText = 16, iconItem = 32, picItem = 64, itemDisable = 128
};
enum { ok = 1, cancel = 2 };

// Made from 'DLOG' id and its 'DITL'; nil when either is missing. storage nil:
// allocated. behind (WindowPtr)-1: in front of all.
DialogPtr GetNewDialog(int16_t id, void *storage, WindowPtr behind);
// Closes the window and frees the items; the record too with DisposDialog, and
// with CloseDialog when GetNewDialog allocated it.
void CloseDialog(DialogPtr dialog);
void DisposDialog(DialogPtr dialog);
// Runs until an enabled item is hit or the filter answers true, and sets
// *itemHit. The front window must be the dialog. Nil filter: Return and Enter
// answer item 1.
void ModalDialog(ModalFilterProcPtr filter, int16_t *itemHit);
void DrawDialog(DialogPtr dialog);
void UpdtDialog(DialogPtr dialog, RgnHandle update);

int16_t CountDITL(DialogPtr dialog);
// *item: for controls the ControlHandle, for user items the procedure, for
// texts a handle to the characters; the type with itemDisable as it is.
void GetDItem(DialogPtr dialog, int16_t number, int16_t *type, Handle *item, Rect *box);
void SetDItem(DialogPtr dialog, int16_t number, int16_t type, Handle item, const Rect *box);
void HideDItem(DialogPtr dialog, int16_t number);
void ShowDItem(DialogPtr dialog, int16_t number);
int16_t FindDItem(DialogPtr dialog, Point where);
void GetIText(Handle item, Str255 text);
void SetIText(Handle item, ConstStr255Param text);
void SelIText(DialogPtr dialog, int16_t number, int16_t start, int16_t end);
// The four texts put in place of ^0 to ^3 in static text. Copied.
void ParamText(ConstStr255Param p0, ConstStr255Param p1, ConstStr255Param p2, ConstStr255Param p3);
void DlgCut(DialogPtr dialog);
void DlgCopy(DialogPtr dialog);
void DlgPaste(DialogPtr dialog);
void DlgDelete(DialogPtr dialog);

// The item hit, or -1 when the 'ALRT' is missing or its stage shows no box.
int16_t Alert(int16_t id, ModalFilterProcPtr filter);
int16_t StopAlert(int16_t id, ModalFilterProcPtr filter);
int16_t NoteAlert(int16_t id, ModalFilterProcPtr filter);
int16_t CautionAlert(int16_t id, ModalFilterProcPtr filter);
int16_t GetAlrtStage(void);
void ResetAlrtStage(void);

#ifdef __cplusplus
}
#endif
