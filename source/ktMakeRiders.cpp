#include "source/ktMakeRiders.h"

#include "source/errors.h"
#include "source/needs.h"
#include "source/newFile.h"
#include "source/openDialogs.h"
#include "source/resourceNumbers.h"
#include "source/settings.h"
#include "source/utilities.h"
#include "toolbox/system.h"

enum { kSaveDialogWidth = 328, kSaveDialogHeight = 148 };
enum { kNameIndex = 1, kPromptIndex = 3 };

static Boolean AskWhereToSave(SFReply *reply)
{
    Point where;
    Str255 prompt, name;
    CenterSFPut(gCustomDialog, &where, kSaveDialogWidth, kSaveDialogHeight);
    NeedString(prompt, kSaveStrings, kPromptIndex);
    NeedString(name, kSaveStrings, kNameIndex);
    SFPPutFile(where, prompt, name, nullptr, reply, kSaveDialogID, nullptr);
    return reply->good;
}

// What writes the setting that is chosen in the menu, in the order of the file.
struct Section {
    int16_t menuID;
    OSErr (*write)(int16_t refNum);
};

static const Section kSections[] = {
    {kFreqMenu, WriteFreq}, {kAngleMenu, WriteAngle}, {kFlatMenu, WriteFlat},
    {kAnnoMenu, WriteAnno}, {kErrorMenu, WriteError},
};

static Boolean IsChosen(int16_t menuID)
{
    return IsWritten(*SettingWithMenu(menuID));
}

// With a frequency or an angle alone the printer's spot function stays, so the file
// checks the printer's screen first.
static OSErr WriteSpotOrCheck(int16_t refNum)
{
    if (IsChosen(kSpotMenu))
        return WriteSpot(refNum);
    if (IsChosen(kFreqMenu) || IsChosen(kAngleMenu))
        return WriteScreenCheck(refNum);
    return noErr;
}

// The frequency is written even after a failed spot function; the file is closed by
// then, so that fails too and is reported. Mended, users whose disk is full would
// see one report where they know two.
static Boolean WriteSections(int16_t refNum)
{
    Boolean going = !StepFailed(WriteSpotOrCheck(refNum), SettingWithMenu(kSpotMenu)->writing);
    for (const Section &section : kSections) {
        const Setting &setting = *SettingWithMenu(section.menuID);
        Boolean due = IsWritten(setting) && (going || section.menuID == kFreqMenu);
        if (due && StepFailed(section.write(refNum), setting.writing))
            going = false;
    }
    return going;
}

static void WriteFile(int16_t refNum)
{
    if (StepFailed(WriteBegin(refNum), " (fswrite)") || !WriteSections(refNum))
        return;
    if (!StepFailed(WriteEnd(refNum), " (fswrite)"))
        FinishNewFile(gTotalLength);
}

int16_t MakeCustomRiders()
{
    SFReply reply;
    int16_t refNum;
    gHaveWriteError = false;
    gTotalLength = 0;
    if (!AskWhereToSave(&reply))
        return 0;
    if (OpenNewFile(reply, &refNum)) {
        WriteFile(refNum);
        CloseNewFile();
    }
    if (gPrefsPtr->closeAfterMake == 1 && !gHaveWriteError)
        gDone = true;
    return 1;
}
