#include "io/new_folder.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>

#include "io/litter.h"
#include "io/refusal.h"
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

}  // namespace

fs::path placeWithoutLinks(const fs::path &place)
{
    std::error_code error;
    fs::path real = fs::weakly_canonical(fs::absolute(place), error);
    if (error)
        throw Refusal(place.string() + ": " + error.message());
    return real.has_filename() ? real : real.parent_path();
}

NewFolder::NewFolder(const fs::path &place, const std::string &hiddenName) : place_(place)
{
    removeDead(place.parent_path(), hiddenName);
    makeHidden(hiddenName);
    try {
        fs::create_directory(new_);
        fs::create_directory(work_);
    } catch (const fs::filesystem_error &) {
        std::error_code ignored;
        fs::remove_all(hidden_, ignored);
        throw;
    }
}

void NewFolder::makeHidden(const std::string &name)
{
    const fs::path parent = place_.parent_path();
    do {
        hidden_ = parent / unguessableName(name);
        if (mkdir(hidden_.c_str(), 0700) != 0)
            refuseErrno(parent, errno);
        lock_ = OpenFile(open(hidden_.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC), hidden_);
    } while (!lockAsAlive(lock_.descriptor(), hidden_));
    new_ = hidden_ / "new";
    work_ = hidden_ / "work";
}

NewFolder::~NewFolder()
{
    std::error_code ignored;
    fs::remove_all(hidden_, ignored);
}

void NewFolder::allowUsualAccess()
{
    const mode_t mode = usualMode();
    chmod(new_.c_str(), mode);
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(new_))
        if (entry.is_directory() && !entry.is_symlink())
            chmod(entry.path().c_str(), mode);
}

void NewFolder::finish()
{
    allowUsualAccess();
    syncTree(new_);
    moveToPlace();
    syncFolder(place_.parent_path());
}

void NewFolder::moveToPlace()
{
    // Exchanged in one step; the earlier one is then removed with the hidden folder.
    if (renameat2(AT_FDCWD, new_.c_str(), AT_FDCWD, place_.c_str(), RENAME_EXCHANGE) == 0)
        return;
    // Nothing is there yet, or the file system cannot exchange.
    const fs::path old = hidden_ / "old";
    const bool stoodAside = rename(place_.c_str(), old.c_str()) == 0;
    if (rename(new_.c_str(), place_.c_str()) == 0)
        return;
    const int error = errno;
    if (stoodAside && rename(old.c_str(), place_.c_str()) != 0) {
        hidden_.clear();  // the earlier one is in it
        throw Refusal(place_.string() + ": cannot be replaced, nor put back; the earlier one is " + old.string());
    }
    refuseErrno(place_, error);
}

}  // namespace riders::io
