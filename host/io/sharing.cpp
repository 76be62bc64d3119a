#include "io/sharing.h"

#include <errno.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <bit>

#include "io/refusal.h"

namespace riders::io {
namespace {

// Less than this is copied as quickly.
constexpr off_t kWorthSharing = off_t(1) << 20;

bool isOrdinary(const OpenFile &file, struct stat &status)
{
    return fstat(file.descriptor(), &status) == 0 && S_ISREG(status.st_mode);
}

bool isAt(const OpenFile &file, off_t position)
{
    return lseek(file.descriptor(), 0, SEEK_CUR) == position;
}

}  // namespace

size_t sharedBlock(const OpenFile &in, size_t read, size_t from, const OpenFile &out)
{
    struct stat source, target;
    struct statfs system;
    if (!isOrdinary(in, source) || !isOrdinary(out, target) || target.st_size != 0 ||
        source.st_size - static_cast<off_t>(from) < kWorthSharing)
        return 0;
    if (!isAt(in, static_cast<off_t>(read)) || !isAt(out, 0) || fstatfs(out.descriptor(), &system) != 0)
        return 0;
    const auto block = static_cast<size_t>(system.f_bsize);
    return std::has_single_bit(block) && block >= 512 && block <= kMostBlock ? block : 0;
}

bool shareRest(const OpenFile &in, size_t from, const OpenFile &out, size_t to)
{
    file_clone_range range = {};
    range.src_fd = in.descriptor();
    range.src_offset = from;
    range.dest_offset = to;
    if (ioctl(out.descriptor(), FICLONERANGE, &range) == 0)
        return true;
    // Part of it may be there all the same.
    while (ftruncate(out.descriptor(), 0) != 0)
        if (errno != EINTR)
            refuseErrno(out.name(), errno);
    return false;
}

void passRest(const OpenFile &in, const OpenFile &out)
{
    for (const OpenFile *file : {&in, &out})
        if (lseek(file->descriptor(), 0, SEEK_END) < 0)
            refuseErrno(file->name(), errno);
}

}  // namespace riders::io
