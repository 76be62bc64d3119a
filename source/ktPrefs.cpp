#include "source/ktPrefs.h"

#include <algorithm>

#include "source/environment.h"
#include "source/errors.h"
#include "source/fileBlocks.h"
#include "source/ktAnnoDlg.h"
#include "source/ktFreqDlg.h"
#include "source/ktSpot.h"
#include "source/needs.h"
#include "source/reasons.h"
#include "source/resourceNumbers.h"
#include "source/settings.h"
#include "source/strings.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"
#include "toolbox/menus.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"

namespace {

constexpr int16_t kFileNameIndex = 1;
constexpr OSType kFileType = 'pref';
constexpr OSType kFileCreator = 'RIDR';
constexpr ResType kRecordType = 'STUF';
constexpr int16_t kRecordID = 128;
constexpr int16_t kStandardFont = 5;
constexpr int16_t kLastFont = 13;

// Where the preferences file is, or will be.
struct PrefsFile {
    int16_t vRefNum = 0;
    int32_t dirID = 0;
    Str255 name;
};

// Whether there is a Preferences folder; it is created if necessary.
Boolean LocateFolder(PrefsFile *file)
{
    return FindFolder(kOnSystemDisk, kPreferencesFolderType, kCreateFolder, &file->vRefNum, &file->dirID) == noErr;
}

void ZeroAfterText(StringPtr text, int capacity)
{
    for (int i = text[0] + 1; i <= capacity; ++i)
        text[i] = 0;
}

// Validity of a stored record ------------------------------------------------

void ApplyDefaults(Boolean *reset)
{
    SetDefaults();
    *reset = true;
}

// For the rules that do not matter once the defaults are in place.
void Require(Boolean rule, Boolean *reset)
{
    if (!rule && !*reset)
        ApplyDefaults(reset);
}

void ReportChoice(const Setting &setting, Boolean *reset)
{
    TheErrorHandler(kWarningDialog, kSettingsUnusable, setting.notInMenu, ql_quorum_passtr(" (PrefsCheck)"),
                    false);
    ApplyDefaults(reset);
}

// An item below 1 is reported even after the defaults were applied. They hold no
// such item, so users see that only if the program itself has gone wrong.
void CheckChoice(const Setting &setting, Boolean *reset)
{
    MenuHandle menu = NeedMenu(setting.menuID);
    int16_t count = CountMItems(menu);
    int16_t item = gPrefsPtr->*setting.choice;
    if (item <= 0 || (item > count && !*reset))
        ReportChoice(setting, reset);
    DeleteMenu(setting.menuID);
    ReleaseResource(menu);
}

// As with the popups, an item below 1 counts even after the defaults were applied.
void CheckAnnoFont(Boolean *reset)
{
    if (gPrefsPtr->annoFontItem < 1)
        ApplyDefaults(reset);
    else
        Require(gPrefsPtr->annoFontItem <= kLastFont, reset);
}

// Reading --------------------------------------------------------------------

enum RecordFound { kNoFile, kNoRecord, kRecordRead };

// Copies the stored record into the live one. If it is too short the rest is zero,
// which no valid record has.
RecordFound ReadRecord(const PrefsFile &file)
{
    int16_t current = CurResFile();
    int16_t refNum = HOpenResFile(file.vRefNum, file.dirID, file.name, fsRdPerm);
    if (refNum == -1)
        return kNoFile;
    Handle stored = Get1Resource(kRecordType, kRecordID);
    if (stored) {
        *gPrefsPtr = PrefsRec{};
        BlockMove(*stored, gPrefsPtr, std::min<Size>(GetHandleSize(stored), sizeof(PrefsRec)));
        ReleaseResource(stored);
    }
    CloseResFile(refNum);
    UseResFile(current);
    return stored ? kRecordRead : kNoRecord;
}

void SpotTrouble(Boolean quiet, int16_t stringID, int32_t number, const char *context)
{
    if (!quiet)
        TheErrorHandler(kWarningDialog, stringID, number, ql_quorum_passtr(context), false);
    gPrefsPtr->spotImported = false;
}

// Without memory the popup goes back to its first item too. After a failed read it
// keeps its item, so that the user sees "Import..." chosen and imports again.
void LoadOpenSpotText(int16_t refNum, Boolean quiet)
{
    int32_t length = 0;
    if (GetEOF(refNum, &length) != noErr) {
        SpotTrouble(quiet, kStoredSpotUnreadable, kStoredSpotNoLength, " (eof)");
    } else if (length <= 0) {
        gPrefsPtr->spotImported = false;
    } else if (!FitsInMemory(length)) {
        SpotTrouble(quiet, kNoMemoryForStored, kStoredSpotTooLarge, " (maxmem)");
        gPrefsPtr->spotItem = 1;
    } else if (!MakeSpotBlock(length)) {
        SpotTrouble(quiet, kNoMemoryForStored, kStoredSpotNoBlock, " (newhandle)");
        gPrefsPtr->spotItem = 1;
    } else if (ReadSpotText(refNum, length) != noErr) {
        SpotTrouble(quiet, kStoredSpotUnreadable, kStoredSpotNotRead, " (fsread)");
    } else {
        gPrefsPtr->spotImported = true;
    }
}

void LoadSpotText(const PrefsFile &file, Boolean quiet)
{
    int16_t refNum = 0;
    if (HOpen(file.vRefNum, file.dirID, file.name, fsCurPerm, &refNum) != noErr) {
        SpotTrouble(quiet, kStoredSpotUnreadable, kStoredSpotNotOpened, " (fsopen)");
        return;
    }
    LoadOpenSpotText(refNum, quiet);
    FSClose(refNum);
}

// Writing --------------------------------------------------------------------

// If the file cannot be opened the flag stays; the next call finds no text, and
// clears it silently. After a failed write there is text that must not be read.
void StoreSpotText(const PrefsFile &file)
{
    int16_t refNum = 0;
    if (HOpen(file.vRefNum, file.dirID, file.name, fsCurPerm, &refNum) == noErr) {
        if (WriteSpotText(refNum) == noErr) {
            SetEOF(refNum, gSpotLength);
            FlushVol(nullptr, file.vRefNum);
        } else {
            SetEOF(refNum, 0);
            gPrefsPtr->spotImported = false;
        }
        FSClose(refNum);
    }
    FreeSpot();
}

// Into the current resource file.
void WriteRecord()
{
    Handle stored = NewHandleClear(sizeof(PrefsRec));
    AddResource(stored, kRecordType, kRecordID, ql_quorum_passtr("prefs"));
    if (ResError() != noErr) {
        DisposeHandle(stored);
        return;
    }
    if (Handle added = Get1Resource(kRecordType, kRecordID)) {
        BlockMove(gPrefsPtr, *added, sizeof(PrefsRec));
        ChangedResource(added);
        WriteResource(added);
        ReleaseResource(added);
    }
}

void WriteRecordFile(const PrefsFile &file)
{
    int16_t current = CurResFile();
    HCreateResFile(file.vRefNum, file.dirID, file.name);
    int16_t refNum = HOpenResFile(file.vRefNum, file.dirID, file.name, fsRdWrPerm);
    if (refNum == -1)
        return;
    WriteRecord();
    CloseResFile(refNum);
    UseResFile(current);
}

}  // namespace

