// Control Manager: push buttons, check boxes, radio buttons, scroll bars.
//
// A control is drawn by its window's owner (DrawControls, or the Dialog
// Manager) when the window is updated, and by every call here that changes it.
// Rectangles and points are local to the window. The current port, pen and
// text settings are left as they were. Handles must be those of existing
// controls: they are not checked. Titles are copied. All calls are allowed
// between start and stop of the Toolbox; those that make, draw or change a
// control may allocate.
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

// bounds is local to the window; value is kept between min and max; refCon is for
// the caller's use. Drawn at once when visible. The control comes first in the
// window's list and belongs to the window, which disposes of it on closing. Nil
// when the heap has no room.
ControlHandle NewControl(WindowPtr window, const Rect *bounds, ConstStr255Param title, Boolean visible,
                         int16_t value, int16_t min, int16_t max, int16_t procID, intptr_t refCon);
// Takes the control off its window, whose owner is asked to redraw the place, and
// frees it. KillControls does so with all controls of a window.
void DisposeControl(ControlHandle control);
void KillControls(WindowPtr window);
// Draws the visible controls of a window, the latest first, or one control if it
// is visible.
void DrawControls(WindowPtr window);
void Draw1Control(ControlHandle control);
// 0 normal, 10 a button pressed, 255 dimmed and inactive; redraws. Showing a push
// button pressed in this way is traced as a flash.
void HiliteControl(ControlHandle control, int16_t part);
// The place that a control leaves by being hidden, moved or resized is erased, and
// the window's owner is asked to redraw it.
void ShowControl(ControlHandle control);
void HideControl(ControlHandle control);
// Moves the top left to (h, v), local; the size stays. SizeControl: in pixels; the
// top left stays.
void MoveControl(ControlHandle control, int16_t h, int16_t v);
void SizeControl(ControlHandle control, int16_t width, int16_t height);
// The part under the point; 0 outside, and for a hidden or dimmed control.
int16_t TestControl(ControlHandle control, Point where);
// The same for whichever of the window's controls is at the point; *control is nil
// if there is none.
int16_t FindControl(Point where, WindowPtr window, ControlHandle *control);
// Follows the mouse from the press at where until the release. Returns the part
// if the mouse was released in the part it was pressed in, else 0. Dragging a
// thumb sets the value, and returns inThumb if that has changed. action is for
// arrows and page areas of scroll bars: void action(ControlHandle, int16_t part),
// called repeatedly while the button is held there; nil for anything else. The
// caller sets the values of check boxes and radio buttons.
int16_t TrackControl(ControlHandle control, Point where, ProcPtr action);
// The value is kept between the control's minimum and maximum, also when the
// maximum changes. Setting either redraws.
int16_t GetCtlValue(ControlHandle control);
void SetCtlValue(ControlHandle control, int16_t value);
void SetCtlMax(ControlHandle control, int16_t value);
// The title, Mac OS Roman, CR between its lines. Setting it redraws.
void SetCTitle(ControlHandle control, ConstStr255Param title);
void GetCTitle(ControlHandle control, Str255 title);
// Attaches a 'cctb' table; the control keeps its own copy, as a handle; nil takes
// the colours away. It colours frame, body and text of push buttons while the main
// display has 2 bits per pixel or more. Nothing happens when the heap has no room.
void SetCtlColor(ControlHandle control, Handle colorTable);

#ifdef __cplusplus
}
#endif
