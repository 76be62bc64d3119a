#include "source/popup.h"

#include "source/ktColor.h"
#include "source/needs.h"
#include "source/reasons.h"
#include "source/settings.h"
#include "source/strings.h"
#include "source/utilities.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"

enum { kEllipsis = 0xC9 };

// Room in the box for what is not text: in the menu, and in the drawn box.
enum { kMenuMargin = 28, kTextMargin = 34 };

Handle NewPopup()
{
    Handle popup = NewHandleClear(sizeof(PopupInfo));
    Need(popup, kNoFileBlock, " (newhandle)");
    return popup;
}

static int16_t BoxWidth(const PopupInfo &info)
{
    return info.popupRect.right - info.popupRect.left;
}

// Makes the menu at least as wide as the box. The spaces stay in the menu: it is
// measured by its items, and would come up narrower than the box without them.
static void WidenFirstItem(MenuHandle menu, int16_t boxWidth)
{
    Str255 text;
    GetItem(menu, 1, text);
    while (text[0] < 255 && StringWidth(text) <= boxWidth - kMenuMargin)
        text[++text[0]] = ' ';
    SetItem(menu, 1, text);
}

void SetupPopup(Handle popup, Rect itemRect, ConstStr255Param title, MenuHandle menu, int16_t menuID, int16_t item)
{
    PopupInfo info = {};
    info.bounds = itemRect;
    info.popupRect = itemRect;
    info.titleWidth = StringWidth(title) + 8;
    Str255 wholeTitle;
    BlockMove(title, wholeTitle, title[0] + 1);
    CopyPStr(wholeTitle, info.title, 31);
    if (info.title[0] > 0) {
        info.popupRect.left += info.titleWidth;
        SetRect(&info.titleRect, itemRect.left, itemRect.top + 1, itemRect.left + info.titleWidth,
                itemRect.bottom - 1);
    }
    info.menuPos.v = info.popupRect.top + 1;
    info.menuPos.h = info.popupRect.left + 1;
    info.menuID = menuID;
    info.menu = menu ? menu : NeedMenu(menuID);
    WidenFirstItem(info.menu, BoxWidth(info));
    InsertMenu(info.menu, -1);
    info.curItem = info.prevItem = item;
    CheckItem(info.menu, item, true);
    *PopupRecord(popup) = info;
}

static void DrawShadow(const Rect &box)
{
    MoveTo(box.left + 1, box.bottom);
    LineTo(box.right, box.bottom);
    LineTo(box.right, box.top + 1);
}

// Cuts the text to the box and ends it with an ellipsis, which never follows a space.
static void FitText(Str255 text, int16_t boxWidth)
{
    Boolean shortened = false;
    while (text[0] > 0 && boxWidth < StringWidth(text) + kTextMargin) {
        --text[0];
        shortened = true;
    }
    if (!shortened || text[0] < 3)
        return;
    text[0] -= 3;
    if (text[0] > 0 && text[text[0]] == ' ')
        --text[0];
    text[++text[0]] = kEllipsis;
}

static void DrawChoice(Handle popup, const PopupInfo &info)
{
    Str255 text = {0};
    if (CheckMenuExceptions(info.menu, info.curItem))
        DoMenuExceptionString(popup, text);
    else
        GetItem(info.menu, info.curItem, text);
    RemoveTrailingSpaces(text);
    FitText(text, BoxWidth(info));
    MoveTo(info.popupRect.left + 15, info.popupRect.bottom - 5);
    DrawString(text);
}

static void DrawArrow(const Rect &box)
{
    PolyHandle arrow = OpenPoly();
    MoveTo(box.right - 5, box.top + 6);
    LineTo(box.right - 17, box.top + 6);
    LineTo(box.right - 11, box.top + 12);
    LineTo(box.right - 5, box.top + 6);
    ClosePoly();
    GetCurPixDepth();
    if (gPrefsPtr->useColor)
        ColorThePopup(true);
    PaintPoly(arrow);
    ForeColor(blackColor);
    KillPoly(arrow);
}

void DrawPopup(Handle popup)
{
    PopupInfo info = *PopupRecord(popup);
    FrameRect(&info.popupRect);
    MoveTo(info.titleRect.left + 4, info.titleRect.bottom - 4);
    DrawString(info.title);
    DrawShadow(info.popupRect);
    Rect inside = info.popupRect;
    InsetRect(&inside, 1, 1);
    EraseRect(&inside);
    DrawChoice(popup, info);
    DrawArrow(info.popupRect);
}

void ErasePopup(Rect bounds)
{
    ++bounds.bottom;
    ++bounds.right;
    EraseRect(&bounds);
}

// Makes the item current and moves the check mark.
static void MakeCurrent(Handle popup, int16_t item)
{
    MenuHandle menu = PopupRecord(popup)->menu;
    CheckItem(menu, PopupRecord(popup)->curItem, false);
    PopupRecord(popup)->curItem = item;
    CheckItem(menu, item, true);
}

Boolean HandlePopupClick(Handle popup, Boolean redraw)
{
    PopupInfo info = *PopupRecord(popup);
    InvertRect(&info.titleRect);
    PopupRecord(popup)->prevItem = info.curItem;
    Point where = info.menuPos;
    LocalToGlobal(&where);
    int32_t choice = PopUpMenuSelect(info.menu, where.v, where.h, info.curItem);
    InvertRect(&info.titleRect);
    if (HiWord(choice) == 0)
        return false;
    MakeCurrent(popup, LoWord(choice));
    if (redraw)
        DrawPopup(popup);
    return true;
}

void DisposePopup(Handle popup, Boolean erase)
{
    PopupInfo info = *PopupRecord(popup);
    if (erase)
        ErasePopup(info.bounds);
    DeleteMenu(info.menuID);
    ReleaseResource(info.menu);
}

void RevertPopup(Handle popup)
{
    MakeCurrent(popup, PopupRecord(popup)->prevItem);
}

void SetPopupMenuItem(Handle popup, int16_t item)
{
    PopupRecord(popup)->prevItem = PopupRecord(popup)->curItem;
    MakeCurrent(popup, item);
}

Boolean CheckMenuExceptions(MenuHandle menu, int16_t item)
{
    Str255 text;
    GetItem(menu, item, text);
    return ComparePStr(text, ql_quorum_passtr("Other...")) || ComparePStr(text, ql_quorum_passtr("Import..."));
}

// Before a spot function has been imported the previous choice is shown: "Import..."
// is current only until the import has succeeded or been reverted.
void DoMenuExceptionString(Handle popup, Str255 out)
{
    PopupInfo info = *PopupRecord(popup);
    const Setting *setting = SettingWithMenu(info.menuID);
    if (setting && setting->value.text)
        OwnValueWithUnit(*setting, 255, out);
    else if (info.menuID == kSpotMenu && gPrefsPtr->spotImported)
        CopyPStr(gPrefsPtr->spotName, out, 255);
    else if (info.menuID == kSpotMenu)
        GetItem(info.menu, info.prevItem, out);
}
