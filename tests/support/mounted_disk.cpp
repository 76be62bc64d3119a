#include "support/mounted_disk.h"

#include <fcntl.h>
#include <linux/fiemap.h>
#include <linux/fs.h>
#include <sched.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <vector>

#include "support/command.h"

namespace fs = std::filesystem;

namespace {

constexpr off_t kSize = off_t(400) << 20;  // XFS is made no smaller

}  // namespace

MountedDisk::MountedDisk(const std::string &kind)
{
    fs::create_directory(folder_ / "mounted");
    std::string image = "/dev/shm/riders-disk-XXXXXX";
    const int descriptor = mkostemp(image.data(), O_CLOEXEC);
    if (descriptor < 0 || ftruncate(descriptor, kSize) != 0)
        missing_ = "there is no memory for a disk";
    else if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        missing_ = "only root can mount a disk";
    else if (const CommandResult made = runProgram({"mkfs." + kind, "-q", image}); made.status != 0)
        missing_ = "mkfs." + kind + ": " + made.err;
    else if (const CommandResult result = runProgram({"mount", "-o", "loop", image, folder_ / "mounted"});
             result.status != 0)
        missing_ = "mount: " + result.err;
    close(descriptor);
    unlink(image.c_str());
}

MountedDisk::~MountedDisk()
{
    if (missing_.empty() && umount((folder_ / "mounted").c_str()) != 0)
        ADD_FAILURE() << "the disk cannot be unmounted";
}

size_t bytesOfItsOwn(const fs::path &file)
{
    constexpr unsigned kMost = 512;
    std::vector<char> room(sizeof(fiemap) + kMost * sizeof(fiemap_extent));
    auto *map = new (room.data()) fiemap{};
    map->fm_length = FIEMAP_MAX_OFFSET;
    map->fm_flags = FIEMAP_FLAG_SYNC;
    map->fm_extent_count = kMost;
    const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    EXPECT_EQ(ioctl(descriptor, FS_IOC_FIEMAP, map), 0) << file;
    close(descriptor);
    EXPECT_LT(map->fm_mapped_extents, kMost);
    size_t own = 0;
    for (unsigned i = 0; i < map->fm_mapped_extents; ++i)
        if (!(map->fm_extents[i].fe_flags & FIEMAP_EXTENT_SHARED))
            own += map->fm_extents[i].fe_length;
    return own;
}
