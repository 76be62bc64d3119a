#include "io/sync.h"

#include <errno.h>
#include <fcntl.h>
#include <unistd.h>

#include "io/bytes.h"
#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::io {
namespace {

void syncPath(const fs::path &path, int flags)
{
    const int descriptor = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | flags);
    // A folder into which one may write, but not look, cannot be synced.
    if (descriptor < 0 && errno == EACCES)
        return;
    if (descriptor < 0)
        refuseErrno(path, errno);
    const OpenFile file(descriptor, path);
    sync(descriptor, path);
}

}  // namespace

void sync(int descriptor, const std::string &name)
{
    while (fsync(descriptor) != 0) {
        if (errno == EINVAL || errno == ENOSYS)
            return;
        if (errno != EINTR)
            refuseErrno(name, errno);
    }
}

void syncFolder(const fs::path &folder)
{
    // The folder itself may be named by a link.
    syncPath(folder / ".", O_DIRECTORY);
}

void makeFolders(const fs::path &folder)
{
    std::error_code failed;
    const fs::file_status status = fs::status(folder, failed);
    if (folder.empty() || fs::is_directory(status))
        return;
    // One that cannot be looked at may be there: to go on with its parent would not end at the root.
    if (status.type() == fs::file_type::none || !folder.has_relative_path())
        refuseErrno(folder, failed.value());
    const fs::path parent = folder.parent_path();
    makeFolders(parent);
    if (fs::create_directory(folder, failed))
        syncFolder(parent);
    if (failed)
        refuseErrno(folder, failed.value());
}

void syncTree(const fs::path &folder)
try {
    for (const fs::directory_entry &entry : fs::directory_iterator(folder))
        if (entry.is_directory() && !entry.is_symlink())
            syncTree(entry.path());
        else if (entry.is_regular_file() && !entry.is_symlink())
            syncPath(entry.path(), 0);
    syncFolder(folder);
} catch (const fs::filesystem_error &error) {
    refuseErrno(folder, error.code().value());
}

}  // namespace riders::io
