// Where a job goes: a file that is wholly new or as it was, or standard output.
#pragma once

#include <filesystem>

#include "io/bytes.h"

namespace riders::io {

// While one of these exists, writing to a pipe whose reader has gone is an
// error that can be reported, not the end of the process.
class Output {
public:
    // Opens for writing; an empty path is standard output. A symbolic link is
    // followed unless somebody else has put it where all may write; an existing file's permissions and
    // owner are kept, and a pipe or device is written to directly. Throws Refusal.
    explicit Output(const std::filesystem::path &path);
    ~Output();
    Output(const Output &) = delete;
    Output &operator=(const Output &) = delete;

    const OpenFile &file() const { return file_; }
    // Whether finish will wait until the bytes are on the disk.
    bool isSynced() const { return !target_.empty(); }
    // Gives it that file's mode and, where the user may, its owner; nothing where there is none.
    void takeAttributes(const std::filesystem::path &of);
    // Gives the file its name once its bytes are on the disk, and waits until the name is there, too. Until
    // then an existing one is as it was. Throws Refusal.
    void finish();

private:
    void openTemporary();
    void nameTemporary();

    OpenFile file_;
    std::filesystem::path target_;     // empty when writing straight to where the bytes go
    std::filesystem::path temporary_;  // its name, once it has one
    void (*oldPipeHandler_)(int);
};

// A file of these bytes, wholly new or as it was. Throws Refusal.
void writeFile(const std::filesystem::path &path, std::string_view bytes);
// The same with the bytes of another file, and the attributes of a third, if one is named and there.
void copyFile(const std::filesystem::path &from, const std::filesystem::path &to,
              const std::filesystem::path &like = {});
// Gives a file or folder that name in one step; what had it before is gone. Throws Refusal.
void moveTo(const std::filesystem::path &from, const std::filesystem::path &to);

}  // namespace riders::io
