// Locks on open files and folders, which end with their process. Nothing else in the host takes any.
#pragma once

#include <filesystem>

#include "io/bytes.h"

namespace riders::io {

enum class Lock {
    taken,      // by this process, for as long as it has the file open
    anothers,   // another process has it
    impossible  // the file system knows no locks
};

// Does not wait.
Lock tryLock(int descriptor);

// Waits until no other process has the folder's lock, and takes it for as long as the file returned is open; where
// the file system knows no locks, there is none. Throws Refusal, also when another process keeps it for a minute.
OpenFile lockedFolder(const std::filesystem::path &folder);

}  // namespace riders::io
