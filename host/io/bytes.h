// Moving bytes between files, pipes and devices, in the kernel where possible.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace riders::io {

// An open file with the name it has in messages. Closed at the end unless it
// is one of the process's own standard files.
class OpenFile {
public:
    OpenFile() = default;
    OpenFile(int descriptor, std::string name) : descriptor_(descriptor), name_(std::move(name)) {}
    ~OpenFile();
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;
    OpenFile(OpenFile &&other) noexcept;
    OpenFile &operator=(OpenFile &&other) noexcept;

    int descriptor() const { return descriptor_; }
    const std::string &name() const { return name_; }
    // Closes now. Throws Refusal when only now the system finds that it could not write.
    void close();

private:
    int descriptor_ = -1;
    std::string name_;
};

// Opens for reading; an empty path is standard input. Throws Refusal.
OpenFile openInput(const std::string &path);

// Opens a file that can be read again and from anywhere; never waits for one. Throws Refusal, also for pipes and
// devices.
OpenFile openOrdinaryFile(const std::string &path);

// Reads until the buffer is full or the input ends; returns the number of bytes read. Throws Refusal.
size_t readFully(const OpenFile &in, char *buffer, size_t size);

// All bytes of an ordinary file. Throws Refusal.
std::string contentsOf(const std::string &path);

// Throws Refusal.
void writeAll(const OpenFile &out, std::string_view bytes);

// Copies from the current position of `in` to its end. Throws Refusal. With `toDisk` an ordinary file is on its way
// to the disk while the rest is copied, so that waiting for it at the end takes less time.
void copyRest(const OpenFile &in, const OpenFile &out, bool toDisk = false);

// True where both are the same ordinary file.
bool sameFile(int one, int other);

}  // namespace riders::io
