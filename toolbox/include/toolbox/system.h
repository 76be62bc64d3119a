// What the system knows about itself, and small utilities.
//
// May be called at any time between start and stop of the Toolbox; the string
// utilities also when it is not started. None of them allocates from the heap.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

// 'sysv': the version in binary-coded decimal, 0x0755 for 7.5.5. 'qd  ': below
// 0x100 without colour QuickDraw. Unknown: gestaltUndefSelectorErr, response
// untouched.
OSErr Gestalt(OSType selector, int32_t *response);
// The number format (0) as a handle whose first byte is the decimal
// separator; nil where the locale has none, and for other numbers. Owned by the
// Toolbox: do not dispose of it.
Handle IUGetIntl(int16_t id);
// Sounds the beep; count is the length in ticks and is not used.
void SysBeep(int16_t count);
// Plays the sampled sound (8 bits, one channel, not compressed) of a format 1
// 'snd ' resource and returns when it is over; channel is not used. nilHandleErr
// for nil or a purged resource; paramErr for other forms, for bytes that are
// cut short, and for async, which the Toolbox does not support.
OSErr SndPlay(void *channel, Handle sound, Boolean async);
// Ends the process: does not return, and nothing after it in the caller runs.
// Open files are closed and all memory is freed when the session stops.
void ExitToShell(void) __attribute__((noreturn));
// Decimal, with a minus sign where needed.
void NumToString(int32_t number, Str255 text);
// Reads a sign and digits, up to the first other character; 0 without a digit.
// Wraps around beyond 32 bits.
void StringToNum(ConstStr255Param text, int32_t *number);
// The address that a trap word stands for; equal addresses mean the same
// routine. Each call that the Toolbox offers has a different address; all others
// have the address of 0xA89F. None of the addresses can be called.
int32_t NGetTrapAddress(uint16_t trap, int16_t type);
enum { OSTrap = 0, ToolTrap = 1 };

// A C string as a Pascal string, cut at 255. What is returned is valid until the
// eighth call after this one.
StringPtr ql_quorum_passtr(const char *text);
// Turns a Pascal string into a C string in place and returns it.
char *P2CStr(StringPtr text);
// Turns a C string, cut at 255, into a Pascal string in place: the length byte
// takes the room of the terminator.
StringPtr C2PStr(char *text);

#ifdef __cplusplus
}
#endif
