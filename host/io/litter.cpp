#include "io/litter.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <random>

#include "io/bytes.h"
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
        !(S_ISREG(status.st_mode) || S_ISDIR(status.st_mode)) || flock(file.descriptor(), LOCK_EX | LOCK_NB) != 0)
        return;
    removeTree(path);
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

bool lockAsAlive(int descriptor, const fs::path &path)
{
    // Where locks are not to be had, nothing is ever taken for dead either.
    while (flock(descriptor, LOCK_EX) != 0 && errno == EINTR)
        ;
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

void removeDead(const fs::path &folder, std::string_view beginning)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (isName(entry->path().filename(), beginning))
            removeIfDead(entry->path());
}

}  // namespace riders::io
