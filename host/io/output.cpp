#include "io/output.h"

#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "io/litter.h"
#include "io/lock.h"
#include "io/place.h"
#include "io/refusal.h"
#include "io/sync.h"

namespace fs = std::filesystem;

namespace riders::io {

namespace {

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
    removeDead(folder, kOutputLitter);
    int descriptor = -1;
    if (access("/proc/self/fd", X_OK) == 0)
        descriptor = open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
    if (descriptor >= 0) {
        file_ = OpenFile(descriptor, target_);
        tryLock(descriptor);
    } else {
        Temporary made = newTemporary(folder, kOutputLitter, makeFile, target_);
        file_ = std::move(made.file);
        temporary_ = made.path;
    }
}

void Output::takeAttributes(const fs::path &of)
{
    struct stat status;
    if (stat(of.c_str(), &status) == 0)
        takeOwnerAndMode(file_.descriptor(), status, of);
    else if (errno != ENOENT)
        refuseErrno(of, errno);
}

void Output::nameTemporary()
{
    const std::string opened = "/proc/self/fd/" + std::to_string(file_.descriptor());
    while (temporary_.empty()) {
        const fs::path name = folderOf(target_) / unguessableName(kOutputLitter);
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
    copyRest(in, out.file(), true);
    out.finish();
}

void moveTo(const fs::path &from, const fs::path &to)
{
    if (rename(from.c_str(), to.c_str()) != 0)
        refuseErrno(to, errno);
}

}  // namespace riders::io
