// Linux paths and what the File Manager calls them, for hosts.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "toolbox/types.h"

namespace toolbox::folders {

// The working directory number (-32000 to -1) for a folder; the same number for
// the same folder, however written, while the Toolbox runs. Nothing when there
// is no such folder or all numbers are in use.
std::optional<std::int16_t> workingDirectory(const std::filesystem::path &folder);
// The folder a vRefNum and directory number stand for; empty when unknown.
std::filesystem::path pathOf(std::int16_t vRefNum, std::int32_t dirID = 0);
// The path of the file that the File Manager would open by that name or, if there
// is none, create; empty when there is no such place or name.
std::filesystem::path pathOf(std::int16_t vRefNum, std::int32_t dirID, const unsigned char *name);
// FindFolder's 'pref' where a session has no other: $XDG_CONFIG_HOME/riders or ~/.config/riders. Need not be there,
// and may be asked for with no session running.
std::filesystem::path usersPreferences();
// FindFolder's 'pref' in this session, and another one from now on. Between start and stop of the Toolbox.
std::filesystem::path preferences();
void usePreferences(const std::filesystem::path &folder);
// The Mac OS Roman name (63 bytes at most, no length byte) by which the File
// Manager will find the Linux name in that folder. A name that fits is only
// converted (a ':' in it becomes '/'). One that does not fit gets an alias that
// stays the same while the Toolbox runs: what can be shown of it, '#', a number
// and its extension. So does a name whose converted form is another file's.
std::string macName(const std::filesystem::path &folder, const std::string &linuxName);

}  // namespace toolbox::folders
