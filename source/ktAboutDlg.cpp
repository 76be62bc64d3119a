#include "source/ktAboutDlg.h"

#include <initializer_list>

#include "source/dialogItems.h"
#include "source/environment.h"
#include "source/needs.h"
#include "source/reasons.h"
#include "source/settingsRecord.h"
#include "source/strings.h"
#include "source/utilities.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"

RgnHandle gTheAboutRgn = nullptr;
Boolean gAboutDone = false;
Boolean gDoIntro = false;
int16_t gPreIntroCounter = 0;
Boolean gIconDone = false;
Boolean gScrollInProg = false;
Boolean gGetScrollStr = false;
int16_t gWhichScrollString = 1;
Str255 gTheScrollStr = {0};
int32_t gScrollStrLen = 0;
int32_t gScrollDelta = 0;
Rect gScrollRect = {};

static Boolean gWantCredits = false;

enum {
    kShallowPicture = 1,
    kDeepPicture = 2,
    kShallowIcon = 3,
    kDeepIcon = 4,
    kPictureArea = 5,
    kTextArea = 6,
    kScrollStrip = 7
};
enum { kCreditsLines = 1, kCreditsShallow = 2, kCreditsDeep = 3, kColourBox = 4 };
enum { kFirstPanelLine = 4, kScrollLines = 3 };
enum { kIntroPass = 15, kIntroSteps = 22, kDeepDisplay = 8 };
enum { kInfoFont = 3, kInfoSize = 9, kCreditsSize = 10 };
// QuickDraw's own number for the lines that scroll by, which a display shows in
// blue; with any other the box would not look as users know it.
enum { kScrollColour = 409, kTextColour = 33 };
enum { kOutOfSight = 250 };

void AboutInit()
{
}

void CreditsInit()
{
}

// --- Items ------------------------------------------------------------------

static void SetItemBox(int16_t number, const Rect &box)
{
    int16_t type;
    Handle item;
    Rect before;
    GetDItem(gTheDialog, number, &type, &item, &before);
    SetDItem(gTheDialog, number, type, item, &box);
}

static void ShowOrHideItem(DialogPtr dialog, int16_t number, Boolean show)
{
    if (show)
        ShowDItem(dialog, number);
    else
        HideDItem(dialog, number);
}

static void MoveLeftEdge(int16_t number, int16_t by)
{
    Rect box = ItemBox(gTheDialog, number);
    box.left += by;
    SetItemBox(number, box);
}

void SetAboutPicts(Boolean showPicture)
{
    Boolean deep = GetCurPixDepth() >= kDeepDisplay;
    ShowOrHideItem(gTheDialog, kShallowPicture, showPicture && !deep);
    ShowOrHideItem(gTheDialog, kDeepPicture, showPicture && deep);
    ShowOrHideItem(gTheDialog, kShallowIcon, !gIconDone && !deep);
    ShowOrHideItem(gTheDialog, kDeepIcon, !gIconDone && deep);
}

// For the depth that SetAboutPicts used last.
static int16_t PictureItem()
{
    return gEnvirInfo->pixDepth < kDeepDisplay ? kShallowPicture : kDeepPicture;
}

static int16_t IconItem()
{
    return gEnvirInfo->pixDepth < kDeepDisplay ? kShallowIcon : kDeepIcon;
}

// --- Animation --------------------------------------------------------------

// Each step is shown, and lasts a tick.
static void ShowStep()
{
    uint32_t now;
    Delay(1, &now);
}

static void DrawItemAt(int16_t number, const Rect &box)
{
    SetItemBox(number, box);
    RectRgn(gTheAboutRgn, &box);
    UpdtDialog(gTheDialog, gTheAboutRgn);
}

static void EraseBetween(const Rect &outer, const Rect &inner)
{
    RgnHandle kept = NewRgn();
    RectRgn(gTheAboutRgn, &outer);
    RectRgn(kept, &inner);
    DiffRgn(gTheAboutRgn, kept, gTheAboutRgn);
    EraseRgn(gTheAboutRgn);
    DisposeRgn(kept);
}

