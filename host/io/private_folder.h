// A folder that no other process uses, gone when its process is.
#pragma once

#include <filesystem>
#include <string_view>

#include "io/litter.h"

namespace riders::io {

// Made under a name that nobody can foresee; others can neither read it nor write in it. Those of processes that
// were killed are removed from where it is made. The constructors throw Refusal.
class PrivateFolder {
public:
    // In memory where possible.
    PrivateFolder();
    // In that folder, under a name that begins so.
    PrivateFolder(const std::filesystem::path &parent, std::string_view beginning);
    // Removes it with everything in it.
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder &) = delete;
    PrivateFolder &operator=(const PrivateFolder &) = delete;

    const std::filesystem::path &path() const { return folder_.path; }

private:
    Temporary folder_;
};

}  // namespace riders::io
