// Control Manager: push buttons, check boxes, radio buttons, scroll bars.
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

// Belongs to the window, which disposes it when it closes.
ControlHandle NewControl(WindowPtr window, const Rect *bounds, ConstStr255Param title, Boolean visible,
                         int16_t value, int16_t min, int16_t max, int16_t procID, intptr_t refCon);
void DisposeControl(ControlHandle control);
void KillControls(WindowPtr window);
void DrawControls(WindowPtr window);
void Draw1Control(ControlHandle control);
// 0 normal, 10 a button pressed, 255 dimmed and dead; redraws.
void HiliteControl(ControlHandle control, int16_t part);
void ShowControl(ControlHandle control);
void HideControl(ControlHandle control);
void MoveControl(ControlHandle control, int16_t h, int16_t v);
void SizeControl(ControlHandle control, int16_t width, int16_t height);
int16_t TestControl(ControlHandle control, Point where);
int16_t FindControl(Point where, WindowPtr window, ControlHandle *control);
// The part if the button is released in it, else 0. Tracks until release.
int16_t TrackControl(ControlHandle control, Point where, ProcPtr action);
int16_t GetCtlValue(ControlHandle control);
void SetCtlValue(ControlHandle control, int16_t value);
void SetCtlMax(ControlHandle control, int16_t value);
void SetCTitle(ControlHandle control, ConstStr255Param title);
void GetCTitle(ControlHandle control, Str255 title);
// Attaches a 'cctb' table; the control keeps its own copy.
void SetCtlColor(ControlHandle control, Handle colorTable);

#ifdef __cplusplus
}
#endif
