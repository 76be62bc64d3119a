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

// A section of the file: the menu whose choice it writes, 0 for one that is always
// written, and what writes it.
struct Section {
    int16_t menuID;
    OSErr (*write)(int16_t refNum);
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

// In the order of the file.
static const Section kSections[] = {
    {0, WriteBegin},        {kSpotMenu, WriteSpotOrCheck}, {kFreqMenu, WriteFreq},   {kAngleMenu, WriteAngle},
    {kFlatMenu, WriteFlat}, {kAnnoMenu, WriteAnno},        {kErrorMenu, WriteError}, {0, WriteEnd},
};

static Boolean IsDue(const Section &section)
{
    return section.menuID == 0 || section.menuID == kSpotMenu || IsChosen(section.menuID);
}

static const char *Writing(const Section &section)
{
    return section.menuID == 0 ? " (fswrite)" : SettingWithMenu(section.menuID)->writing;
}

// The frequency is written even after a failed spot function; the file is closed by
// then, so that fails too and is reported. Mended, users whose disk is full would
// see one report where they know two.
static Boolean WriteSections(int16_t refNum)
{
    const Section *failed = nullptr;
    for (const Section &section : kSections) {
        Boolean goesOn = !failed || (failed->menuID == kSpotMenu && section.menuID == kFreqMenu);
        if (goesOn && IsDue(section) && StepFailed(section.write(refNum), Writing(section)))
            failed = &section;
    }
    return failed == nullptr;
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
        if (WriteSections(refNum))
            FinishNewFile(gTotalLength);
        CloseNewFile();
    }
    if (gPrefsPtr->closeAfterMake == 1 && !gHaveWriteError)
        gDone = true;
    return 1;
}
