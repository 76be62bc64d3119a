// The program's menu bar.
#pragma once

#include <optional>
#include <vector>

#include "app/display_settings.h"
#include "plugin/plugin.h"
#include "toolbox/menus.h"

namespace riders::app {

// What can be chosen; number is a plug-in command's number, or a depth.
struct Command {
    enum class Kind { none, about, open, close, quit, plugin, fullScreen, depth };
    Kind kind = Kind::none;
    int number = 0;
};

class Menus {
public:
    // Puts the menus into the bar and draws it. PluginError when one is missing
    // from the resources. The settings must outlive it.
    Menus(const std::vector<plugin::MenuCommand> &commands, const std::optional<DisplaySettings> &display);

    // Enables and marks the items as they should be, before a choice is made.
    void update(bool documentOpen);
    // The command for what MenuSelect or MenuKey returned.
    Command chosen(int32_t choice) const;

private:
    void addCommands();

    const std::vector<plugin::MenuCommand> &commands_;
    const std::optional<DisplaySettings> &display_;
};

}  // namespace riders::app
