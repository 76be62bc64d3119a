// Error reports and alerts: all that the plug-in says about failures.
//
// Messages are 'STR ' resources; callers pass numbers and a short context text
// such as " (fsopen)". All reports are modal. A fatal one ends the process
// once the user has seen it, so nothing after such a call runs. A message that
// is missing from the resources is always fatal.
#pragma once

#include "source/reasons.h"
#include "source/resourceNumbers.h"
#include "toolbox/dialogs.h"

// What kind of alert to show.
enum { kStopAlert = 0, kCautionAlert = 1, kNoteAlert = 2 };

// Set by DoWriteError; cleared by each call of main_entry and at the start of each make.
extern Boolean gHaveWriteError;

// What has to be put away before the process ends; nil while there is nothing. A fatal
// report calls it when the user has seen it.
extern void (*gBeforeEnd)();

void ErrorInit();

// Shows the message (and, unless 0, "ID = " number) and the context text in
// one of the dialogs kErrorDialog to kSpareDialog2, in front of everything, with a
// beep. True: the user pressed item 1; false: item 5.
Boolean TheErrorHandler(int16_t dialogID, int16_t stringID, int32_t number, ConstStr255Param context,
                        Boolean fatal);
// Its key filter: Return and Enter press item 1, Escape and Command-period
// item 5.
Boolean ErrorFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit);
// The same report as an alert. Returns true; does not return when fatal.
Boolean AlrtErrorHandler(int16_t kind, int16_t stringID, int32_t number, ConstStr255Param context,
                         Boolean fatal);
// Reports a failed write in words that fit the error, and sets
// gHaveWriteError. Returns true.
Boolean DoWriteError(OSErr error, ConstStr255Param context);
// Reports a failed read; returns TheErrorHandler's result.
Boolean DoReadError(OSErr error, ConstStr255Param context);
// Shows the caller's four texts in an alert; returns the item hit. An unknown
// kind shows nothing and returns 2. Nothing calls it so far: it belongs to the set.
int16_t DoAlert(int16_t kind, ConstStr255Param text0, ConstStr255Param text1, ConstStr255Param text2,
                ConstStr255Param text3);
