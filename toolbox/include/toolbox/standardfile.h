// Standard File: the dialogs that ask for a file to open or a name to save to.
//
// The dialog is made from a 'DLOG' of the caller's, hidden at first. Items of
// the save dialog: 1 Save, 2 Cancel, 3 prompt (static text), 4 folder popup
// (user item), 7 name (edit text), 8 list (user item), 9 its scroll bar (user
// item). Of the open dialog: 1 Open, 3 Cancel, 4 folder popup (user item), 7
// list (user item), 8 its scroll bar (user item). In both item 5, where it is
// a user item with a place, is where the outline of the default button is
// drawn: the button's rectangle and 4 pixels around it. User and text items
// are to be disabled. Other items are the caller's own.
//
// The list shows folders, then files, by name; hidden ones are left out. A
// double click opens; so does Command-Down, and Command-Up goes to the folder
// above. Return and Enter press item 1, Escape and Command-period Cancel.
// Typing in the open dialog selects what begins so.
//
// A dialog opens in the folder where the last file was chosen, else in
// Configuration::startFolder. What is said about names comes from 'STR#'
// 16402 in 'ALRT' 16402, the question before replacing from 'ALRT' 16403: item
// 1 replaces. These set ParamText. Without the second nothing is replaced.
//
// May be called whenever a modal dialog may. Both allocate.
#pragma once

#include "toolbox/dialogs.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct SFReply {
    Boolean good;        // false: cancelled, the other fields mean nothing
    Boolean copy;        // always false
    OSType fType;        // set by SFPGetFile
    int16_t vRefNum;     // a working directory number
    int16_t version;     // always 0
    Str63 fName;
} SFReply;

// Called with -1 before the dialog shows and then with each item hit; returns
// the item to act on, 0 for none.
typedef int16_t (*DlgHookProcPtr)(int16_t item, DialogPtr dialog);
// Called with a file's name as a Str255; true leaves it out of the list.
typedef Boolean (*FileFilterProcPtr)(void *name);

// where is the dialog's top left, global. Asks before a file that exists is
// replaced; good then means consent, and the caller does the replacing. Names
// that no file can have are refused in words. The caller's filter, if any,
// sees each event first. Nil hook, filter: none. Without the 'DLOG' good is
// false.
void SFPPutFile(Point where, ConstStr255Param prompt, ConstStr255Param originalName, DlgHookProcPtr hook,
                SFReply *reply, int16_t dialogID, ModalFilterProcPtr filter);
// Lists files of the given Finder types (a plain text file is TEXT); count -1:
// all files. The prompt is not used.
void SFPGetFile(Point where, ConstStr255Param prompt, FileFilterProcPtr fileFilter, int16_t typeCount,
                const OSType *types, DlgHookProcPtr hook, SFReply *reply, int16_t dialogID,
                ModalFilterProcPtr filter);

#ifdef __cplusplus
}
#endif
