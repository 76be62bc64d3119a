// Window Manager: a list of windows, the front one first.
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
    int16_t windowKind;      // dialogKind, userKind, negative for an accessory's
    Boolean visible;
    Boolean hilited;
    Boolean goAwayFlag;
    RgnHandle strucRgn;      // with its frame, global
    RgnHandle contRgn;       // content, global
    RgnHandle updateRgn;     // what is to be drawn anew, global
    struct ControlRecord **controlList;
    struct WindowRecord *nextWindow;
    Str255 title;
    int16_t procID;
    intptr_t refCon;
} WindowRecord, *WindowPeek;

enum { dialogKind = 2, userKind = 8 };
enum { documentProc = 0, dBoxProc = 1, plainDBox = 2, altDBoxProc = 3, noGrowDocProc = 4, movableDBoxProc = 5 };
enum { inDesk = 0, inMenuBar = 1, inSysWindow = 2, inContent = 3, inDrag = 4, inGrow = 5, inGoAway = 6 };

// storage nil: allocated. behind (WindowPtr)-1: in front of all; nil: last. The
// current port stays what it was.
WindowPtr NewWindow(void *storage, const Rect *bounds, ConstStr255Param title, Boolean visible,
                    int16_t procID, WindowPtr behind, Boolean goAway, intptr_t refCon);
// Takes the window off the screen and frees what belongs to it, but not the
// record when the caller gave the storage (CloseWindow) / also the record
// (DisposeWindow).
void CloseWindow(WindowPtr window);
void DisposeWindow(WindowPtr window);
// The frontmost visible window, nil when none.
WindowPtr FrontWindow(void);
void SelectWindow(WindowPtr window);
void ShowWindow(WindowPtr window);
void HideWindow(WindowPtr window);
void BringToFront(WindowPtr window);
// Content's top left to (h, v), global; bring to front when front is set.
void MoveWindow(WindowPtr window, int16_t h, int16_t v, Boolean front);
void SizeWindow(WindowPtr window, int16_t width, int16_t height, Boolean update);
void SetWTitle(WindowPtr window, ConstStr255Param title);
void GetWTitle(WindowPtr window, Str255 title);
void SetWRefCon(WindowPtr window, intptr_t value);
intptr_t GetWRefCon(WindowPtr window);
int16_t FindWindow(Point where, WindowPtr *window);
void InvalRect(const Rect *r);
void ValidRect(const Rect *r);
void BeginUpdate(WindowPtr window);
void EndUpdate(WindowPtr window);
// Attaches a 'wctb' or 'dctb' table; the window keeps its own copy.
void SetWinColor(WindowPtr window, Handle colorTable);

#ifdef __cplusplus
}
#endif
