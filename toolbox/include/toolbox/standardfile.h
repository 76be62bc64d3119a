// Standard File: the dialogs that ask for a file to open or a name to save to.
//
// The dialog is made from a 'DLOG' of the caller's. Items of the save dialog:
// 1 Save, 2 Cancel, 3 prompt (static text), 4 folder popup (user item), 7 name
// (edit text), 8 list (user item), 9 its scroll bar (user item). Of the open
// dialog: 1 Open, 3 Cancel, 4 folder popup (user item), 7 list (user item),
// 8 its scroll bar (user item). Other items are the caller's own.
#pragma once

#include "toolbox/dialogs.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct SFReply {
    Boolean good;        // false: cancelled, the other fields mean nothing
    Boolean copy;
    OSType fType;        // set by SFPGetFile
    int16_t vRefNum;     // a working directory number
    int16_t version;
    Str63 fName;
} SFReply;

typedef int16_t (*DlgHookProcPtr)(int16_t item, DialogPtr dialog);
typedef Boolean (*FileFilterProcPtr)(void *parameterBlock);

// Asks before a file that exists is replaced; good then means consent, and the
// caller does the replacing.
void SFPPutFile(Point where, ConstStr255Param prompt, ConstStr255Param originalName, DlgHookProcPtr hook,
                SFReply *reply, int16_t dialogID, ModalFilterProcPtr filter);
// Lists files of the given types; count -1: all files.
void SFPGetFile(Point where, ConstStr255Param prompt, FileFilterProcPtr fileFilter, int16_t typeCount,
                const OSType *types, DlgHookProcPtr hook, SFReply *reply, int16_t dialogID,
                ModalFilterProcPtr filter);

#ifdef __cplusplus
}
#endif
