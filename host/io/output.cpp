#include "io/output.h"

#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::io {

namespace {

constexpr int kMostTries = 1000;

// Follows links by hand, since the last one may lead to a file that is not there yet.
fs::path pastLinks(fs::path path)
{
    std::error_code error;
    for (int links = 0; fs::is_symlink(path, error); ++links) {
        if (links == 40)
            refuseErrno(path, ELOOP);
        const fs::path to = fs::read_symlink(path, error);
        if (error)
            refuseErrno(path, error.value());
        path = to.is_absolute() ? to : path.parent_path() / to;
    }
    return path;
}

fs::path folderOf(const fs::path &file)
{
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

fs::path temporaryIn(const fs::path &folder, int number)
{
    return folder / (".riders-" + std::to_string(getpid()) + "-" + std::to_string(number));
}

// Not every file system can; one that can and fails has lost what was written.
void sync(int descriptor, const std::string &shown)
{
    if (fsync(descriptor) != 0 && errno != EINVAL && errno != ENOSYS)
        refuseErrno(shown, errno);
}

// The new file is there by now, so that the old one cannot come back but with the power gone: no failure.
void syncFolder(const fs::path &folder)
{
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

}  // namespace

Output::Output(const fs::path &path) : oldPipeHandler_(signal(SIGPIPE, SIG_IGN))
{
    try {
        struct stat status;
        if (path.empty()) {
            file_ = OpenFile(STDOUT_FILENO, "standard output");
        } else if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
            const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
            if (descriptor < 0)
                refuseErrno(path, errno);
            file_ = OpenFile(descriptor, path);
        } else {
            target_ = pastLinks(path);
            openTemporary();
            takeAttributes(path);
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
// is killed; otherwise under a name that is free.
void Output::openTemporary()
{
    const fs::path folder = folderOf(target_);
    int descriptor = -1;
    if (access("/proc/self/fd", X_OK) == 0)
        descriptor = open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
    for (int number = 0; descriptor < 0; ++number) {
        temporary_ = temporaryIn(folder, number);
        descriptor = open(temporary_.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
        if (descriptor < 0 && (errno != EEXIST || number == kMostTries)) {
            temporary_.clear();
            refuseErrno(target_, errno);
        }
    }
    file_ = OpenFile(descriptor, target_);
}

void Output::takeAttributes(const std::string &shown)
{
    struct stat status;
    if (stat(target_.c_str(), &status) != 0)
        return;
    if (access(target_.c_str(), W_OK) != 0)
        refuseErrno(shown, errno);
    // A user who may not give files away stays the owner of the new one.
    if (fchown(file_.descriptor(), status.st_uid, status.st_gid) == 0)
        fchmod(file_.descriptor(), status.st_mode & 07777);
    else
        fchmod(file_.descriptor(), status.st_mode & 0777);
}

void Output::nameTemporary()
{
    const std::string opened = "/proc/self/fd/" + std::to_string(file_.descriptor());
    for (int number = 0; temporary_.empty(); ++number) {
        const fs::path name = temporaryIn(folderOf(target_), number);
        if (linkat(AT_FDCWD, opened.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0)
            temporary_ = name;
        else if (errno != EEXIST || number == kMostTries)
            refuseErrno(target_, errno);
    }
}

void Output::finish()
{
    if (target_.empty())
        return file_.close();
    sync(file_.descriptor(), file_.name());
    if (temporary_.empty())
        nameTemporary();
    file_.close();
    if (rename(temporary_.c_str(), target_.c_str()) != 0)
        refuseErrno(target_, errno);
    temporary_.clear();
    syncFolder(folderOf(target_));
}

void writeFile(const fs::path &path, std::string_view bytes)
{
    Output out(path);
    writeAll(out.file(), bytes);
    out.finish();
}

void copyFile(const fs::path &from, const fs::path &to)
{
    const OpenFile in = openInput(from);
    Output out(to);
    copyRest(in, out.file());
    out.finish();
}

}  // namespace riders::io
