// What the plug-in cannot do without: each of these finds it or, after a report of
// "something is missing", does not return.
#pragma once

#include "toolbox/menus.h"

// Makes the report. Reports need windows, texts and colours, whose modules need this
// one, so they are called through a pointer: errors sets it to TheErrorHandler when
// the plug-in is loaded.
using ReportProc = Boolean (*)(int16_t dialogID, int16_t stringID, int32_t number, ConstStr255Param context,
                               Boolean fatal);
extern ReportProc gReport;

// reason: see reasons.h; context: the step in brackets, such as
// " (vers resource)".
void Need(bool isThere, int16_t reason, const char *context);
void NeedString(Str255 text, int16_t listID, int16_t index);
// A new copy of the menu, which the caller deletes and releases.
MenuHandle NeedMenu(int16_t menuID);
