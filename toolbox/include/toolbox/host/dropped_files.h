// Files that the person dropped on a display, for hosts.
//
// A program learns of them when it waits: WaitNextEvent ends early with a null event. Dialogs do not look at them;
// what is dropped while one is open is kept.
#pragma once

#include <filesystem>
#include <optional>

namespace toolbox {

// The next one, in the order in which they were dropped; nothing when there are no more. Between start and stop of
// the Toolbox.
std::optional<std::filesystem::path> takeDroppedFile();

}  // namespace toolbox
