#include "source/openDialogs.h"

#include "source/dialogItems.h"
#include "source/ktColor.h"
#include "source/needs.h"
#include "source/settingsRecord.h"
#include "source/utilities.h"
#include "toolbox/quickdraw.h"

DialogPtr gCustomDialog = nullptr;
DialogPtr gTheDialog = nullptr;
Boolean gDone = false;

DialogPtr OpenDialog(int16_t dialogID, int16_t reason)
{
    DialogPtr dialog = GetNewDialog(dialogID, nullptr, reinterpret_cast<WindowPtr>(-1));
    Need(dialog, reason, " (dlog resource)");
    SetPort(dialog);
    return dialog;
}

void ColourIfWanted(DialogPtr dialog)
{
    if (gPrefsPtr && gPrefsPtr->useColor)
        ColorTheDialog(true, dialog);
}

void DressDialog(DialogPtr dialog, int16_t outlineItem, int16_t panelItem, UserItemProcPtr drawPanel)
{
    ColourIfWanted(dialog);
    InstallUserProc(dialog, outlineItem, OutlineDefault);
    InstallUserProc(dialog, panelItem, drawPanel);
}

void BringUp(DialogPtr dialog)
{
    SelectWindow(dialog);
    ShowWindow(dialog);
    SetCursor(&qd.arrow);
}

void DrawPanel(DialogPtr dialog, int16_t panelItem, int16_t dialogID)
{
    ColorDialogRect(gPrefsPtr->useColor, ItemBox(dialog, panelItem), dialogID);
}

Boolean RunTheDialog(ModalFilterProcPtr filter, Boolean (*accept)())
{
    int16_t itemHit;
    do {
        itemHit = 0;
        ModalDialog(filter, &itemHit);
    } while (itemHit != cancel && !(itemHit == ok && accept()));
    HideWindow(gTheDialog);
    return itemHit == ok;
}

void DisposeTheDialog()
{
    DisposDialog(gTheDialog);
    gTheDialog = nullptr;
}
