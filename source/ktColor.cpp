#include "ktColor.h"

#include "errors.h"
#include "initUtilities.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"
#include "utilities.h"

Handle gCDlogColor = nullptr;
Handle gDlogColor = nullptr;
Handle gCCntlColor = nullptr;
Handle gCntlColor = nullptr;

enum { kWindowTableMissing = 87, kControlTableMissing = 88 };

static Handle ColorTable(ResType type, int16_t id, int32_t number, const char *context)
{
    Handle table = Get1Resource(type, id);
    if (!table)
        TheErrorHandler(kErrorDialog, 16129, number, ql_quorum_passtr(context), true);
    // Kept for as long as the command runs, however short memory gets.
    HNoPurge(table);
    return table;
}

void GetKTColor()
{
    gCDlogColor = ColorTable('dctb', 18000, kWindowTableMissing, " (dctb resource)");
    gDlogColor = ColorTable('dctb', 18001, kWindowTableMissing, " (dctb resource)");
    gCCntlColor = ColorTable('cctb', 18000, kControlTableMissing, " (cctb resource)");
    gCntlColor = ColorTable('cctb', 18001, kControlTableMissing, " (cctb resource)");
}

void DisposeKTColor()
{
    Handle *const tables[] = {&gCDlogColor, &gDlogColor, &gCCntlColor, &gCntlColor};
    for (Handle *table : tables) {
        ReleaseResource(*table);
        *table = nullptr;
    }
}

static Boolean ScreenShowsColor()
{
    GetCurPixDepth();
    return gEnvirInfo->sysVersion >= 0x0700 && gEnvirInfo->pixDepth >= 2;
}

void ColorTheDialog(Boolean colour, DialogPtr dialog)
{
    if (!ScreenShowsColor())
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
        // A disabled button has another type, and keeps its own colours.
        if (type == ctrlItem + btnCtrl && buttonTable)
            SetCtlColor(reinterpret_cast<ControlHandle>(item), buttonTable);
    }
}

void ColorThePopup(Boolean colour)
{
    if (ScreenShowsColor() && colour)
        ForeColor(blueColor);
}

void ColorDialogRect(Boolean colour, Rect r, int16_t)
{
    if (!ScreenShowsColor() || !colour) {
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
