// A folder that no other process uses, gone when its process is.
#pragma once

#include <filesystem>

namespace riders::io {

class PrivateFolder {
public:
    // Made in memory where possible, under a name that nobody can foresee; others can neither read it nor write
    // in it. Removes those of processes that were killed. Throws Refusal.
    PrivateFolder();
    // Removes it with everything in it.
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder &) = delete;
    PrivateFolder &operator=(const PrivateFolder &) = delete;

    const std::filesystem::path &path() const { return path_; }

private:
    bool makeIn(const std::filesystem::path &parent);

    std::filesystem::path path_;
    int held_ = -1;
};

}  // namespace riders::io
