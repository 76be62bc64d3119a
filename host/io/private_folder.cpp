#include "io/private_folder.h"

#include <errno.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

#include "io/refusal.h"
#include "io/remove_tree.h"

namespace fs = std::filesystem;

namespace riders::io {
namespace {

constexpr char kNameBegin[] = "riders-private-";

// Its process holds a lock on the folder for as long as it lives. -1 where another one does, or there is no lock.
int lockedFolder(const fs::path &folder)
{
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor >= 0 && flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        close(descriptor);
        return -1;
    }
    return descriptor;
}

bool isOwn(int descriptor)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 && status.st_uid == geteuid();
}

void removeIfDead(const fs::path &folder)
{
    const int descriptor = lockedFolder(folder);
    if (descriptor < 0)
        return;
    if (isOwn(descriptor))
        removeTree(folder);
    close(descriptor);
}

void removeDeadIn(const fs::path &parent)
{
    std::vector<fs::path> found;
    std::error_code failed;
    for (fs::directory_iterator entry(parent, failed), end; !failed && entry != end; entry.increment(failed))
        if (entry->path().filename().string().starts_with(kNameBegin))
            found.push_back(entry->path());
    for (const fs::path &folder : found)
        removeIfDead(folder);
}

// Between its making and its locking another process may have taken it for a dead one's.
bool isStillThere(int descriptor)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 && status.st_nlink > 0;
}

fs::path temporaryFolder()
{
    std::error_code failed;
    fs::path folder = fs::temp_directory_path(failed);
    return failed ? fs::path("/tmp") : folder;
}

}  // namespace

PrivateFolder::PrivateFolder()
{
    const fs::path onDisk = temporaryFolder();
    for (const fs::path &parent : {fs::path("/dev/shm"), onDisk})
        if (makeIn(parent))
            return;
    refuseErrno("no private folder can be made in " + onDisk.string(), errno);
}

bool PrivateFolder::makeIn(const fs::path &parent)
{
    constexpr int kMostTries = 100;
    removeDeadIn(parent);
    for (int tries = 0; tries < kMostTries; ++tries) {
        std::string pattern = parent / (std::string(kNameBegin) + "XXXXXX");
        if (!mkdtemp(pattern.data()))
            return false;
        held_ = lockedFolder(pattern);
        if (held_ >= 0 && isStillThere(held_)) {
            path_ = pattern;
            return true;
        }
        if (held_ >= 0)
            close(held_);
    }
    return false;
}

PrivateFolder::~PrivateFolder()
{
    removeTree(path_);
    close(held_);
}

}  // namespace riders::io
