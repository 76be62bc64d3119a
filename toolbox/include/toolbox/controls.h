// Control Manager: push buttons, check boxes, radio buttons, scroll bars.
//
// A control is drawn by its window's owner (DrawControls, or the Dialog
// Manager) when the window is updated, and by every call here that changes it.
// Rectangles and points are local to the window. The current port, pen and
// text settings are left as they were. Handles must be those of controls that
// were made and not disposed of yet: none is looked up. Titles are copied. All of
// it may be called between start and stop of the Toolbox; making a control, its
// title and its colours allocate.
#pragma once

#include "toolbox/windows.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct ControlRecord {
    struct ControlRecord **nextControl;
    WindowPtr contrlOwner;
    Rect contrlRect;         // local to the window
    uint8_t contrlVis;
    uint8_t contrlHilite;    // 0 normal, 1 to 253 a part pressed, 255 dimmed
    int16_t contrlValue, contrlMin, contrlMax;
    int16_t procID;
    intptr_t contrlRfCon;
    Handle colorTable;       // the control's copy, nil without one
    Str255 contrlTitle;
} ControlRecord, **ControlHandle;

enum { pushButProc = 0, checkBoxProc = 1, radioButProc = 2, scrollBarProc = 16 };
enum { inButton = 10, inCheckBox = 11, inUpButton = 20, inDownButton = 21, inPageUp = 22, inPageDown = 23, inThumb = 129 };

// bounds is local to the window; value is kept between min and max; refCon is the
// caller's own. Drawn at once when visible. It comes first in the window's list,
// and belongs to the window, which disposes of it when it closes. Nil when the
// heap has no room.
ControlHandle NewControl(WindowPtr window, const Rect *bounds, ConstStr255Param title, Boolean visible,
                         int16_t value, int16_t min, int16_t max, int16_t procID, intptr_t refCon);
// Takes it off the window, whose owner is asked to draw what was there, and frees
// it; KillControls all of a window's.
void DisposeControl(ControlHandle control);
void KillControls(WindowPtr window);
// Draws the visible controls of a window, the one made last first, or one control
// if it is visible.
void DrawControls(WindowPtr window);
void Draw1Control(ControlHandle control);
// 0 normal, 10 a button pressed, 255 dimmed and dead; redraws. Traced as a
// flash when a push button is pressed so.
void HiliteControl(ControlHandle control, int16_t part);
// Where a control is hidden, or moved or resized away from, the window's content
// is erased and its owner asked to draw it.
void ShowControl(ControlHandle control);
void HideControl(ControlHandle control);
// Top left to (h, v), local; the size stays. SizeControl: in pixels, the top left
// stays.
void MoveControl(ControlHandle control, int16_t h, int16_t v);
void SizeControl(ControlHandle control, int16_t width, int16_t height);
// The part under the point; 0 outside, and for a control hidden or dimmed.
int16_t TestControl(ControlHandle control, Point where);
// The same for whichever of the window's controls is there; *control is nil where
// none is.
int16_t FindControl(Point where, WindowPtr window, ControlHandle *control);
// Follows the mouse from the press at where until the release, and returns the
// part when it was released in the part it was pressed in, else 0. A thumb
// sets the value and returns inThumb when that changed. action is for arrows
// and page areas of scroll bars: void action(ControlHandle, int16_t part),
// called again and again while the button is held there; nil for all else.
// Values of check boxes and radio buttons are the caller's to set.
int16_t TrackControl(ControlHandle control, Point where, ProcPtr action);
// The value set is kept between the control's least and largest, and so is the
// present one when the largest changes. Redraws.
int16_t GetCtlValue(ControlHandle control);
void SetCtlValue(ControlHandle control, int16_t value);
void SetCtlMax(ControlHandle control, int16_t value);
// The title, Mac OS Roman, CR between its lines. Setting it redraws.
void SetCTitle(ControlHandle control, ConstStr255Param title);
void GetCTitle(ControlHandle control, Str255 title);
// Attaches a 'cctb' table; the control keeps its own copy, as a handle; nil takes
// the colours away. It colours frame, body and text of push buttons while the main
// display has 2 bits a pixel or more. Nothing happens when the heap has no room.
void SetCtlColor(ControlHandle control, Handle colorTable);

#ifdef __cplusplus
}
#endif
