// Which files the open dialogs list, for hosts.
#pragma once

#include <filesystem>
#include <functional>

namespace toolbox {

// Called with each file that an open dialog would list; false leaves it out. Must not call the Toolbox.
using ListedFilesProc = std::function<bool(const std::filesystem::path &file)>;
// From now on, for all open dialogs; empty, as at the start of the session: what their callers ask for. Where
// these ask for files of all types, the reply then has none.
void setListedFiles(ListedFilesProc wanted);
// Has the file dialog that is open list its folder anew. Nothing where there is none. For hooks of the dialog.
void listFilesAgain();

}  // namespace toolbox
