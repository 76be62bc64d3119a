// A file that somebody else makes, such as the plug-in, put in place in one step.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>

#include "io/private_folder.h"

namespace riders::io {

// A hidden folder beside the file's place, in which whoever makes the file finds what there was at that place
// under its own name: the earlier file and the "._" file beside it, if there are any. They can do there what they
// like; what has the name at the end is the new file. What a killed process leaves is removed by the next one that
// writes there.
class Replacement {
public:
    // Links are followed as by Output. Throws Refusal when there can be no such folder, or nothing can be
    // replaced.
    explicit Replacement(const std::filesystem::path &file);

    // Goes with this, and with everything in it that is not in place.
    const std::filesystem::path &folder() const { return folder_->path(); }
    // Whether there is a new file, with something in it. Throws Refusal where that cannot be seen.
    bool made() const;
    // Puts it in place, with owner and mode of the earlier one, once its bytes are on the disk, and waits until
    // the name is there, too. Throws Refusal; the earlier one is then as it was.
    void finish();

private:
    void bringEarlier();
    void putCompanionInPlace() const;
    std::filesystem::path inFolder() const { return folder() / file_.filename(); }

    std::filesystem::path file_;    // as named
    std::filesystem::path target_;  // where it really is
    std::optional<PrivateFolder> folder_;
    ino_t earlier_ = 0;  // in the folder
};

}  // namespace riders::io
