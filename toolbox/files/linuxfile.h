// The few things the File Manager asks of Linux, with result codes for errno.
#pragma once

#include <sys/stat.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "toolbox/types.h"

namespace toolbox::files {

// What was being tried: a refusal for lack of rights has a different code for each.
enum class Aim { open, change };

OSErr errorOf(int number, Aim aim);
// The same for a call on a path: what is missing may be the file or its folder.
OSErr errorOf(int number, Aim aim, const std::filesystem::path &path);

class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor &&other) noexcept : number_(other.release()) {}
    Descriptor &operator=(Descriptor &&other) noexcept;
    ~Descriptor();
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    int number() const { return number_; }
    bool open() const { return number_ >= 0; }
    int release();
    // errno if the last bytes could not be written, otherwise 0.
    int close();

private:
    int number_;
};

// Never waits (as opening a pipe would); other programs do not inherit the descriptor.
Descriptor openPath(const std::filesystem::path &path, int flags);

// noErr, the regular file's status; fnfErr for anything else.
OSErr statusOf(const std::filesystem::path &path, Aim aim, struct stat &status);
// Read-only files are locked, to root as well.
inline bool isLocked(const struct stat &status)
{
    return !(status.st_mode & S_IWUSR);
}

OSErr writeAt(int descriptor, const char *bytes, std::size_t count, off_t position, std::size_t &done);
OSErr readAt(int descriptor, char *bytes, std::size_t count, off_t position, std::size_t &done);

// The bytes of a regular file; ioErr when it is longer than limit.
OSErr readWhole(const std::filesystem::path &path, std::size_t limit, std::string &bytes);
// Writes a temporary file in the same folder, then renames it: the file is the old
// one or the new one, and on failure no temporary is left. sync: the same holds
// when the power fails, at the price of waiting for the disk.
OSErr replaceWhole(const std::filesystem::path &path, const std::string &bytes, mode_t mode, bool sync);

// Best effort: not every file system can.
void syncFolder(const std::filesystem::path &folder);

}  // namespace toolbox::files
