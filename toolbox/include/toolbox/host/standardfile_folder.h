// Where Standard File's dialogs open, for hosts.
#pragma once

#include <filesystem>

namespace toolbox {

// The next dialog opens in this folder, until the user goes elsewhere: as if a
// file there had been the last one chosen. A folder that is not there gives
// the nearest one above that is. Between start and stop of the Toolbox.
void setStandardFileFolder(const std::filesystem::path &folder);
// The folder set so, or that of the dialog in which a file was chosen last,
// whichever came later; empty before either.
std::filesystem::path standardFileFolder();

}  // namespace toolbox
