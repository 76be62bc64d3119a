// What every dialog shares: version texts, placement, keys, menus.
//
// Nothing calls UtilsInit, CrushTheHeap, IsWindowOpen, GetWindowType and
// SetupFontMenuItems so far: they belong to the set that dialogs may count on.
#pragma once

#include "toolbox/dialogs.h"
#include "toolbox/menus.h"

// How CenterWindow places a window vertically.
enum { kCenterMiddle = 0, kCenterThird = 1 };

void UtilsInit();

// The prefix from the resources and the version of 'vers' 1, as in "... 1.2b3".
// Cut to 31 characters. Does not return when a resource is missing.
void GetAppVersionStr(Str31 version);
// The long text of 'vers' 1. Does not return when it is missing.
void GetAppVersionLongStr(Str255 version);
// The first four bytes of 'vers' 1. Does not return when it is missing.
void GetAppVers(unsigned char version[4]);

// User-item procedure: draws the default button's outline around item 1, not around
// the item it is installed on.
void OutlineDefault(DialogPtr dialog, int16_t item);
// Shows a button pressed for 8 ticks, as if it had been clicked. Anything but
// a push button is left alone.
void FlashButton(DialogPtr dialog, int16_t item);
// Whether the item is an enabled push button.
Boolean IsPushButton(DialogPtr dialog, int16_t item);
// Whether the event is a press of Return or Enter.
Boolean IsConfirmKey(const EventRecord &event);
// Whether the event is a press of Escape or Command-period.
Boolean IsCancelKey(const EventRecord &event);
// Key filter of a two-button dialog: Return and Enter press item 1, Escape and
// Command-period item 2.
Boolean GenericFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit);
// The same with any item as the second button. Where that is not a push button
// its keys are swallowed: true, *itemHit 0.
Boolean TwoButtonKeys(DialogPtr dialog, EventRecord *event, int16_t *itemHit, int16_t cancelItem);

// Purges and compacts the heap.
void CrushTheHeap();
// Appends a random number to the name, 63 characters at most. There may be a file
// of that name.
void GetUniqueTempName(Str63 name);
// Index of the first such byte at or after start; -1 when there is none up to
// 32767.
int16_t FindCharOffset(char character, Handle text, int16_t start);

// The display that shows most of the window; for one that is on none, and for nil,
// the main display. Without colour QuickDraw the environment's screenRect.
void GetCurDevRect(WindowPtr window, Rect *display);
// Moves the window on the display of the reference window (may be nil): centred
// across, and a third or half of the free height down. It is not brought to the front.
void CenterWindow(WindowPtr reference, WindowPtr window, int16_t mode);
// Centres inner over outer; with outer nil it stays.
void CenterWindowInWindow(WindowPtr outer, WindowPtr inner);
// Makes the alert open on the window's display (nil: the main display), centred
// across and a third of the free height down, by changing its resource in memory.
// Does not return if there is no such alert.
void CenterAlert(WindowPtr window, int16_t alertID);
// Where a file dialog of that size goes on the window's display.
void CenterSFGet(WindowPtr window, Point *where, int16_t width, int16_t height);
void CenterSFPut(WindowPtr window, Point *where, int16_t width, int16_t height);

// Global top left of the content; a nil window leaves *position alone.
void GetWindowPosition(WindowPtr window, Point *position);
// Whether it is in the window list.
Boolean IsWindowOpen(WindowPtr window);
// -1 for an accessory's, 8 for a user window, for a dialog the low 16 bits of its
// reference value, otherwise 0.
int16_t GetWindowType(WindowPtr window);
// The main display's bits per pixel, 1 without colour QuickDraw; also put into
// the environment record.
int16_t GetCurPixDepth();
// From the current port's local coordinates, with 18 pixels more at the top
// for a title bar.
void RectToGlobal(Rect *r);

// Fills an empty menu with the fonts and marks the named one; *item as in
// FindMenuItemNumber.
void SetupFontMenuItems(MenuHandle menu, ConstStr255Param fontName, int16_t *item);
// Removes the mark of item *item (0: none) and finds the item with the name,
// trailing blanks of the item not compared. False and *item 0 when there is
// none. Marks nothing.
Boolean FindMenuItemNumber(MenuHandle menu, ConstStr255Param name, int16_t *item);