// Not InsetRect, which loses the place of an empty rectangle.
static Rect Widened(Rect box, int16_t dh, int16_t dv)
{
    box.left -= dh;
    box.right += dh;
    box.top -= dv;
    box.bottom += dv;
    return box;
}

static void PlayIntroSound()
{
    Handle sound = Get1Resource('snd ', kAboutSound);
    if (!sound)
        return;
    HLock(sound);
    SndPlay(nullptr, sound, false);
    HUnlock(sound);
    ReleaseResource(sound);
}

static void GrowPicture()
{
    SetAboutPicts(true);
    int16_t picture = PictureItem();
    Rect box = Widened(ItemBox(gTheDialog, picture), -4 * kIntroSteps, -kIntroSteps);
    for (int16_t step = 0; step < kIntroSteps; ++step) {
        box = Widened(box, 4, 1);
        DrawItemAt(picture, box);
        ShowStep();
    }
    PlayIntroSound();
}

// The other depth's picture goes too: the depth may change later.
static void NarrowPicture()
{
    for (int16_t step = 0; step < kIntroSteps; ++step) {
        for (int16_t picture : {kShallowPicture, kDeepPicture}) {
            Rect before = ItemBox(gTheDialog, picture);
            Rect after = Widened(before, -4, -1);
            SetItemBox(picture, after);
            if (picture == PictureItem())
                EraseBetween(before, after);
        }
        ShowStep();
    }
}

void DoAboutIntro(Boolean grow)
{
    if (grow)
        GrowPicture();
    else
        NarrowPicture();
}

static void StretchIcon(int16_t icon)
{
    Rect box = ItemBox(gTheDialog, icon);
    while (box.bottom < gTheDialog->portRect.bottom - 50) {
        box.bottom += 6;
        DrawItemAt(icon, box);
        ShowStep();
    }
}

static void DropIcon(int16_t icon)
{
    Rect box = ItemBox(gTheDialog, icon);
    while (box.top < gTheDialog->portRect.bottom + 10) {
        Rect before = box;
        box.top += 4;
        box.bottom += 8;
        EraseBetween(before, box);
        DrawItemAt(icon, box);
        ShowStep();
    }
}

void DoAboutIconMove()
{
    gDoIntro = true;
    Rect text = ItemBox(gTheDialog, kTextArea);
    EraseRect(&text);
    MoveLeftEdge(kTextArea, kOutOfSight);
    MoveLeftEdge(kScrollStrip, kOutOfSight);
    StretchIcon(IconItem());
    DropIcon(IconItem());
    MoveLeftEdge(kTextArea, -kOutOfSight);
    MoveLeftEdge(kScrollStrip, -kOutOfSight);
    DoAboutIntro(false);
    gDoIntro = false;
    DoAboutInfo(false);
}

// --- Text -------------------------------------------------------------------

static void PlainText()
{
    TextFont(0);
    TextSize(0);
    TextFace(normal);
}

static void DrawCentred(ConstStr255Param text, const Rect &across, int16_t baseline)
{
    MoveTo((across.left + across.right - StringWidth(text)) / 2, baseline);
    DrawString(text);
}

static void DrawTitle(int16_t baseline)
{
    Str255 title, version;
    GetIndString(title, kAboutStrings, 1);
    GetAppVersionLongStr(version);
    ConcatPStr(version, title, 255);
    DrawCentred(title, gTheDialog->portRect, baseline);
}

static void DrawInfoLine(int16_t index, int16_t baseline)
{
    Str255 line;
    NeedString(line, kAboutStrings, index);
    DrawCentred(line, gTheDialog->portRect, baseline);
}

void DoAboutInfo(Boolean titleOnly)
{
    Rect area = ItemBox(gTheDialog, kTextArea);
    EraseRect(&area);
    TextFont(kInfoFont);
    TextSize(kInfoSize);
    TextFace(bold);
    DrawTitle(area.top + 31);
    TextFace(normal);
    if (!titleOnly) {
        DrawInfoLine(2, area.top + 48);
        DrawInfoLine(5, area.top + 60);
        DrawInfoLine(3, area.top + 72);
    }
    PlainText();
}

