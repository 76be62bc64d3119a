#include "source/ktColor.h"

#include "source/environment.h"
#include "source/needs.h"
#include "source/reasons.h"
#include "source/resourceNumbers.h"
#include "source/utilities.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

Handle gCDlogColor = nullptr;
Handle gDlogColor = nullptr;
Handle gCCntlColor = nullptr;
Handle gCntlColor = nullptr;

static Handle ColorTable(ResType type, int16_t id, int16_t reason, const char *context)
{
    Handle table = Get1Resource(type, id);
    Need(table, reason, context);
    // Must stay while the command runs, however short memory gets.
    HNoPurge(table);
    return table;
}

// The plain pair is for callers that pass false for colour. None does so far, so all
// that a user can notice of it is the report when one of these tables is missing.
void GetKTColor()
{
    gCDlogColor = ColorTable('dctb', kColourWindow, kNoWindowColours, " (dctb resource)");
    gDlogColor = ColorTable('dctb', kPlainWindow, kNoWindowColours, " (dctb resource)");
    gCCntlColor = ColorTable('cctb', kColourButton, kNoButtonColours, " (cctb resource)");
    gCntlColor = ColorTable('cctb', kPlainButton, kNoButtonColours, " (cctb resource)");
}

void DisposeKTColor()
{
    Handle *const tables[] = {&gCDlogColor, &gDlogColor, &gCCntlColor, &gCntlColor};
    for (Handle *table : tables) {
        ReleaseResource(*table);
        *table = nullptr;
    }
}

static Boolean DisplayShowsColor()
{
    GetCurPixDepth();
    return gEnvirInfo->sysVersion >= 0x0700 && gEnvirInfo->pixDepth >= 2;
}

void ColorTheDialog(Boolean colour, DialogPtr dialog)
{
    if (!DisplayShowsColor())
        return;
    Handle windowTable = colour ? gCDlogColor : gDlogColor;
    Handle buttonTable = colour ? gCCntlColor : gCntlColor;
    if (windowTable)
        SetWinColor(dialog, windowTable);
    for (int16_t number = 1; number <= CountDITL(dialog); ++number) {
        int16_t type;
        Handle item;
        Rect box;
        GetDItem(dialog, number, &type, &item, &box);
        // A disabled button has another type and keeps its own colours: blue text
        // would make it look enabled.
        if (type == ctrlItem + btnCtrl && buttonTable)
            SetCtlColor(reinterpret_cast<ControlHandle>(item), buttonTable);
    }
}

void ColorThePopup(Boolean colour)
{
    if (DisplayShowsColor() && colour)
        ForeColor(blueColor);
}

// The dialog's number makes no difference: every panel is framed alike.
void ColorDialogRect(Boolean colour, Rect r, int16_t)
{
    if (!DisplayShowsColor() || !colour) {
        FrameRect(&r);
        return;
    }
    Rect light = r;
    OffsetRect(&light, -1, -1);
    ForeColor(whiteColor);
    FrameRect(&light);
    ForeColor(blueColor);
    FrameRect(&r);
    ForeColor(blackColor);
}
