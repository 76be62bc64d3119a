#include "source/needs.h"

#include "source/reasons.h"
#include "source/resourceNumbers.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"

ReportProc gReport = nullptr;

void Need(bool isThere, int16_t reason, const char *context)
{
    if (!isThere)
        gReport(kErrorDialog, kSomethingMissing, reason, ql_quorum_passtr(context), true);
}

void NeedString(Str255 text, int16_t listID, int16_t index)
{
    GetIndString(text, listID, index);
    Need(text[0] != 0, kNoString, " (STR# resource)");
}

MenuHandle NeedMenu(int16_t menuID)
{
    MenuHandle menu = GetMenu(menuID);
    Need(menu, kNoMenu, " (menu resource)");
    return menu;
}
