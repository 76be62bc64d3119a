// The value entry dialog: a screen frequency, a screen angle or a flatness that
// the menu does not have.
#pragma once

#include "source/openDialogs.h"
#include "source/resourceNumbers.h"
#include "source/settings.h"

// The kind's text as it was when the dialog last opened.
extern Str15 gSavedFreqStr;

void FreqInit();
// Runs the dialog over the settings dialog, which must be open. True: a valid
// value has been stored in the settings. False: cancelled, settings and popup
// are as they were before, except that "Other..." stays checked in the menu.
Boolean HandleFreqDialog(int16_t kind);
// Whether the text is a value of the kind. With report set it tidies the text,
// shows what is wrong and corrects the field of the dialog, which must be open;
// without, it touches nothing.
Boolean DoFreqStrCheck(Str255 text, int16_t kind, Boolean report);
Boolean FreqFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit);
void FreqProc(DialogPtr dialog, int16_t item);
void SetupFreqDialog(int16_t kind);
void SaveFreqSettings(int16_t kind);
// Checks and stores what is in the field. False: refused and corrected there.
Boolean DoFreqDone(int16_t kind);
void DoFreqCancel(int16_t kind);
