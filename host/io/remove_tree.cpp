#include "io/remove_tree.h"

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <string.h>
#include <unistd.h>

#include <memory>

namespace riders::io {
namespace {

bool isGone(int folder, const char *name, int flags)
{
    return unlinkat(folder, name, flags) == 0 || errno == ENOENT;
}

// True where nothing of it is left.
bool removeAt(int folder, const char *name)
{
    if (isGone(folder, name, 0))
        return true;
    const int descriptor = openat(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const std::unique_ptr<DIR, int (*)(DIR *)> opened(fdopendir(descriptor), closedir);
    if (!opened) {
        close(descriptor);
        return false;
    }
    while (const dirent *entry = readdir(opened.get()))
        if (strcmp(entry->d_name, ".") != 0 && strcmp(entry->d_name, "..") != 0)
            removeAt(descriptor, entry->d_name);
    return isGone(folder, name, AT_REMOVEDIR);
}

}  // namespace

void removeTree(const std::filesystem::path &path) noexcept
{
    constexpr int kTries = 3;
    for (int tries = 0; tries < kTries && !removeAt(AT_FDCWD, path.c_str()); ++tries)
        ;
}

}  // namespace riders::io
