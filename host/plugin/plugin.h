// Loading the plug-in and calling its one entry point.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "plugin/resource_fork.h"
#include "riders/plugin.h"

namespace riders::plugin {

// A menu command that the plug-in registered, UTF-8.
struct MenuCommand {
    std::string group;
    std::string text;
    int number;
};

// The plug-in, from loading to the end of the Toolbox's session. The Toolbox
// must be started, and must outlive it. Only one at a time.
class Plugin {
public:
    // Loads the shared object and opens the resource fork beside it. PluginError
    // when either is missing or the interface has another version.
    explicit Plugin(const std::filesystem::path &sharedObject);
    ~Plugin();
    Plugin(const Plugin &) = delete;
    Plugin &operator=(const Plugin &) = delete;

    // Registers the menu commands. PluginError when the plug-in refuses.
    void startUp();
    const std::vector<MenuCommand> &commands() const;

    // The name of the file that it keeps its settings in, UTF-8.
    std::string settingsFileName() const;

    // The items of one of its menus, UTF-8; empty where there is no such menu.
    std::vector<std::string> menuItems(std::int16_t menu) const;

    // Calls the entry point and traces its result. toolbox::ProcessEnded passes
    // through when the plug-in ends the process.
    std::int32_t call(int selector, int command = 0);

private:
    void *library_ = nullptr;
    MainEntryProc entry_ = nullptr;
    std::optional<ResourceFork> fork_;
};

// The running program, and riders.so beside it.
std::filesystem::path programFile();
std::filesystem::path pluginBesideProgram();

}  // namespace riders::plugin
