#include "source/open_settings.h"

#include "source/ktCustomDlg.h"
#include "source/ktSpot.h"
#include "source/popup.h"
#include "toolbox/memory.h"

void OpenSettings::SetUp()
{
    PluginTest::SetUp();
    open();
}

void OpenSettings::TearDown()
{
    if (isOpen_ && !ended)
        close();
    PluginTest::TearDown();
}

void OpenSettings::reopen()
{
    restartPlugin();
    open();
}

void OpenSettings::open()
{
    makeRecords();
    gCustomDialog = GetNewDialog(kCustomDialogID, nullptr, reinterpret_cast<WindowPtr>(-1));
    ASSERT_NE(gCustomDialog, nullptr);
    SetPort(gCustomDialog);
    SetupCustomDialog();
    SaveCustomSettings();
    isOpen_ = true;
}

void OpenSettings::close()
{
    isOpen_ = false;
    HandleCustomGoAway();
    if (gSpotHandle)
        DisposeHandle(gSpotHandle);
    gSpotHandle = nullptr;
    EXPECT_EQ(leftBehind().text(), toolbox::LeakReport{}.text());
}

Handle popupOf(BigInt16 PrefsRec::*setting)
{
    if (setting == &PrefsRec::freqItem)
        return gFreqPopInfo;
    if (setting == &PrefsRec::angleItem)
        return gAnglePopInfo;
    if (setting == &PrefsRec::spotItem)
        return gSpotPopInfo;
    if (setting == &PrefsRec::flatItem)
        return gFlatPopInfo;
    return setting == &PrefsRec::annoItem ? gAnnoPopInfo : gErrorPopInfo;
}

void OpenSettings::choose(BigInt16 PrefsRec::*setting, int16_t item)
{
    settings.*setting = item;
    SetPopupMenuItem(popupOf(setting), item);
}

void OpenSettings::chooseLast(BigInt16 PrefsRec::*setting)
{
    choose(setting, CountMItems(PopupRecord(popupOf(setting))->menu));
}

void OpenSettings::chooseNothing()
{
    for (auto setting : {&PrefsRec::freqItem, &PrefsRec::angleItem, &PrefsRec::spotItem, &PrefsRec::flatItem,
                         &PrefsRec::annoItem, &PrefsRec::errorItem})
        choose(setting, 1);
}

void OpenSettings::importSpot(const std::string &body, const std::string &name)
{
    gSpotHandle = NewHandle(static_cast<Size>(body.size()));
    ASSERT_NE(gSpotHandle, nullptr);
    BlockMove(body.data(), *gSpotHandle, static_cast<Size>(body.size()));
    gSpotLength = static_cast<int32_t>(body.size());
    settings.spotImported = 1;
    toolbox::setPascal(settings.spotName, name, 63);
    chooseLast(&PrefsRec::spotItem);
}
