// The settings command, used by a person, from the host's call to its return.
#pragma once

#include "support/plugin_test.h"

#include <cstring>

#include "source/dotShapes.h"
#include "source/ktAnnoDlg.h"
#include "source/ktCustomDlg.h"
#include "source/ktFreqDlg.h"
#include "source/ktSpot.h"
#include "source/popup.h"
#include "support/riders_pieces.h"
#include "toolbox/files.h"
#include "toolbox/memory.h"

namespace fs = std::filesystem;

namespace settings_dialog {

enum { kMake = 1, kCancel = 2, kFreq = 4, kAngle, kSpot, kFlat, kAnno, kError };
// "Import..." follows the dot shapes and a divider.
constexpr int16_t kImport = kFirstShapeItem + kDotShapeCount + 1;

class SettingsDialog : public PluginTest {
protected:
    void SetUp() override
    {
        PluginTest::SetUp();
        user.in(kCustomDialogID);
    }

    int32_t run() { return runCommand(kCommandSettings); }
    fs::path made() const { return folder / "made"; }

    // The settings as they are stored now.
    PrefsRec stored()
    {
        PrefsRec kept{};
        makeRecords();
        GetPrefs();
        kept = settings;
        if (gSpotHandle) {
            spotText.assign(*gSpotHandle, gSpotLength);
            DisposeHandle(gSpotHandle);
            gSpotHandle = nullptr;
        } else {
            spotText.clear();
        }
        gPrefsPtr = nullptr;
        gSavedPrefs = nullptr;
        gEnvirInfo = nullptr;
        return kept;
    }

    // Stores settings as an earlier run would have left them.
    void store(const std::function<void(PrefsRec &)> &change, const std::string &spot = "")
    {
        makeRecords();
        change(settings);
        if (!spot.empty()) {
            gSpotHandle = NewHandle(static_cast<Size>(spot.size()));
            BlockMove(spot.data(), *gSpotHandle, static_cast<Size>(spot.size()));
            gSpotLength = static_cast<int32_t>(spot.size());
            settings.spotImported = 1;
            settings.spotItem = kImport;
            toolbox::setPascal(settings.spotName, "Old spot", 63);
        }
        WritePrefs();
        gPrefsPtr = nullptr;
        gSavedPrefs = nullptr;
        gEnvirInfo = nullptr;
    }

    fs::path forkOfPreferences() const
    {
        return preferencesFile().parent_path() / ("._" + preferencesFile().filename().string());
    }

    void writeSpotFile(const std::string &name, const std::string &body)
    {
        writeFile(folder / name, "%!KT1_Spot\r" + body);
    }

    void importSpot(const std::string &name)
    {
        user.in(kCustomDialogID);
        user.choose(kSpot, "Import...");
        dismiss(16132);
        user.answerOpen(folder / name);
        user.in(kCustomDialogID);
    }

    void chooseOneOfEach()
    {
        user.choose(kFreq, "60 lpi");
        user.choose(kAngle, "22.5°");
        user.choose(kSpot, "Diamond");
        user.choose(kFlat, "2");
        user.choose(kAnno, "Annotation");
        user.choose(kError, "Print errors");
    }

    void cancel() { user.in(kCustomDialogID); user.press(kCancel); }

    void make()
    {
        user.in(kCustomDialogID);
        user.press(kMake);
        user.in(0);
        user.answerSave(made());
    }

    int16_t curItem(Handle popup) { return PopupRecord(popup)->curItem; }
    int16_t markOf(Handle popup, int16_t item)
    {
        int16_t mark = 0;
        GetItemMark(PopupRecord(popup)->menu, item, &mark);
        return mark;
    }

    std::string spotText;
};

}  // namespace settings_dialog