// --- Scrolling lines --------------------------------------------------------

static void LoadScrollLine()
{
    GetIndString(gTheScrollStr, kCreditsStrings, gWhichScrollString);
    gScrollStrLen = -StringWidth(gTheScrollStr);
    gGetScrollStr = false;
}

// Each step draws the whole line over the scrolled one, background included, so
// that its soft edges do not thicken.
static void DrawScrollLine()
{
    TextFont(kInfoFont);
    TextSize(kInfoSize);
    TextFace(bold + italic);
    if (gGetScrollStr)
        LoadScrollLine();
    ScrollRect(&gScrollRect, -2, 0, nullptr);
    MoveTo(gScrollDelta, gScrollRect.bottom - 22);
    ForeColor(kScrollColour);
    TextMode(srcCopy);
    DrawString(gTheScrollStr);
    TextMode(srcOr);
    ForeColor(kTextColour);
    PlainText();
}

// The scroll area begins a little below the top of the title's letters, so the part
// above it is erased too.
static void EraseForScroll()
{
    Rect above = ItemBox(gTheDialog, kTextArea);
    above.bottom = gScrollRect.top;
    EraseRect(&above);
    EraseRect(&gScrollRect);
}

static void NextScrollLine(int16_t rightEdge)
{
    gGetScrollStr = true;
    gScrollDelta = rightEdge - 1;
    if (++gWhichScrollString <= kScrollLines)
        return;
    gWhichScrollString = 1;
    gScrollDelta = rightEdge;
    gScrollInProg = false;
    DoAboutInfo(false);
}

void DoAboutScrollText()
{
    int16_t rightEdge = gTheDialog->portRect.right;
    gScrollInProg = true;
    if (gScrollDelta == rightEdge - 1)
        EraseForScroll();
    else
        DrawScrollLine();
    gScrollDelta -= 2;
    if (gScrollDelta <= gScrollStrLen)
        NextScrollLine(rightEdge);
}

// --- The box ----------------------------------------------------------------

// A scrolling line draws itself, and the information lines would show through it.
void AboutProc(DialogPtr, int16_t)
{
    if (gDoIntro)
        return;
    SetAboutPicts(true);
    if (!gScrollInProg)
        DoAboutInfo(false);
}

static Boolean IsIn(DialogPtr dialog, int16_t item, Point where)
{
    Rect box = ItemBox(dialog, item);
    GlobalToLocal(&where);
    return PtInRect(where, &box);
}

static void ClickPicture(uint16_t modifiers)
{
    if (modifiers & optionKey && !gIconDone) {
        gWantCredits = true;
        gAboutDone = true;
    } else if (modifiers & controlKey && !gScrollInProg && !gIconDone) {
        --gScrollDelta;
    } else if (gIconDone || gScrollInProg) {
        gAboutDone = true;
    } else {
        DoAboutIconMove();
        gIconDone = true;
    }
}

static void CountPasses()
{
    if (gPreIntroCounter <= kIntroPass)
        ++gPreIntroCounter;
    if (gPreIntroCounter != kIntroPass || !gDoIntro)
        return;
    DoAboutIntro(true);
    DoAboutInfo(false);
    gDoIntro = false;
}

Boolean AboutFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit)
{
    *itemHit = 0;
    if (IsConfirmKey(*event)) {
        gAboutDone = true;
        return true;
    }
    CountPasses();
    if (event->what != mouseDown) {
        if (gScrollDelta < dialog->portRect.right && !gDoIntro)
            DoAboutScrollText();
        return false;
    }
    if (IsIn(dialog, kPictureArea, event->where))
        ClickPicture(event->modifiers);
    else
        gAboutDone = true;
    return true;
}

