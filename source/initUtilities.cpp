#include "source/initUtilities.h"

#include "source/needs.h"
#include "source/reasons.h"
#include "source/utilities.h"
#include "toolbox/system.h"

namespace {

constexpr int32_t kColorQuickDraw = 0x100;
constexpr uint16_t kUnimplementedTrap = 0xA89F;

void MeasureDisplay()
{
    Rect display = qd.screenBits.bounds;
    if (gEnvirInfo->hasColorQD) {
        GDHandle device = GetMainDevice();
        if (device)
            display = (*device)->gdRect;
    }
    // The menu bar keeps windows off the top already. If the top were moved in too,
    // dialogs would open lower than users are used to.
    display.left += 4;
    display.right -= 4;
    display.bottom -= 4;
    gEnvirInfo->screenRect = display;
}

}  // namespace

void GetEnvirInfo()
{
    // A report that QuickDraw is missing needs a place to appear.
    gEnvirInfo->hasColorQD = 0;
    MeasureDisplay();

    // If it fails the version stays 0, and the dialogs work as before system 7.0.
    SystemVersionCheck();
    int32_t version = 0;
    Need(Gestalt('qd  ', &version) == noErr, kColourUnknown, " (gestalt QD)");
    gEnvirInfo->hasColorQD = version >= kColorQuickDraw;
    GetAppVersionStr(gEnvirInfo->versionStr);
    GetCurPixDepth();
    MeasureDisplay();

    Handle format = IUGetIntl(0);
    gEnvirInfo->decimalPt = format ? **format : '.';
}

OSErr SystemVersionCheck()
{
    return Gestalt('sysv', &gEnvirInfo->sysVersion);
}

Boolean TrapAvailable(uint16_t trap)
{
    int16_t type = GetTrapType(trap);
    if (type == ToolTrap && (trap & 0x07FF) >= NumToolboxTraps())
        trap = kUnimplementedTrap;
    return NGetTrapAddress(trap, type) != NGetTrapAddress(kUnimplementedTrap, ToolTrap);
}

int16_t GetTrapType(uint16_t trap)
{
    return trap & 0x0800 ? ToolTrap : OSTrap;
}

int16_t NumToolboxTraps()
{
    // A small table repeats after 512 entries, so that both are the same.
    return NGetTrapAddress(0xA86E, ToolTrap) == NGetTrapAddress(0xAA6E, ToolTrap) ? 512 : 1024;
}
