// The settings dialog made but not run: its popups are there, and whatever
// needs them can be called.
#pragma once

#include "support/plugin_test.h"

class OpenSettings : public PluginTest {
protected:
    void SetUp() override;
    void TearDown() override;
    // Once more, with the configuration as it is now.
    void reopen();
    void open();
    // Closes it as the dialog itself does, and expects nothing to be left.
    void close();

    // A choice in one of the six popups, in settings and popup alike.
    void choose(BigInt16 PrefsRec::*setting, int16_t item);
    void chooseLast(BigInt16 PrefsRec::*setting);
    // All six on their first item.
    void chooseNothing();
    // A spot function as if imported.
    void importSpot(const std::string &body, const std::string &name = "Mine");

private:
    bool isOpen_ = false;
};

Handle popupOf(BigInt16 PrefsRec::*setting);
