// The settings dialog created but not run: its popups exist, so whatever needs them
// can be called.
#pragma once

#include "support/plugin_test.h"

class OpenSettings : public PluginTest {
protected:
    void SetUp() override;
    void TearDown() override;
    // Opens it again, in a session as configured now.
    void reopen();
    void open();
    // Closes it as the dialog itself does, and expects that nothing stays allocated.
    void close();

    // Chooses an item of one of the six popups, in the settings and in the popup.
    void choose(BigInt16 PrefsRec::*setting, int16_t item);
    void chooseLast(BigInt16 PrefsRec::*setting);
    // Sets all six to their first item.
    void chooseNothing();
    // Sets up a spot function as if it had been imported.
    void importSpot(const std::string &body, const std::string &name = "Mine");

private:
    bool isOpen_ = false;
};

Handle popupOf(BigInt16 PrefsRec::*setting);
