// Files that share blocks of the disk, where the file system can do that (XFS, Btrfs): neither time nor space goes
// into a copy.
#pragma once

#include <cstddef>

#include "io/bytes.h"

namespace riders::io {

// No file system's blocks are longer, in bytes.
inline constexpr size_t kMostBlock = size_t(64) << 10;

// The length of the blocks that could be shared by two open files; 0 where nothing can or need be shared: unless
// both are ordinary files, `in` has been read from its beginning and has much behind the offset `from`, and `out`
// is empty. Whether the file system can share them, only shareRest tells.
size_t sharedBlock(const OpenFile &in, size_t read, size_t from, const OpenFile &out);

// Makes all of `in` from one offset on appear in `out` at another; both are whole blocks. The positions of both
// stay. False where that cannot be: `out` is then empty. Throws Refusal where it cannot be emptied.
bool shareRest(const OpenFile &in, size_t from, const OpenFile &out, size_t to);
// Both go to their ends, as if all had been read and written. Throws Refusal.
void passRest(const OpenFile &in, const OpenFile &out);

}  // namespace riders::io
