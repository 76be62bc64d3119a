#include "source/ktPlugMain.h"

#include <type_traits>

#include "source/environment.h"
#include "source/errors.h"
#include "source/initUtilities.h"
#include "source/ktAboutDlg.h"
#include "source/ktAnnoDlg.h"
#include "source/ktColor.h"
#include "source/ktCustomDlg.h"
#include "source/ktDeleteRiders.h"
#include "source/ktFreqDlg.h"
#include "source/ktPrefs.h"
#include "source/ktSpot.h"
#include "source/reasons.h"
#include "source/resourceNumbers.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"

namespace {

constexpr int16_t kGroupIndex = 1;
constexpr int16_t kFirstCommandIndex = 2;
constexpr int32_t kCommands = 2;

void DisposeEnvironment()
{
    DisposePtr(reinterpret_cast<Ptr>(gEnvirInfo));
    gEnvirInfo = nullptr;
}

void DisposeSettings()
{
    DisposePtr(reinterpret_cast<Ptr>(gPrefsPtr));
    gPrefsPtr = nullptr;
}

// There is no memory for a record, so the report uses a spare one.
void ReportNoRecord()
{
    static EnvirInfo spare;
    EnvirInfo *kept = gEnvirInfo;
    gEnvirInfo = &spare;
    GetEnvirInfo();
    TheErrorHandler(kErrorDialog, kSomethingMissing, kNoRecordBlock, ql_quorum_passtr(" (newptr)"), false);
    gEnvirInfo = kept;
}

// The records are all zero at first, so that a report made while they are being
// filled is not coloured. False after a report; then nothing stays allocated.
Boolean MakeEnvironment()
{
    gPrefsPtr = nullptr;
    gSavedPrefs = nullptr;
    gEnvirInfo = reinterpret_cast<EnvirInfo *>(NewPtrClear(sizeof(EnvirInfo)));
    if (!gEnvirInfo)
        ReportNoRecord();
    return gEnvirInfo != nullptr;
}

Boolean OpenSettings()
{
    if (!MakeEnvironment())
        return false;
    gPrefsPtr = reinterpret_cast<PrefsRec *>(NewPtrClear(sizeof(PrefsRec)));
    if (!gPrefsPtr) {
        ReportNoRecord();
        DisposeEnvironment();
        return false;
    }
    GetEnvirInfo();
    GetPrefs();
    return true;
}

// If the settings could not be written, the spot text has not been freed yet.
void CloseSettings()
{
    FreeSpot();
    DisposeSettings();
    DisposeEnvironment();
}

Boolean GetMenuString(Str255 text, int16_t index)
{
    GetIndString(text, kCommandStrings, index);
    return text[0] != 0;
}

Boolean RegisterCommands(const HostProcs *hostProcs)
{
    auto addMenuItem = hostProcs->addMenuItem.as<std::remove_pointer_t<AddMenuItemProc>>();
    Str255 group, text;
    if (!GetMenuString(group, kGroupIndex))
        return false;
    for (int32_t command = 0; command < kCommands; ++command) {
        if (!GetMenuString(text, static_cast<int16_t>(kFirstCommandIndex + command)))
            return false;
        addMenuItem(group, text, command);
    }
    return true;
}

int32_t StartUp(const MessageBlock *block)
{
    if (!MakeEnvironment())
        return 1;
    GetEnvirInfo();
    Boolean registered = RegisterCommands(block->hostProcs.as<HostProcs>());
    if (!registered)
        TheErrorHandler(kErrorDialog, kSomethingMissing, kNoString, ql_quorum_passtr(" (STR# resource)"), false);
    DisposeEnvironment();
    return registered ? 0 : 1;
}

void ShowAbout()
{
    if (!OpenSettings())
        return;
    HandleAboutDialog();
    WritePrefs();
    CloseSettings();
}

void RunSettingsDialog(MessageBlock *block)
{
    gSavedPrefs = reinterpret_cast<PrefsRec *>(NewPtrClear(sizeof(PrefsRec)));
    if (!gSavedPrefs) {
        ReportNoRecord();
        return;
    }
    HandleCustomDialog(block);
    DisposePtr(reinterpret_cast<Ptr>(gSavedPrefs));
    gSavedPrefs = nullptr;
}

void RunCommand(MessageBlock *block)
{
    if (!OpenSettings())
        return;
    if (gEnvirInfo->hasColorQD)
        GetKTColor();
    // An unknown command still rewrites the settings file, and says nothing: a
    // newer host may send commands that this plug-in does not have.
    if (block->command == kCommandSettings)
        RunSettingsDialog(block);
    else if (block->command == kCommandRemove)
        RemoveRiders();
    WritePrefs();
    if (gEnvirInfo->hasColorQD)
        DisposeKTColor();
    CloseSettings();
}

// All are empty so far. The order is fixed, for a module that will have work at
// start-up.
void CallInitHooks()
{
    CustomInit();
    AnnoInit();
    FreqInit();
    AboutInit();
    CreditsInit();
    ErrorInit();
}

}  // namespace

__attribute__((visibility("default"))) int32_t main_entry(MessageBlock *block)
{
    CallInitHooks();
    gHaveWriteError = false;
    // Unsigned, so that negative selectors are refused with the large ones. No message:
    // an older plug-in must work with a newer host.
    uint16_t selector = static_cast<uint16_t>(static_cast<int16_t>(block->selector));
    if (selector >= 5)
        return 0;
    switch (selector) {
    case kSelectIdentify: return kRidersInterface;
    case kSelectStartUp: return StartUp(block);
    case kSelectAbout: ShowAbout(); break;
    case kSelectCommand: RunCommand(block); break;
    }
    return 0;
}
