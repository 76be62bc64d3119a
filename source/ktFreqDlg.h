// The value entry dialog: a screen frequency, a screen angle or a flatness of
// the user's own.
#pragma once

#include "toolbox/dialogs.h"

// What is being entered. Other numbers set up and store nothing.
enum { kFreqKind = 5, kAngleKind = 6, kFlatKind = 7 };

enum { kFreqDialogID = 16301 };

// The value entry or annotation dialog that is open; nil when none is.
extern DialogPtr gTheDialog;
// The kind's text as it was when the dialog last opened.
extern Str15 gSavedFreqStr;

void FreqInit();
// Runs the dialog over the settings dialog, which must be open. True: a valid
// value has been stored in the settings. False: cancelled, settings and popup
// are back as they were.
Boolean HandleFreqDialog(int16_t kind);
// Whether the text is a value of the kind. With report set it tidies the text,
// shows what is wrong and corrects the field of the dialog, which must be open;
// without, it touches nothing.
Boolean DoFreqStrCheck(Str255 text, int16_t kind, Boolean report);
Boolean FreqFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit);
void FreqProc(DialogPtr dialog, int16_t item);
void SetupFreqDialog(int16_t kind);
void SaveFreqSettings(int16_t kind);
// Checks and stores what is in the field.
Boolean DoFreqDone(int16_t kind);
void DoFreqCancel(int16_t kind);
