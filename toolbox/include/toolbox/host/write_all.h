// Writing bytes to a file, all of them.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string_view>

namespace toolbox {

// Writes the bytes to a file starting at that position, whatever signals interrupt
// and however few the system takes at a time; the descriptor's own position stays
// where it is. Returns 0, or the errno that ended it. done: how many bytes were
// written. For seekable files, not for pipes.
int writeAll(int descriptor, std::string_view bytes, off_t position, std::size_t &done);

}  // namespace toolbox
