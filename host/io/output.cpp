#include "io/output.h"

#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "io/litter.h"
#include "io/lock.h"
#include "io/refusal.h"
#include "io/sync.h"

namespace fs = std::filesystem;

namespace riders::io {

namespace {

constexpr std::string_view kTemporaryName = ".riders-out-";

fs::path folderOf(const fs::path &file)
{
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

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

// Follows links by hand, since the last one may lead to a file that is not there yet.
fs::path pastLinks(const fs::path &shown)
{
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

int makeFile(const char *path)
{
    return open(path, O_CREAT | O_EXCL | O_NOFOLLOW | O_WRONLY | O_CLOEXEC, 0666);
}

}  // namespace

Output::Output(const fs::path &path) : oldPipeHandler_(signal(SIGPIPE, SIG_IGN))
{
    try {
        struct stat status;
        if (path.empty()) {
            file_ = OpenFile(STDOUT_FILENO, "standard output");
            return;
        }
        const fs::path target = pastLinks(path);
        const bool there = stat(path.c_str(), &status) == 0;
        if (!there && errno != ENOENT)
            refuseErrno(path, errno);
        if (there && !S_ISREG(status.st_mode)) {
            const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
            if (descriptor < 0)
                refuseErrno(path, errno);
            file_ = OpenFile(descriptor, path);
        } else {
            target_ = target;
            openTemporary();
            if (there && access(target_.c_str(), W_OK) != 0)
                refuseErrno(path, errno);
            takeAttributes(target_);
        }
    } catch (...) {
        signal(SIGPIPE, oldPipeHandler_);
        if (!temporary_.empty())
            unlink(temporary_.c_str());
        throw;
    }
}

Output::~Output()
{
    signal(SIGPIPE, oldPipeHandler_);
    if (!temporary_.empty())
        unlink(temporary_.c_str());
}

// Without a name where the system can, so that nothing is left when the process
// is killed; otherwise under a name that is free. Locked, so that no other run takes it for litter.
void Output::openTemporary()
{
    const fs::path folder = folderOf(target_);
    removeDead(folder, kTemporaryName);
    int descriptor = -1;
    if (access("/proc/self/fd", X_OK) == 0)
        descriptor = open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
    if (descriptor >= 0) {
        file_ = OpenFile(descriptor, target_);
        tryLock(descriptor);
    } else {
        Temporary made = newTemporary(folder, kTemporaryName, makeFile, target_);
        file_ = std::move(made.file);
        temporary_ = made.path;
    }
}

void Output::takeAttributes(const fs::path &of)
{
    struct stat status;
    if (stat(of.c_str(), &status) != 0) {
        if (errno != ENOENT)
            refuseErrno(of, errno);
        return;
    }
    // A user who may not give files away stays the owner of the new one.
    const bool given = fchown(file_.descriptor(), status.st_uid, status.st_gid) == 0;
    if (!given && errno != EPERM)
        refuseErrno(of, errno);
    if (fchmod(file_.descriptor(), status.st_mode & (given ? 07777 : 0777)) != 0)
        refuseErrno(of, errno);
}

void Output::nameTemporary()
{
    const std::string opened = "/proc/self/fd/" + std::to_string(file_.descriptor());
    while (temporary_.empty()) {
        const fs::path name = folderOf(target_) / unguessableName(kTemporaryName);
        if (linkat(AT_FDCWD, opened.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0)
            temporary_ = name;
        else if (errno != EEXIST)
            refuseErrno(target_, errno);
    }
}

void Output::finish()
{
    if (target_.empty())
        return file_.close();
    sync(file_.descriptor(), target_);
    if (temporary_.empty())
        nameTemporary();
    moveTo(temporary_, target_);
    temporary_.clear();
    syncFolder(folderOf(target_));
    file_.close();
}

void writeFile(const fs::path &path, std::string_view bytes)
{
    Output out(path);
    writeAll(out.file(), bytes);
    out.finish();
}

void copyFile(const fs::path &from, const fs::path &to, const fs::path &like)
{
    const OpenFile in = openInput(from);
    Output out(to);
    if (!like.empty())
        out.takeAttributes(like);
    copyRest(in, out.file());
    out.finish();
}

void moveTo(const fs::path &from, const fs::path &to)
{
    if (rename(from.c_str(), to.c_str()) != 0)
        refuseErrno(to, errno);
}

}  // namespace riders::io
