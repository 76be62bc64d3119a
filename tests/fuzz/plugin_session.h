// A session with the plug-in's own fork open and its records made, for fuzz targets that call its procedures. What
// dialogs say is confirmed.
#pragma once

#include <stdlib.h>

#include <filesystem>

#include "source/environment.h"
#include "source/initUtilities.h"
#include "source/settingsRecord.h"
#include "source/ktPrefs.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/headless.h"
#include "toolbox/host/session.h"
#include "toolbox/host/text.h"
#include "toolbox/host/user.h"
#include "toolbox/resources.h"

class PluginSession {
public:
    PluginSession()
    {
        char name[] = "/tmp/riders-fuzz-XXXXXX";
        if (!mkdtemp(name))
            abort();
        folder = name;
        std::filesystem::copy_file(RIDERS_BINARY_DIR "/._riders.so", folder / "._riders.so");
        std::filesystem::copy_file("/proc/self/status", folder / "riders.so");
        configuration.preferencesFolder = folder;
        configuration.startFolder = folder;
        toolbox::start(configuration, machine);
        const auto here = toolbox::folders::workingDirectory(folder);
        Str255 plugin;
        toolbox::setPascal(plugin, "riders.so");
        if (!here || HOpenResFile(*here, 0, plugin, 0) == -1)
            abort();
        gEnvirInfo = &environment;
        gPrefsPtr = &settings;
        gSavedPrefs = &saved;
        GetEnvirInfo();
        SetDefaults();
        user.onSurprise([this](int) {
            user.forgetRest();
            user.in(0);
            user.key("return");
            return true;
        });
    }
    ~PluginSession()
    {
        toolbox::stop();
        std::filesystem::remove_all(folder);
    }
    PluginSession(const PluginSession &) = delete;

    std::filesystem::path folder;
    toolbox::Configuration configuration;
    toolbox::HeadlessMachine machine;
    toolbox::ScriptedUser user{machine};
    EnvirInfo environment{};
    PrefsRec settings{}, saved{};
};
