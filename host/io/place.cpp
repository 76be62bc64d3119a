#include "io/place.h"

#include <errno.h>
#include <unistd.h>

#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::io {
namespace {

// Where others may write, a link may have been put there for whoever writes next: it is followed only
// if it is the user's own or the folder's owner's. (The kernel can see to that, too, but need not.)
void refusePlantedLink(const fs::path &link, const fs::path &shown)
{
    struct stat of, in;
    if (lstat(link.c_str(), &of) != 0)
        refuseErrno(shown, errno);
    if (stat(folderOf(link).c_str(), &in) != 0)
        refuseErrno(shown, errno);
    const bool othersWrite = (in.st_mode & S_IWOTH) != 0;
    if (othersWrite && of.st_uid != geteuid() && of.st_uid != in.st_uid)
        throw Refusal(shown.string() + ": is a link that somebody else has put there; it is not followed");
}

bool isLink(const fs::path &path, const fs::path &shown)
{
    std::error_code error;
    const fs::file_status status = fs::symlink_status(path, error);
    if (status.type() == fs::file_type::none)
        refuseErrno(shown, error.value());
    return fs::is_symlink(status);
}

}  // namespace

fs::path folderOf(const fs::path &file)
{
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

fs::path pastLinks(const fs::path &shown)
{
    // By hand, since the last link may lead to a file that is not there yet.
    fs::path path = shown;
    std::error_code error;
    for (int links = 0; isLink(path, shown); ++links) {
        if (links == 40)
            refuseErrno(shown, ELOOP);
        refusePlantedLink(path, shown);
        const fs::path to = fs::read_symlink(path, error);
        if (error)
            refuseErrno(shown, error.value());
        path = to.is_absolute() ? to : path.parent_path() / to;
    }
    return path;
}

void takeOwnerAndMode(int descriptor, const struct stat &from, const fs::path &shown)
{
    // A user who may not give files away stays the owner of the new one.
    const bool given = fchown(descriptor, from.st_uid, from.st_gid) == 0;
    if (!given && errno != EPERM)
        refuseErrno(shown, errno);
    if (fchmod(descriptor, from.st_mode & (given ? 07777 : 0777)) != 0)
        refuseErrno(shown, errno);
}

}  // namespace riders::io