void GetPrefs()
{
    ForgetSpot();
    PrefsFile file;
    Boolean haveFolder = LocateFolder(&file);
    NeedString(file.name, kPrefsStrings, kFileNameIndex);

    // A missing record is reported once: whatever is wrong with its spot text is not. That never has an effect, as the
    // defaults import no spot function and its text is not looked for; the two rules are independent, and kept so.
    Boolean quiet = false;
    switch (haveFolder ? ReadRecord(file) : kNoFile) {
    case kNoFile:
        SetDefaults();
        break;
    case kNoRecord:
        TheErrorHandler(kWarningDialog, kSettingsUnusable, kNoStoredRecord, ql_quorum_passtr(" (GetPrefs)"),
                        false);
        SetDefaults();
        quiet = true;
        break;
    case kRecordRead:
        DoPrefsResCheck();
        break;
    }
    if (gPrefsPtr->spotImported)
        LoadSpotText(file, quiet);
}

void WritePrefs()
{
    CleanupPrefsStruct();
    PrefsFile file;
    NeedString(file.name, kPrefsStrings, kFileNameIndex);
    if (!LocateFolder(&file))
        return;
    // Always a new file, so that nothing of an older one remains.
    HDelete(file.vRefNum, file.dirID, file.name);
    if (HCreate(file.vRefNum, file.dirID, file.name, kFileCreator, kFileType) != noErr)
        return;
    if (gPrefsPtr->spotImported && gSpotLength > 0 && gSpotHandle)
        StoreSpotText(file);
    WriteRecordFile(file);
}

