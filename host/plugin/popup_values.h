// What the plug-in's popup menus offer, for shells and lists.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace riders::plugin {

// Its menus by their numbers.
enum class Popup { font = 16134, size = 16135, frequency = 16136, angle = 16137, flatness = 16139 };

// The values in the menu's order, UTF-8, as `riders make` takes them: numbers without their unit. Items that open
// a dialog or leave the choice to the printer are left out. No Toolbox session may be running. PluginError where
// the plug-in's fork cannot be read, std::bad_alloc.
std::vector<std::string> popupValues(const std::filesystem::path &plugin, Popup popup);

}  // namespace riders::plugin
