// Window Manager: a list of windows, the front one first.
//
// A window draws straight onto the displays, in the part of its content that no
// window in front covers; nothing is kept of what is covered. What is uncovered
// is erased to the content's colour at once, and update events ask for it until
// the owner has called BeginUpdate and EndUpdate. Rectangles given at creation and
// to MoveWindow are those of the content, global; the frame lies outside. The
// frontmost visible window is the active one; activate events follow every change
// of it. Calls that take a window do nothing for one that does not exist; only
// DragWindow and the RefCon calls need one that does. May be called between start
// and stop of the Toolbox; every call may allocate.
#pragma once

#include "toolbox/quickdraw.h"
#include "toolbox/events.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef GrafPtr WindowPtr;   // a window begins with its port

struct ControlRecord;

typedef struct WindowRecord {
    GrafPort port;
    int16_t windowKind;      // dialogKind, userKind, negative for a desk accessory
    Boolean visible;
    Boolean hilited;
    Boolean goAwayFlag;
    RgnHandle strucRgn;      // with its frame, global
    RgnHandle contRgn;       // content, global
    RgnHandle updateRgn;     // what is to be redrawn, global
    struct ControlRecord **controlList;
    struct WindowRecord *nextWindow;
    Str255 title;
    int16_t procID;
    intptr_t refCon;
} WindowRecord, *WindowPeek;

enum { dialogKind = 2, userKind = 8 };
enum { documentProc = 0, dBoxProc = 1, plainDBox = 2, altDBoxProc = 3, noGrowDocProc = 4, movableDBoxProc = 5 };
enum { inDesk = 0, inMenuBar = 1, inSysWindow = 2, inContent = 3, inDrag = 4, inGrow = 5, inGoAway = 6 };

// storage: sizeof(WindowRecord) bytes that the caller keeps until CloseWindow, or
// nil to allocate them. behind: the window directly in front of the new one;
// (WindowPtr)-1: in front of all; nil, or a window that does not exist: behind
// all. bounds is the content, global; the title is copied. The current port does
// not change. Nil when the heap has no room, and then nothing is left over.
WindowPtr NewWindow(void *storage, const Rect *bounds, ConstStr255Param title, Boolean visible,
                    int16_t procID, WindowPtr behind, Boolean goAway, intptr_t refCon);
// Take the window off the display and free what belongs to it, its controls
// included. CloseWindow leaves the record to the caller; DisposeWindow frees it
// too. Events not yet delivered are dropped. If it is the current port, the
// desktop's becomes current.
void CloseWindow(WindowPtr window);
void DisposeWindow(WindowPtr window);
// The frontmost visible window, nil when none.
WindowPtr FrontWindow(void);
// Brings it in front of all others, which makes it the active one if it is
// visible.
void SelectWindow(WindowPtr window);
// Its place in the list stays the same. Nothing happens if it is shown, or hidden,
// already.
void ShowWindow(WindowPtr window);
void HideWindow(WindowPtr window);
// Moves it to the front of the list, visible or not; what is uncovered is painted.
void BringToFront(WindowPtr window);
// Moves the content's top left to (h, v), global, and brings the window to the
// front when front is set. The whole content is to be updated.
void MoveWindow(WindowPtr window, int16_t h, int16_t v, Boolean front);
// Follows the mouse, pressed at the global start, with a grey outline of the
// window, and moves the window there when it is released. While the mouse is
// outside the bounds (global) the outline is back around the window, and a release
// moves nothing. The order of windows stays.
void DragWindow(WindowPtr window, Point start, const Rect *bounds);
// Sets the content's size; new parts of it are to be updated whatever update says.
void SizeWindow(WindowPtr window, int16_t width, int16_t height, Boolean update);
// The title is copied, and drawn at once; nil is the empty title. GetWTitle gives
// the empty title for a window that does not exist.
void SetWTitle(WindowPtr window, ConstStr255Param title);
void GetWTitle(WindowPtr window, Str255 title);
// A number or address for the owner's use; the Window Manager ignores it.
void SetWRefCon(WindowPtr window, intptr_t value);
intptr_t GetWRefCon(WindowPtr window);
// What a global point lies in. *window is nil for the menu bar and the desktop.
// The frame of a window without a title bar counts as desktop, with *window
// set.
int16_t FindWindow(Point where, WindowPtr *window);
// Add a local rectangle of the current port to what its window is to redraw, or
// take it away. Nothing happens for a port that is not a visible window's.
void InvalRect(const Rect *r);
void ValidRect(const Rect *r);
// Between the two, drawing in the window is clipped to what needs it; the
// update region is empty from BeginUpdate on.
void BeginUpdate(WindowPtr window);
void EndUpdate(WindowPtr window);
// Attaches a 'wctb' or 'dctb' table; the window keeps its own copy until it is
// closed. It colours content (part 0), frame (part 1) and title (part 2) while the
// main display has 2 bits per pixel or more.
void SetWinColor(WindowPtr window, Handle colorTable);

#ifdef __cplusplus
}
#endif
