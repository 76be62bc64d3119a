// The desktop's trash, from which a file manager brings files back.
#pragma once

#include <filesystem>

namespace riders::io {

// Moves the file there, by the rules for trash of freedesktop.org (1.0): to the user's own in
// $XDG_DATA_HOME/Trash or ~/.local/share/Trash, or, on another file system, to that one's .Trash/UID or
// .Trash-UID. A link is moved, not what it leads to. Throws Refusal where there is no trash for it; it is then
// where it was.
void moveToTrash(const std::filesystem::path &file);

}  // namespace riders::io
