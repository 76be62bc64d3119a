#include "io/replacement.h"

#include <errno.h>
#include <sys/stat.h>
#include <unistd.h>

#include "io/litter.h"
#include "io/output.h"
#include "io/place.h"
#include "io/refusal.h"
#include "io/sync.h"

namespace fs = std::filesystem;

namespace riders::io {
namespace {

// Finder information and resources are in it.
fs::path companionOf(const fs::path &file)
{
    return folderOf(file) / ("._" + file.filename().string());
}

bool isOrdinary(const fs::path &file)
{
    std::error_code ignored;
    return fs::is_regular_file(fs::symlink_status(file, ignored));
}

// One without the owner's right to write is left to whoever replaces it: they may have words for that.
void refuseIfIrreplaceable(const fs::path &file, const struct stat &status)
{
    if (!S_ISREG(status.st_mode))
        throw Refusal(file.string() + " is not an ordinary file; choose another name");
    if ((status.st_mode & S_IWUSR) && access(file.c_str(), W_OK) != 0)
        refuseErrno(file, errno);
}

}  // namespace

Replacement::Replacement(const fs::path &file) : file_(fs::absolute(file)), target_(pastLinks(file_))
{
    struct stat status;
    const bool replaces = stat(target_.c_str(), &status) == 0;
    if (!replaces && errno != ENOENT)
        refuseErrno(file_, errno);
    if (replaces)
        refuseIfIrreplaceable(target_, status);
    folder_.emplace(folderOf(target_), kOutputLitter);
    if (replaces)
        bringEarlier();
}

// Not every file system has a second name for a file, and not every user may give one.
void Replacement::bringEarlier()
{
    struct stat status;
    if (link(target_.c_str(), inFolder().c_str()) != 0) {
        copyFile(target_, inFolder());
        if (stat(target_.c_str(), &status) == 0)
            chmod(inFolder().c_str(), status.st_mode & 0777);
    }
    if (stat(inFolder().c_str(), &status) != 0)
        refuseErrno(file_, errno);
    earlier_ = status.st_ino;
    if (isOrdinary(companionOf(file_)))
        copyFile(companionOf(file_), companionOf(inFolder()));
}

bool Replacement::made() const
{
    struct stat status;
    if (lstat(inFolder().c_str(), &status) != 0) {
        if (errno == ENOENT)
            return false;
        refuseErrno(file_, errno);
    }
    return S_ISREG(status.st_mode) && status.st_size > 0 && status.st_ino != earlier_;
}

// An earlier file's companion may say more than the new one's does; without an earlier file it is of one that is
// gone.
void Replacement::putCompanionInPlace() const
{
    const fs::path from = companionOf(inFolder()), to = companionOf(file_);
    std::error_code ignored;
    if (!isOrdinary(from))
        fs::remove(to, ignored);
    else if (!isOrdinary(to) || contentsOf(from) != contentsOf(to))
        copyFile(from, to);
}

void Replacement::finish()
{
    struct stat status;
    const OpenFile made = openOrdinaryFile(inFolder());
    const bool replaces = stat(target_.c_str(), &status) == 0;
    if (!replaces && errno != ENOENT)
        refuseErrno(file_, errno);
    if (replaces)
        takeOwnerAndMode(made.descriptor(), status, file_);
    sync(made.descriptor(), file_);
    if (!replaces)
        putCompanionInPlace();
    moveTo(inFolder(), target_);
    if (replaces)
        putCompanionInPlace();
    syncFolder(folderOf(target_));
}

}  // namespace riders::io
