// A file in memory that holds the bytes a fuzz target was given, for readers that take a path.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <string>

// The same file each time; returns its path.
inline std::string memoryFile(const void *bytes, size_t size)
{
    static const int file = memfd_create("fuzzed", 0);
    if (ftruncate(file, 0) != 0 || pwrite(file, bytes, size, 0) != static_cast<ssize_t>(size))
        abort();
    return "/proc/self/fd/" + std::to_string(file);
}
