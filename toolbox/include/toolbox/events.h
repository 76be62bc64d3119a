// Event Manager and the clock.
//
// Times are ticks of 1/60 second. On the headless machine they are virtual:
// Delay and waiting for events move them, nothing sleeps.
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

// The next event of the mask: activates first, then input in order, then
// updates front to back, and a null event once sleep ticks have passed. False
// for a null event; where, when and modifiers are filled in any case.
Boolean WaitNextEvent(int16_t mask, EventRecord *event, uint32_t sleep);
Boolean GetNextEvent(int16_t mask, EventRecord *event);
Boolean EventAvail(int16_t mask, EventRecord *event);
void FlushEvents(int16_t mask, int16_t stopMask);
// Where the mouse is, in the current port's local coordinates.
void GetMouse(Point *where);
Boolean Button(void);
Boolean StillDown(void);
uint32_t TickCount(void);
uint32_t GetCaretTime(void);
uint32_t GetDblTime(void);
// Lets the given ticks pass; *finalTicks, when not nil, is the time after.
void Delay(uint32_t ticks, uint32_t *finalTicks);

#ifdef __cplusplus
}
#endif
