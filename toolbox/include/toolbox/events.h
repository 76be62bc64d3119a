// Event Manager and the clock.
//
// Times are ticks of 1/60 second. On the headless machine they are virtual:
// Delay and waiting for events advance them, and nothing sleeps.
//
// Input is taken from the machine in order, and only when one of these calls
// needs it. Mouse position, button and modifier keys are those at the newest
// input taken. All calls are allowed once the Toolbox has started.
#pragma once

#include "toolbox/types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct EventRecord {
    int16_t what;
    uintptr_t message;   // keys: character in bits 0-7, key code in 8-15;
                         // updates and activates: the WindowPtr
    uint32_t when;       // ticks
    Point where;         // global
    uint16_t modifiers;
} EventRecord;

enum {
    nullEvent = 0, mouseDown = 1, mouseUp = 2, keyDown = 3, keyUp = 4, autoKey = 5,
    updateEvt = 6, activateEvt = 8, osEvt = 15
};
enum { everyEvent = -1, charCodeMask = 0xFF, keyCodeMask = 0xFF00 };
enum {
    activeFlag = 0x0001, btnState = 0x0080, cmdKey = 0x0100, shiftKey = 0x0200,
    alphaLock = 0x0400, optionKey = 0x0800, controlKey = 0x1000
};

// A mask has bit 1 << what set for each kind wanted; events of other kinds stay
// queued. btnState in modifiers is set while the button is up.

// The next event of the mask: activates first, then mouse and keys in order,
// then the latest key repeat, then updates front to back, and a null event once
// sleep ticks (at least one) have passed. False for a null event; where, when
// and modifiers are always filled in. Releasing a key makes no event. An update
// event is repeated until the window's update region is empty. What has been
// drawn is shown before the wait, which ends early with a null event when the
// program is asked to end. An exception thrown by the machine passes through.
Boolean WaitNextEvent(int16_t mask, EventRecord *event, uint32_t sleep);
// The same with the shortest sleep.
Boolean GetNextEvent(int16_t mask, EventRecord *event);
// The same with the shortest sleep, and the event stays queued.
Boolean EventAvail(int16_t mask, EventRecord *event);
// Removes mouse and key events of the mask up to the first one of stopMask (0:
// all), including those that have arrived but were not yet taken. Activates and
// updates stay.
void FlushEvents(int16_t mask, int16_t stopMask);
// Where the mouse is, in the current port's local coordinates. Takes no input.
void GetMouse(Point *where);
// Whether the button is down. Takes one input, or lets a tick pass when there
// is none, so that a loop that waits for the button comes to an end; what it
// takes becomes an event as usual.
Boolean Button(void);
// Whether the button is still down since the last mouseDown event taken. False
// when a mouse event is queued; takes input as Button does while it is down.
Boolean StillDown(void);
// Ticks since the machine was started.
uint32_t TickCount(void);
// Ticks for which a caret stays shown or hidden, and within which two clicks make
// a double click.
uint32_t GetCaretTime(void);
uint32_t GetDblTime(void);
// Shows what has been drawn and lets the given ticks pass; *finalTicks is the
// time afterwards, unless finalTicks is nil.
void Delay(uint32_t ticks, uint32_t *finalTicks);

#ifdef __cplusplus
}
#endif
