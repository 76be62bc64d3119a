// The program's menu bar.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/display_settings.h"
#include "plugin/plugin.h"
#include "toolbox/menus.h"

namespace riders::app {

// What can be chosen; number is a plug-in command's number, a depth, a place in a list from 0, how many pages or
// steps, or dots per inch.
struct Command {
    enum class Kind {
        none, about, open, close, quit, plugin, fullScreen, depth,
        recent, change, makeAgain, add, takeOut, save, proof, print, page, enlarge, dpi
    };
    Kind kind = Kind::none;
    int number = 0;
};

// What there is to choose at the moment.
struct Offers {
    struct Job {
        bool add = false, takeOut = false, save = false, next = false, previous = false, output = false;
        int dpi = 0;
    };
    std::vector<std::string> recent;  // names, UTF-8
    std::optional<Job> job;           // where one is open
    bool riders = false;              // it is a riders file
};

class Menus {
public:
    // Puts the menus into the bar and draws it. PluginError when one is missing
    // from the resources. The settings must outlive it.
    Menus(const std::vector<plugin::MenuCommand> &commands, const std::optional<DisplaySettings> &display);

    // Enables and marks the items as they should be, before a choice is made.
    void update(const Offers &offers);
    // The command for what MenuSelect or MenuKey returned.
    Command chosen(int32_t choice) const;

private:
    void addCommands();
    int firstOfRiders() const;
    void updateRecent(const std::vector<std::string> &names);

    const std::vector<plugin::MenuCommand> &commands_;
    const std::optional<DisplaySettings> &display_;
    std::vector<std::string> recent_;
};

}  // namespace riders::app
