// A file system of a kind, in memory: what depends on the file system can be tried on it.
// Only this process and those that it starts see it, and it goes with the last of them.
#pragma once

#include <filesystem>
#include <string>

#include "support/toolbox_test.h"

class MountedDisk {
public:
    // A name that mkfs has: "xfs", "btrfs", "ext4". It takes as much memory as is written to it.
    explicit MountedDisk(const std::string &kind);
    ~MountedDisk();
    MountedDisk(const MountedDisk &) = delete;
    MountedDisk &operator=(const MountedDisk &) = delete;

    // Why there is none; empty where there is one. Only root can have one, and only where there are loop devices.
    const std::string &missing() const { return missing_; }
    std::filesystem::path operator/(const std::string &name) const { return folder_ / ("mounted/" + name); }

private:
    TemporaryFolder folder_;
    std::string missing_;
};

// How many bytes of the file are in blocks that no other file has, once it is on the disk.
size_t bytesOfItsOwn(const std::filesystem::path &file);