void SetDefaults()
{
    PrefsRec *prefs = gPrefsPtr;
    CopyPStr(gEnvirInfo->versionStr, prefs->prefsVersion, 31);
    for (const Setting &setting : kSettings)
        prefs->*setting.choice = setting.standard;
    prefs->annoFontItem = kStandardFont;
    prefs->spotImported = 0;
    for (const PrefsText &text : kPrefsTexts) {
        Str255 standard;
        NeedString(standard, kPrefsStrings, text.standard);
        CopyPStr(standard, TextIn(prefs, text), text.capacity);
    }
    prefs->spareFlag1 = 1;
    prefs->closeAfterMake = 0;
    prefs->savePosition = 1;
    Point position{prefs->customDlgPos.v, prefs->customDlgPos.h};
    CheckDlogPos(kCustomDialogID, &position);
    prefs->customDlgPos = {position.v, position.h};
    prefs->sparePos = {50, 50};
    prefs->spareFlag2 = 0;
    prefs->useColor = 0;
}

void CleanupPrefsStruct()
{
    ZeroAfterText(gPrefsPtr->prefsVersion, 31);
    for (const PrefsText &text : kPrefsTexts)
        ZeroAfterText(TextIn(gPrefsPtr, text), text.capacity);
}

Boolean DoPrefsResCheck()
{
    Boolean reset = false;
    Require(ComparePStr(gPrefsPtr->prefsVersion, gEnvirInfo->versionStr), &reset);
    for (const Setting &setting : kSettings)
        CheckChoice(setting, &reset);
    Require(!gPrefsPtr->spotImported || gPrefsPtr->spotName[0] != 0, &reset);
    Require(gPrefsPtr->annoText[0] != 0, &reset);
    for (const Setting &setting : kSettings)
        if (setting.value.text)
            Require(DoFreqStrCheck(OwnValue(setting), setting.value.kind, false), &reset);
    CheckAnnoFont(&reset);
    // Again: a check in between may shorten texts. None of them changes this one
    // today, so no user would notice if this were gone; a new check might do so.
    Require(gPrefsPtr->annoText[0] != 0, &reset);
    Require(DoSizeStrCheck(gPrefsPtr->annoSizeStr, false), &reset);
    return reset;
}

// Whether the title bar of a window with its content at the position would be on a
// display. Without colour QuickDraw the strip is some pixels away from that; made
// alike, a dialog left at an edge there would be centred when settings are replaced.
static Boolean TitleIsOnDisplay(Point position, int width)
{
    Rect title;
    if (gEnvirInfo->hasColorQD) {
        SetRect(&title, static_cast<int16_t>(position.h + 3), static_cast<int16_t>(position.v - 15),
                static_cast<int16_t>(position.h + width - 3), static_cast<int16_t>(position.v - 4));
        return RectInRgn(&title, GetGrayRgn());
    }
    SetRect(&title, static_cast<int16_t>(position.h - 2), static_cast<int16_t>(position.v - 19),
            static_cast<int16_t>(position.h + width + 8), static_cast<int16_t>(position.v - 8));
    Rect overlap;
    return SectRect(&title, &gEnvirInfo->screenRect, &overlap);
}

Boolean CheckDlogPos(int16_t dialogID, Point *position)
{
    Handle dialog = GetResource('DLOG', dialogID);
    Need(dialog && GetHandleSize(dialog) >= static_cast<Size>(sizeof(BigRect)), kNoDialogToPlace,
         " (dlog resource)");
    // A 'DLOG' begins with its bounds.
    const BigRect *bounds = reinterpret_cast<const BigRect *>(*dialog);
    int width = bounds->right - bounds->left;
    int height = bounds->bottom - bounds->top;
    Boolean accepted = TitleIsOnDisplay(*position, width);
    if (!accepted) {
        const Rect &display = gEnvirInfo->screenRect;
        position->v = static_cast<int16_t>(display.top + (display.bottom - display.top - height) / 2);
        position->h = static_cast<int16_t>(display.left + (display.right - display.left - width) / 2);
    }
    ReleaseResource(dialog);
    return accepted;
}
