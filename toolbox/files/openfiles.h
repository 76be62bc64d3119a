// Files that are open, by reference number.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <utility>

#include "files/linuxfile.h"
#include "toolbox/types.h"

namespace toolbox::files {

struct OpenFile {
    Descriptor descriptor;
    bool writable = false;
    bool unflushed = false;  // something was written that may not be on the disk
    bool written = false;    // since it was opened
    bool lookedLikeText = false;
    std::int64_t mark = 0;
    dev_t device = 0;
    ino_t inode = 0;
    std::filesystem::path path;  // where it is now
    std::string name;            // by which the File Manager's callers know it
};

class OpenFiles {
public:
    // The file's number, or 0 when all are in use.
    std::int16_t add(OpenFile file);
    OpenFile *find(std::int16_t refNum);
    // The name of the file that has, or had, the number.
    std::string nameOf(std::int16_t refNum) const;
    // Forgets it; the caller has closed it.
    void remove(std::int16_t refNum);
    void clear();

    bool isOpen(const struct stat &file) const;
    bool isOpenForWriting(const struct stat &file) const;
    // The file at the path was made by this session.
    void made(const std::filesystem::path &path, const struct stat &file);
    // False, once, if what was opened there is not the file that this session made there.
    bool isStillTheOneMade(const std::filesystem::path &path, const struct stat &file);
    // The session itself put something else there, or nothing.
    void forgetMade(const std::filesystem::path &path) { made_.erase(path); }
    // Records the file's new path and name.
    void moved(const struct stat &file, const std::filesystem::path &path, const std::string &name);

    auto begin() { return files_.begin(); }
    auto end() { return files_.end(); }
    int count() const { return static_cast<int>(files_.size()); }

private:
    std::map<std::int16_t, OpenFile> files_;
    std::map<std::int16_t, std::string> names_;  // of closed ones too
    std::map<std::filesystem::path, std::pair<dev_t, ino_t>> made_;  // and not yet opened
    std::int16_t last_ = 0;
};

// All that are open in the session.
OpenFiles &openFiles();

}  // namespace toolbox::files
