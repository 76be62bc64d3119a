// What the system knows of itself, and small utilities.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

// 'sysv': the version in binary-coded digits, 0x0755 for 7.5.5. 'qd  ': below
// 0x100 without colour QuickDraw. Unknown: gestaltUndefSelectorErr, response
// untouched.
OSErr Gestalt(OSType selector, int32_t *response);
// The number format (0) as a handle whose first byte is the decimal
// separator; nil where the locale has none. The Toolbox's: never dispose.
Handle IUGetIntl(int16_t id);
// Sounds the beep; count is the length in ticks and is not used.
void SysBeep(int16_t count);
// Plays an 'snd ' resource; async is not needed and refused with paramErr.
OSErr SndPlay(void *channel, Handle sound, Boolean async);
// Ends the process after open files are closed. Does not return.
void ExitToShell(void) __attribute__((noreturn));
// Decimal, with a minus sign where needed.
void NumToString(int32_t number, Str255 text);
void StringToNum(ConstStr255Param text, int32_t *number);
// The address that a trap word stands for; equal addresses mean the same
// routine. Traps are told apart, none can be called.
int32_t NGetTrapAddress(uint16_t trap, int16_t type);
enum { OSTrap = 0, ToolTrap = 1 };

// A C string as a Pascal string, cut at 255. The answer is good until the
// eighth later call.
StringPtr ql_quorum_passtr(const char *text);
// Turns a Pascal string into a C string in place and answers it.
char *P2CStr(StringPtr text);
StringPtr C2PStr(char *text);

#ifdef __cplusplus
}
#endif
