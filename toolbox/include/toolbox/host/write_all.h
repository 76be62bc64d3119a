// Writing all of some bytes to a file.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string_view>

namespace toolbox {

// Writes the bytes from that position of a file on, whatever signals come between
// and however few the system takes at a time; the descriptor's own position stays
// where it is. 0, or the errno that ended it. done: how many bytes were written.
// For files that can be positioned, not for pipes.
int writeAll(int descriptor, std::string_view bytes, off_t position, std::size_t &done);

}  // namespace toolbox
