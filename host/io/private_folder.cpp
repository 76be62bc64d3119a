#include "io/private_folder.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "io/refusal.h"
#include "io/remove_tree.h"

namespace fs = std::filesystem;

namespace riders::io {
namespace {

constexpr std::string_view kNameBegin = "riders-private-";

int makeFolder(const char *path)
{
    if (mkdir(path, 0700) != 0)
        return -1;
    const int descriptor = open(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    const int error = errno;
    if (descriptor < 0)
        rmdir(path);
    errno = error;
    return descriptor;
}

Temporary newFolder(const fs::path &parent, std::string_view beginning, const std::string &shown)
{
    removeDead(parent, beginning);
    return newTemporary(parent, beginning, makeFolder, shown);
}

Temporary newFolderInMemory()
{
    try {
        return newFolder("/dev/shm", kNameBegin, {});
    } catch (const Refusal &) {
        std::error_code failed;
        fs::path onDisk = fs::temp_directory_path(failed);
        if (failed)
            onDisk = "/tmp";
        return newFolder(onDisk, kNameBegin, "no private folder can be made in " + onDisk.string());
    }
}

}  // namespace

PrivateFolder::PrivateFolder() : folder_(newFolderInMemory())
{
}

PrivateFolder::PrivateFolder(const fs::path &parent, std::string_view beginning)
    : folder_(newFolder(parent, beginning, parent))
{
}

PrivateFolder::~PrivateFolder()
{
    removeTree(path());
}

}  // namespace riders::io
