// What the plug-in's tests are based on: the plug-in's own fork, open and
// current, in the test's folder, a scripted user, and a host that calls
// main_entry.
#pragma once

#include <functional>

#include "support/toolbox_test.h"
#include "toolbox/host/user.h"
#include "toolbox/resources.h"
#include "riders/plugin.h"
#include "source/initUtilities.h"
#include "source/ktPrefs.h"

// The short version text in resources/strings.res.
extern const std::string kPluginVersion;

class PluginTest : public ToolboxTest {
protected:
    void SetUp() override;
    void TearDown() override;
    // Restarts with the configuration as it is now: Toolbox, fork and globals.
    // Files and removed resources stay as they are.
    void restartPlugin();

    // Calls the plug-in as a host does; 0 when the process ended. Afterwards
    // nothing may be left behind.
    int32_t call(int selector, int command = 0);
    int32_t runCommand(int command) { return call(kSelectCommand, command); }
    // The same for anything else that may end the process; false when it did.
    bool guarded(const std::function<void()> &action);
    // What has been left behind since the plug-in's fork was opened.
    toolbox::LeakReport leftBehind() const;

    // For calling a module's procedures without main_entry: environment as
    // measured, settings at their defaults. The records belong to the test.
    void makeRecords();

    // Takes a resource out of the copied fork for the rest of the test.
    void removeResource(ResType type, int16_t id);
    // Adds a purgeable one, or replaces the bytes of an existing one.
    void addResource(ResType type, int16_t id, const std::string &bytes);
    void replaceResource(ResType type, int16_t id, const std::string &bytes);
    // A string of an 'STR#' or 'STR ' as it is in the fork.
    std::string text(int16_t listID, int16_t index) const;
    std::string message(int16_t id) const;
    // Presses the item of the error or warning dialog that will open.
    void dismiss(int16_t dialogID = 16129, int item = 1);
    // What a report's parameters line must be.
    static std::string params(const std::string &p0, const std::string &p1 = "", const std::string &p2 = "",
                              const std::string &p3 = "");

    std::filesystem::path preferencesFile() const;

    struct Registered {
        std::string group, text;
        int32_t number;
    };
    // What the plug-in registered, and the filter of its host.
    std::vector<Registered> registered;
    std::function<bool(DialogPtr, EventRecord *, int16_t *)> hostFilter;

    toolbox::ScriptedUser user{machine};
    bool ended = false;             // the plug-in ended the process
    EnvirInfo environment{};
    PrefsRec settings{}, savedSettings{};

private:
    void openPlugin();
    toolbox::LeakReport atOpening_;
};
