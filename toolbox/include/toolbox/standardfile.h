// Standard File: the dialogs that ask for a file to open or a name to save to.
//
// The dialog is made from the caller's 'DLOG', hidden at first. Items of
// the save dialog: 1 Save, 2 Cancel, 3 prompt (static text), 4 folder popup
// (user item), 7 name (edit text), 8 list (user item), 9 its scroll bar (user
// item). Of the open dialog: 1 Open, 3 Cancel, 4 folder popup (user item), 7
// list (user item), 8 its scroll bar (user item). In both, item 5 may be a user
// item that says where to draw the outline of the default button: the button's
// rectangle and 4 pixels around it. User and text items must be disabled. Other
// items are for the caller's use.
//
// The list shows folders, then files, by name; hidden ones are left out. A
// double click opens; so does Command-Down, and Command-Up goes to the folder
// above. Return and Enter press item 1, Escape and Command-period Cancel.
// Typing in the open dialog selects a name that begins with what was typed.
//
// A dialog opens in the folder where the last file was chosen, else in
// Configuration::startFolder. Messages about names come from 'STR#' 16402 and are
// shown in 'ALRT' 16402; 'ALRT' 16403 asks before a file is replaced, and its item
// 1 replaces. Both set ParamText. Without the second nothing is replaced.
//
// Both calls are allowed whenever a modal dialog is, and both allocate.
#pragma once

#include "toolbox/dialogs.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct SFReply {
    Boolean good;        // false: cancelled; the other fields mean nothing
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
// that no file can have are refused with a message. The caller's filter, if any,
// sees each event first. hook and filter may be nil. Without the 'DLOG' good is
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
