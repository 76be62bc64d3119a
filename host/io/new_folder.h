// A folder that is wholly new, or as it was.
#pragma once

#include <filesystem>
#include <string>

#include "io/bytes.h"

namespace riders::io {

// The path without links, dots and a trailing slash, so that what is moved is the folder itself.
// Throws Refusal.
std::filesystem::path placeWithoutLinks(const std::filesystem::path &place);

// Made in a hidden folder beside where it is to be, filled, and moved there at the end. Hidden folders of
// processes that were killed are removed.
class NewFolder {
public:
    // `place` is without links; the hidden folder's name begins with `hiddenName`. Throws Refusal or
    // std::filesystem::filesystem_error when it cannot be made.
    NewFolder(const std::filesystem::path &place, const std::string &hiddenName);
    // Removes everything that was not moved.
    ~NewFolder();
    NewFolder(const NewFolder &) = delete;
    NewFolder &operator=(const NewFolder &) = delete;

    // What is to be moved.
    const std::filesystem::path &path() const { return new_; }
    // For files that are needed only until then.
    const std::filesystem::path &work() const { return work_; }
    // Moves the folder to its place in one step, once all of it is on the disk; an earlier one there is removed.
    // Throws Refusal.
    void finish();

private:
    void makeHidden(const std::string &name);
    void allowUsualAccess();
    void moveToPlace();

    std::filesystem::path place_, hidden_, new_, work_;
    OpenFile lock_;  // the hidden folder's
};

}  // namespace riders::io
