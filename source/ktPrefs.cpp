#include "ktPrefs.h"

#include <algorithm>

#include "errors.h"
#include "initUtilities.h"
#include "ktAnnoDlg.h"
#include "ktCustomDlg.h"
#include "ktFreqDlg.h"
#include "ktSpot.h"
#include "strings.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"
#include "toolbox/menus.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"

PrefsRec *gPrefsPtr = nullptr;
PrefsRec *gSavedPrefs = nullptr;

namespace {

constexpr int16_t kPrefsStrings = 16131;
constexpr int16_t kFileNameIndex = 1;
constexpr OSType kFileType = 'pref';
constexpr OSType kFileCreator = 'RIDR';
constexpr ResType kRecordType = 'STUF';
constexpr int16_t kRecordID = 128;
constexpr Size kReserve = 10240;
constexpr int kLastFont = 13;

// Where the preferences file is, or would be.
struct PrefsFile {
    int16_t vRefNum = 0;
    int32_t dirID = 0;
    Str255 name;
};

// Whether there is a Preferences folder, which is made if need be.
Boolean LocateFolder(PrefsFile *file)
{
    return FindFolder(kOnSystemDisk, kPreferencesFolderType, kCreateFolder, &file->vRefNum, &file->dirID) == noErr;
}

// A text of the plug-in's that must be there.
void GetPrefsString(Str255 text, int16_t index)
{
    GetIndString(text, kPrefsStrings, index);
    if (text[0] == 0)
        TheErrorHandler(kErrorDialog, 16129, 90, ql_quorum_passtr(" (STR# resource)"), true);
}

void SetDefaultText(StringPtr field, int16_t index, int16_t capacity)
{
    Str255 text;
    GetPrefsString(text, index);
    CopyPStr(text, field, capacity);
}

void ZeroBehindText(StringPtr text, int capacity)
{
    for (int i = text[0] + 1; i <= capacity; ++i)
        text[i] = 0;
}

// Validity of a stored record ------------------------------------------------

struct PopupRule {
    BigInt16 PrefsRec::*item;
    int16_t menuID;
    int16_t report;
};

constexpr PopupRule kPopupRules[] = {
    {&PrefsRec::freqItem, 16136, 31}, {&PrefsRec::angleItem, 16137, 32}, {&PrefsRec::spotItem, 16138, 33},
    {&PrefsRec::flatItem, 16139, 34}, {&PrefsRec::annoItem, 16140, 35},  {&PrefsRec::errorItem, 16141, 36},
};

void ApplyDefaults(Boolean *reset)
{
    SetDefaults();
    *reset = true;
}

// For the rules that are of no interest once the defaults are in place.
void Require(Boolean rule, Boolean *reset)
{
    if (!rule && !*reset)
        ApplyDefaults(reset);
}

void ReportPopup(const PopupRule &rule, Boolean *reset)
{
    TheErrorHandler(kWarningDialog, 16130, rule.report, ql_quorum_passtr(" (PrefsCheck)"), false);
    ApplyDefaults(reset);
}

void CheckPopup(const PopupRule &rule, Boolean *reset)
{
    MenuHandle menu = GetMenu(rule.menuID);
    if (!menu)
        TheErrorHandler(kErrorDialog, 16129, 7, ql_quorum_passtr(" (menu resource)"), true);
    int16_t count = CountMItems(menu);
    if (gPrefsPtr->*rule.item <= 0)
        ReportPopup(rule, reset);
    else if (gPrefsPtr->*rule.item > count && !*reset)
        ReportPopup(rule, reset);
    DeleteMenu(rule.menuID);
    ReleaseResource(menu);
}

void CheckAnnoFont(Boolean *reset)
{
    if (gPrefsPtr->annoFontItem < 1)
        ApplyDefaults(reset);
    else
        Require(gPrefsPtr->annoFontItem <= kLastFont, reset);
}

// Reading --------------------------------------------------------------------

enum RecordFound { kNoFile, kNoRecord, kRecordRead };

// Puts the stored record into the live one. A record that is too short leaves
// the rest zero, which no valid record has.
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

// Reads the length bytes of the open file into a new gSpotHandle.
void ReadSpotText(int16_t refNum, int32_t length, Boolean quiet)
{
    gSpotHandle = NewHandleClear(length);
    if (!gSpotHandle) {
        SpotTrouble(quiet, 16154, 98, " (newhandle)");
        gPrefsPtr->spotItem = 1;
        return;
    }
    int32_t count = length;
    MoveHHi(gSpotHandle);
    HLock(gSpotHandle);
    OSErr error = FSRead(refNum, &count, *gSpotHandle);
    HUnlock(gSpotHandle);
    if (error == noErr) {
        gPrefsPtr->spotImported = true;
        gSpotLength = length;
        return;
    }
    // Here the popup keeps its item.
    DisposeHandle(gSpotHandle);
    gSpotHandle = nullptr;
    SpotTrouble(quiet, 16153, 97, " (fsread)");
}

void LoadOpenSpotText(int16_t refNum, Boolean quiet)
{
    int32_t length = 0;
    if (GetEOF(refNum, &length) != noErr) {
        SpotTrouble(quiet, 16153, 100, " (eof)");
    } else if (length <= 0) {
        gPrefsPtr->spotImported = false;
    } else if (length >= MaxMem(nullptr) - kReserve) {
        SpotTrouble(quiet, 16154, 99, " (maxmem)");
        gPrefsPtr->spotItem = 1;
    } else {
        ReadSpotText(refNum, length, quiet);
    }
}

void LoadSpotText(const PrefsFile &file, Boolean quiet)
{
    int16_t refNum = 0;
    if (HOpen(file.vRefNum, file.dirID, file.name, fsCurPerm, &refNum) != noErr) {
        SpotTrouble(quiet, 16153, 101, " (fsopen)");
        return;
    }
    LoadOpenSpotText(refNum, quiet);
    FSClose(refNum);
}

// Writing --------------------------------------------------------------------

void WriteSpotText(const PrefsFile &file)
{
    int16_t refNum = 0;
    if (HOpen(file.vRefNum, file.dirID, file.name, fsCurPerm, &refNum) == noErr) {
        int32_t count = gSpotLength;
        MoveHHi(gSpotHandle);
        HLock(gSpotHandle);
        OSErr error = FSWrite(refNum, &count, *gSpotHandle);
        HUnlock(gSpotHandle);
        if (error == noErr) {
            SetEOF(refNum, gSpotLength);
            FlushVol(nullptr, file.vRefNum);
        } else {
            SetEOF(refNum, 0);
            gPrefsPtr->spotImported = false;
        }
        FSClose(refNum);
    }
    DisposeHandle(gSpotHandle);
    gSpotHandle = nullptr;
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
    stored = Get1Resource(kRecordType, kRecordID);
    if (!stored)
        return;
    BlockMove(gPrefsPtr, *stored, sizeof(PrefsRec));
    ChangedResource(stored);
    WriteResource(stored);
    ReleaseResource(stored);
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
    gSpotHandle = nullptr;
    gSpotLength = 0;
    PrefsFile file;
    Boolean haveFolder = LocateFolder(&file);
    GetPrefsString(file.name, kFileNameIndex);

    Boolean quiet = false;
    switch (haveFolder ? ReadRecord(file) : kNoFile) {
    case kNoFile:
        SetDefaults();
        break;
    case kNoRecord:
        TheErrorHandler(kWarningDialog, 16130, 50, ql_quorum_passtr(" (GetPrefs)"), false);
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
    GetPrefsString(file.name, kFileNameIndex);
    if (!LocateFolder(&file))
        return;
    // Always built anew, so that nothing of an older file stays behind.
    HDelete(file.vRefNum, file.dirID, file.name);
    if (HCreate(file.vRefNum, file.dirID, file.name, kFileCreator, kFileType) != noErr)
        return;
    if (gPrefsPtr->spotImported && gSpotLength > 0 && gSpotHandle)
        WriteSpotText(file);
    WriteRecordFile(file);
}

void SetDefaults()
{
    PrefsRec *prefs = gPrefsPtr;
    CopyPStr(gEnvirInfo->versionStr, prefs->prefsVersion, 31);
    prefs->freqItem = 5;
    prefs->angleItem = 6;
    prefs->spotItem = 1;
    prefs->flatItem = 1;
    prefs->annoItem = 1;
    prefs->errorItem = 1;
    prefs->annoFontItem = 5;
    prefs->spotImported = 0;

    SetDefaultText(prefs->spotName, 6, 63);
    SetDefaultText(prefs->freqStr, 2, 15);
    SetDefaultText(prefs->angleStr, 3, 15);
    SetDefaultText(prefs->flatStr, 4, 15);
    SetDefaultText(prefs->annoText, 5, 255);
    SetDefaultText(prefs->annoSizeStr, 7, 15);

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
    ZeroBehindText(gPrefsPtr->prefsVersion, 31);
    ZeroBehindText(gPrefsPtr->freqStr, 15);
    ZeroBehindText(gPrefsPtr->angleStr, 15);
    ZeroBehindText(gPrefsPtr->flatStr, 15);
    ZeroBehindText(gPrefsPtr->annoSizeStr, 15);
    ZeroBehindText(gPrefsPtr->annoText, 255);
    ZeroBehindText(gPrefsPtr->spotName, 63);
}

Boolean DoPrefsResCheck()
{
    Boolean reset = false;
    Require(ComparePStr(gPrefsPtr->prefsVersion, gEnvirInfo->versionStr), &reset);
    for (const PopupRule &rule : kPopupRules)
        CheckPopup(rule, &reset);
    Require(!gPrefsPtr->spotImported || gPrefsPtr->spotName[0] != 0, &reset);
    Require(gPrefsPtr->annoText[0] != 0, &reset);
    Require(DoFreqStrCheck(gPrefsPtr->freqStr, kFreqKind, false), &reset);
    Require(DoFreqStrCheck(gPrefsPtr->angleStr, kAngleKind, false), &reset);
    Require(DoFreqStrCheck(gPrefsPtr->flatStr, kFlatKind, false), &reset);
    CheckAnnoFont(&reset);
    // Asked twice, and kept so.
    Require(gPrefsPtr->annoText[0] != 0, &reset);
    Require(DoSizeStrCheck(gPrefsPtr->annoSizeStr, false), &reset);
    return reset;
}

// Whether the title bar of a window with its content at the position would be
// on screen.
static Boolean TitleIsOnScreen(Point position, int width)
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
    if (!dialog || GetHandleSize(dialog) < static_cast<Size>(sizeof(BigRect)))
        TheErrorHandler(kErrorDialog, 16129, 81, ql_quorum_passtr(" (dlog resource)"), true);
    // A 'DLOG' begins with its bounds.
    const BigRect *bounds = reinterpret_cast<const BigRect *>(*dialog);
    int width = bounds->right - bounds->left;
    int height = bounds->bottom - bounds->top;
    Boolean accepted = TitleIsOnScreen(*position, width);
    if (!accepted) {
        const Rect &screen = gEnvirInfo->screenRect;
        position->v = static_cast<int16_t>(screen.top + (screen.bottom - screen.top - height) / 2);
        position->h = static_cast<int16_t>(screen.left + (screen.right - screen.left - width) / 2);
    }
    ReleaseResource(dialog);
    return accepted;
}
