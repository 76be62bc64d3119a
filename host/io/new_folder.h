// A folder that is wholly new, or as it was.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "io/private_folder.h"

namespace riders::io {

// The path without links, dots and a trailing slash, so that what is moved is the folder itself.
// Throws Refusal.
std::filesystem::path placeWithoutLinks(const std::filesystem::path &place);

// Made in a hidden folder beside where it is to be, filled, and moved there at the end. Hidden folders of
// processes that were killed are removed, and an earlier folder that one of them had set aside is put back.
class NewFolder {
public:
    // `place` is without links; the hidden folder's name begins with `hiddenName`. Throws Refusal or
    // std::filesystem::filesystem_error when it cannot be made.
    NewFolder(const std::filesystem::path &place, const std::string &hiddenName);
    NewFolder(const NewFolder &) = delete;
    NewFolder &operator=(const NewFolder &) = delete;

    // What is to be moved.
    const std::filesystem::path &path() const { return new_; }
    // For files that are needed only until then.
    const std::filesystem::path &work() const { return work_; }
    // Moves the folder to its place, once all of it is on the disk; an earlier one there is removed. That is one
    // step, or two where the file system cannot exchange folders. `aboutToMove` is called before it. Throws
    // Refusal and what `aboutToMove` throws; the place is then as it was.
    void finish(const std::function<void()> &aboutToMove = [] {});

private:
    void putBack() const;
    void allowUsualAccess() const;
    // Both return whether an earlier folder was set aside.
    bool moveToPlace() const;
    bool moveInTwoSteps() const;

    std::filesystem::path place_, aside_;
    PrivateFolder hidden_;  // with everything that is not moved
    std::filesystem::path new_, work_;
};

}  // namespace riders::io
