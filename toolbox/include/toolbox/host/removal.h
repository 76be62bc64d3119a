// What becomes of files that are deleted, for hosts.
#pragma once

#include <filesystem>
#include <functional>

namespace toolbox {

// Called before FSDelete or HDelete deletes a file that can be deleted. False: it is deleted. True: it stays, or
// is elsewhere by now, and the call returns noErr all the same. May show dialogs.
using RemovalProc = std::function<bool(const std::filesystem::path &file)>;
// From now on; empty, as at the start of the session: files are deleted.
void setRemoval(RemovalProc removal);

}  // namespace toolbox
