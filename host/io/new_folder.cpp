#include "io/new_folder.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include "io/refusal.h"
#include "io/remove_tree.h"
#include "io/sync.h"

namespace fs = std::filesystem;

namespace riders::io {
namespace {

mode_t usualMode()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0777 & ~mask;
}

bool isOwnFolder(const fs::path &folder)
{
    struct stat status;
    return lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid();
}

bool isTaken(int error)
{
    return error == ENOTEMPTY || error == EEXIST;
}

}  // namespace

fs::path placeWithoutLinks(const fs::path &place)
{
    std::error_code error;
    fs::path real = fs::weakly_canonical(fs::absolute(place), error);
    if (error)
        throw Refusal(place.string() + ": " + error.message());
    return real.has_filename() ? real : real.parent_path();
}

NewFolder::NewFolder(const fs::path &place, const std::string &hiddenName)
    : place_(place), aside_(place.parent_path() / (hiddenName + "earlier-" + place.filename().string())),
      hidden_(place.parent_path(), hiddenName), new_(hidden_.path() / "new"), work_(hidden_.path() / "work")
{
    putBack();
    fs::create_directory(new_);
    fs::create_directory(work_);
}

// After moveInTwoSteps was killed: between its steps, or before the earlier folder was removed.
void NewFolder::putBack() const
{
    if (isOwnFolder(aside_) && rename(aside_.c_str(), place_.c_str()) != 0 && isTaken(errno))
        removeTree(aside_);
}

void NewFolder::allowUsualAccess() const
{
    const mode_t mode = usualMode();
    chmod(new_.c_str(), mode);
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(new_))
        if (entry.is_directory() && !entry.is_symlink())
            chmod(entry.path().c_str(), mode);
}

void NewFolder::finish(const std::function<void()> &aboutToMove)
{
    allowUsualAccess();
    syncTree(new_);
    aboutToMove();
    const bool setAside = moveToPlace();
    syncFolder(place_.parent_path());
    std::error_code ignored;
    if (setAside)
        fs::remove_all(aside_, ignored);
}

// Other processes may make and take away what is there at any time.
bool NewFolder::moveToPlace() const
{
    constexpr int kMostTries = 10;
    for (int tries = 0; tries < kMostTries; ++tries) {
        // The earlier one is then removed with the hidden folder.
        if (renameat2(AT_FDCWD, new_.c_str(), AT_FDCWD, place_.c_str(), RENAME_EXCHANGE) == 0)
            return false;
        if (errno != ENOENT)
            return moveInTwoSteps();
        if (rename(new_.c_str(), place_.c_str()) == 0)
            return false;
        if (!isTaken(errno))
            break;
    }
    refuseErrno(place_, errno);
}

bool NewFolder::moveInTwoSteps() const
{
    const bool setAside = rename(place_.c_str(), aside_.c_str()) == 0;
    if (rename(new_.c_str(), place_.c_str()) == 0)
        return setAside;
    const int error = errno;
    if (setAside && rename(aside_.c_str(), place_.c_str()) != 0)
        throw Refusal(place_.string() + ": cannot be replaced, nor put back; the earlier one is " + aside_.string());
    refuseErrno(place_, error);
}

}  // namespace riders::io
