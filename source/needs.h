// What the plug-in cannot do without: each of these finds it there or, after a
// report of "something is missing", does not return.
#pragma once

#include "toolbox/menus.h"

// Makes the report. It is shown with windows, texts and colours that may be
// missing themselves, so it stands above all of them, and they reach it through
// here: errors puts TheErrorHandler in when the plug-in is loaded.
using ReportProc = Boolean (*)(int16_t dialogID, int16_t stringID, int32_t number, ConstStr255Param context,
                               Boolean fatal);
extern ReportProc gReport;

// reason: see reasons.h; context: the step in brackets, as " (vers resource)".
void Need(bool isThere, int16_t reason, const char *context);
void NeedString(Str255 text, int16_t listID, int16_t index);
// A new copy of the menu, which the caller deletes and releases.
MenuHandle NeedMenu(int16_t menuID);
