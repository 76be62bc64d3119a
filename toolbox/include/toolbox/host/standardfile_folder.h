// Where Standard File's dialogs open, for hosts.
#pragma once

#include <filesystem>

namespace toolbox {

// The next dialog opens in this folder, until the user goes elsewhere: as if a
// file there had been the last one chosen. If the folder does not exist, the nearest
// one above it that does is used; one that cannot be looked at is not left for
// another. Between start and stop of the Toolbox.
void setStandardFileFolder(const std::filesystem::path &folder);
// The folder set here, or the one in which a file was last chosen, whichever came
// later; empty before either.
std::filesystem::path standardFileFolder();

}  // namespace toolbox
