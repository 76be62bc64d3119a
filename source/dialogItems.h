// What the dialogs share in handling their items and the keys typed into their
// fields.
#pragma once

#include "toolbox/dialogs.h"

// Makes proc draw the user item; type and rectangle stay.
void InstallUserProc(DialogPtr dialog, int16_t item, UserItemProcPtr proc);
Rect ItemBox(DialogPtr dialog, int16_t item);
// Static or editable text.
void GetItemText(DialogPtr dialog, int16_t item, Str255 text);
void SetItemText(DialogPtr dialog, int16_t item, ConstStr255Param text);
// All of an editable text.
void SelectItemText(DialogPtr dialog, int16_t item);

// The length of the field, which must be the one being edited, without what is
// selected: what remains of it when something is typed.
int16_t LengthLessSelection(DialogPtr dialog, int16_t item);

Boolean IsDigit(int16_t key);
// Backspace and the arrows.
Boolean IsEditingKey(int16_t key);
// Beeps; true, so that the key goes no further.
Boolean RefuseKey();

// What happens to a key with Command held.
enum KeyFate { kKeyPassed, kKeyTaken, kPasteRefused };
// used: LengthLessSelection. A paste is refused unless scrap and field stay
// below limit. From system 7.0 on the Dialog Manager cuts, copies and pastes;
// before that CommandKey does, and refuses other keys with a beep. What is
// pasted is only measured: the check at OK looks at its characters.
KeyFate CommandKey(DialogPtr dialog, int16_t key, int16_t used, int16_t limit);