static void ClearState()
{
    gAboutDone = gWantCredits = gIconDone = gScrollInProg = false;
    gPreIntroCounter = 0;
    gDoIntro = gGetScrollStr = true;
    gWhichScrollString = 1;
    gTheAboutRgn = NewRgn();
}

static void PresentDialog(int16_t mode)
{
    CenterWindow(gCustomDialog, gTheDialog, mode);
    BringUp(gTheDialog);
}

static void RunDialog(ModalFilterProcPtr filter)
{
    int16_t itemHit;
    while (!gAboutDone)
        ModalDialog(filter, &itemHit);
    HideWindow(gTheDialog);
}

static int16_t HandleCreditsDialog();

int16_t HandleAboutDialog()
{
    GrafPtr savedPort;
    GetPort(&savedPort);
    ClearState();
    gTheDialog = OpenDialog(kAboutDialogID, kNoDialog);
    InstallUserProc(gTheDialog, kPictureArea, AboutProc);
    gScrollDelta = gTheDialog->portRect.right;
    gScrollRect = ItemBox(gTheDialog, kTextArea);
    gScrollRect.top += 25;
    PresentDialog(kCenterThird);
    SetAboutPicts(false);
    RunDialog(AboutFilter);
    DisposeRgn(gTheAboutRgn);
    gTheAboutRgn = nullptr;
    DisposeTheDialog();
    SetPort(savedPort);
    return gWantCredits ? HandleCreditsDialog() : 1;
}

// --- The credits panel ------------------------------------------------------

static void DrawCreditsLine(int16_t index, const Rect &across, int16_t baseline)
{
    Str255 line;
    GetIndString(line, kCreditsStrings, kFirstPanelLine + index);
    DrawCentred(line, across, baseline);
}

static void CreditsProc(DialogPtr dialog, int16_t item)
{
    Boolean deep = GetCurPixDepth() >= kDeepDisplay;
    ShowOrHideItem(dialog, kCreditsShallow, !deep);
    ShowOrHideItem(dialog, kCreditsDeep, deep);
    Rect area = ItemBox(dialog, item);
    TextFont(kInfoFont);
    TextSize(kCreditsSize);
    TextFace(bold);
    DrawCreditsLine(0, area, area.top + 10);
    TextSize(kInfoSize);
    TextFace(normal);
    DrawCreditsLine(1, area, area.top + 23);
    PlainText();
}

static ControlHandle ColourBox(DialogPtr dialog)
{
    int16_t type;
    Handle item;
    Rect box;
    GetDItem(dialog, kColourBox, &type, &item, &box);
    return reinterpret_cast<ControlHandle>(item);
}

static Boolean CanShowColour()
{
    return gEnvirInfo->sysVersion >= 0x0700 && gEnvirInfo->hasColorQD && gEnvirInfo->pixDepth >= 2;
}

static Boolean CreditsFilter(DialogPtr dialog, EventRecord *event, int16_t *itemHit)
{
    *itemHit = 0;
    if (IsConfirmKey(*event)) {
        gAboutDone = true;
        return true;
    }
    if (event->what != mouseDown)
        return false;
    if (!IsIn(dialog, kColourBox, event->where)) {
        gAboutDone = true;
        return true;
    }
    ControlHandle box = ColourBox(dialog);
    SetCtlValue(box, !GetCtlValue(box));
    gPrefsPtr->useColor = GetCtlValue(box) != 0;
    return true;
}

// Returns 1.
static int16_t HandleCreditsDialog()
{
    GrafPtr savedPort;
    GetPort(&savedPort);
    gAboutDone = false;
    gTheDialog = OpenDialog(kCreditsDialogID, kNoDialog);
    InstallUserProc(gTheDialog, kCreditsLines, CreditsProc);
    if (CanShowColour())
        SetCtlValue(ColourBox(gTheDialog), gPrefsPtr->useColor);
    else
        HideDItem(gTheDialog, kColourBox);
    PresentDialog(kCenterMiddle);
    RunDialog(CreditsFilter);
    DisposeTheDialog();
    SetPort(savedPort);
    return 1;
}
