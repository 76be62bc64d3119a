#include "settings/saved_settings.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "io/output.h"
#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::settings {
namespace {

constexpr char kDecided[] = ".riders-settings";  // what counts, but may not be where it belongs yet
constexpr char kUndecided[] = ".riders-settings-";

// One process at a time; the lock goes with the process.
class Locked {
public:
    explicit Locked(const fs::path &folder) : descriptor_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        if (descriptor_ < 0)
            io::refuseErrno(folder, errno);
        while (flock(descriptor_, LOCK_EX) != 0 && errno == EINTR)
            ;
    }
    ~Locked() { close(descriptor_); }
    Locked(const Locked &) = delete;
    Locked &operator=(const Locked &) = delete;

    void sync() const
    {
        if (fsync(descriptor_) != 0 && errno != EINVAL && errno != ENOSYS)
            io::refuseErrno("the folder of the settings", errno);
    }

private:
    int descriptor_;
};

bool isThere(const fs::path &file)
{
    std::error_code failed;
    const fs::file_status status = fs::symlink_status(file, failed);
    if (status.type() == fs::file_type::none)
        io::refuseErrno(file, failed.value());
    return fs::exists(status);
}

void copyIfThere(const fs::path &from, const fs::path &to)
{
    if (isThere(from))
        io::copyFile(from, to);
}

void takeMode(const fs::path &from, const fs::path &to)
{
    struct stat status;
    if (stat(from.c_str(), &status) != 0 || !isThere(to))
        return;
    if (chown(to.c_str(), status.st_uid, status.st_gid) == 0 || status.st_uid == geteuid())
        chmod(to.c_str(), status.st_mode & 0777);
}

// A person may keep the file elsewhere, with a link here.
void putInPlace(const fs::path &from, const fs::path &to)
{
    if (!isThere(from))
        return;
    if (std::error_code ignored; fs::is_symlink(to, ignored))
        io::copyFile(from, to);
    else if (rename(from.c_str(), to.c_str()) != 0)
        io::refuseErrno(to, errno);
}

// With the lock held, whatever is undecided is a killed process's.
void removeUndecided(const fs::path &folder)
{
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed))
        if (entry->path().filename().string().starts_with(kUndecided)) {
            std::error_code ignored;
            fs::remove_all(entry->path(), ignored);
        }
}

}  // namespace

SavedSettings::SavedSettings(fs::path folder, const std::string &name)
    : folder_(std::move(folder)), names_{name, "._" + name}
{
}

void SavedSettings::putDecidedInPlace() const
{
    const fs::path decided = folder_ / kDecided;
    if (!isThere(decided))
        return;
    for (const std::string &name : names_)
        putInPlace(decided / name, folder_ / name);
    std::error_code ignored;
    fs::remove_all(decided, ignored);
}

void SavedSettings::finishEarlier() const
{
    if (!isThere(folder_))
        return;
    const Locked lock(folder_);
    putDecidedInPlace();
}

void SavedSettings::copyTo(const fs::path &copy) const
{
    if (!isThere(folder_))
        return;
    const Locked lock(folder_);
    for (const std::string &name : names_) {
        const fs::path decided = folder_ / kDecided / name;
        copyIfThere(isThere(decided) ? decided : folder_ / name, copy / name);
    }
}

void SavedSettings::takeFrom(const fs::path &copy) const
{
    std::error_code failed;
    fs::create_directories(folder_, failed);
    if (failed)
        io::refuseErrno(folder_, failed.value());
    const Locked lock(folder_);
    putDecidedInPlace();
    removeUndecided(folder_);
    std::string undecided = folder_ / (std::string(kUndecided) + "XXXXXX");
    if (!mkdtemp(undecided.data()))
        io::refuseErrno(folder_, errno);
    try {
        for (const std::string &name : names_) {
            copyIfThere(copy / name, fs::path(undecided) / name);
            takeMode(folder_ / name, fs::path(undecided) / name);
        }
        if (rename(undecided.c_str(), (folder_ / kDecided).c_str()) != 0)
            io::refuseErrno(folder_, errno);
    } catch (const io::Refusal &) {
        fs::remove_all(undecided, failed);
        throw;
    }
    lock.sync();
    putDecidedInPlace();
    lock.sync();
}

}  // namespace riders::settings
