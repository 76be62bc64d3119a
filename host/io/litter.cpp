#include "io/litter.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <random>

#include "io/lock.h"
#include "io/refusal.h"
#include "io/remove_tree.h"

namespace fs = std::filesystem;

namespace riders::io {
namespace {

constexpr size_t kDigits = 16;
constexpr std::string_view kHex = "0123456789abcdef";

bool isName(const std::string &name, std::string_view beginning)
{
    return name.size() == beginning.size() + kDigits && name.starts_with(beginning) &&
           name.find_first_not_of(kHex, beginning.size()) == std::string::npos;
}

void removeIfDead(const fs::path &path)
{
    const OpenFile file(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC), path);
    struct stat status;
    if (file.descriptor() < 0 || fstat(file.descriptor(), &status) != 0 || status.st_uid != geteuid() ||
        !(S_ISREG(status.st_mode) || S_ISDIR(status.st_mode)) || tryLock(file.descriptor()) != Lock::taken)
        return;
    removeTree(path);
}

// False where another process has taken it for a dead one's, before it was locked. Where locks are impossible,
// nothing is ever taken for dead.
bool lockAsAlive(const Temporary &made)
{
    struct stat status;
    return tryLock(made.file.descriptor()) != Lock::anothers && lstat(made.path.c_str(), &status) == 0;
}

}  // namespace

std::string unguessableName(std::string_view beginning)
{
    std::random_device random;
    std::string name(beginning);
    for (size_t i = 0; i < kDigits; ++i)
        name += kHex[random() % kHex.size()];
    return name;
}

Temporary newTemporary(const fs::path &folder, std::string_view beginning, int (*make)(const char *path),
                       const std::string &shown)
{
    constexpr int kMostTries = 100;
    for (int tries = 0; tries < kMostTries; ++tries) {
        Temporary made = {folder / unguessableName(beginning), {}};
        made.file = OpenFile(make(made.path.c_str()), shown);
        if (made.file.descriptor() < 0) {
            const int failed = errno;
            // A new folder may have been taken for a dead process's before it was opened.
            std::error_code ignored;
            if (failed == ENOENT && fs::is_directory(folder, ignored))
                continue;
            refuseErrno(shown, failed);
        }
        if (lockAsAlive(made))
            return made;
        std::error_code ignored;
        fs::remove(made.path, ignored);
    }
    throw Refusal(shown + ": other programs take away what is made there");
}

void removeDead(const fs::path &folder, std::string_view beginning)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (isName(entry->path().filename(), beginning))
            removeIfDead(entry->path());
}

}  // namespace riders::io
