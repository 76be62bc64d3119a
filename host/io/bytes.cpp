#include "io/bytes.h"

#include <errno.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <utility>

#include "io/refusal.h"

namespace riders::io {

namespace {

constexpr size_t kBuffer = 256 << 10;
constexpr size_t kAtOnce = size_t(1) << 30;
// Enough for the disk to work on while as much is copied.
constexpr size_t kToDisk = size_t(8) << 20;

// True where the call is to be made again: it was interrupted, or a
// descriptor that does not block is not ready yet.
bool again(int descriptor, short events)
{
    if (errno == EINTR)
        return true;
    if (errno != EAGAIN)
        return false;
    pollfd ready{descriptor, events, 0};
    return poll(&ready, 1, -1) >= 0 || errno == EINTR;
}

mode_t kindOf(int descriptor)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 ? status.st_mode & S_IFMT : 0;
}

using KernelCopy = ssize_t (*)(int in, int out);

ssize_t byFileRangeToDisk(int in, int out)
{
    const ssize_t moved = copy_file_range(in, nullptr, out, nullptr, kToDisk, 0);
    if (moved > 0)
        sync_file_range(out, 0, 0, SYNC_FILE_RANGE_WRITE);  // only begins it, and may fail: whoever must know syncs
    return moved;
}

ssize_t byFileRange(int in, int out)
{
    return copy_file_range(in, nullptr, out, nullptr, kAtOnce, 0);
}

ssize_t byPipe(int in, int out)
{
    return splice(in, nullptr, out, nullptr, kAtOnce, SPLICE_F_MOVE | SPLICE_F_MORE);
}

ssize_t bySending(int in, int out)
{
    return sendfile(out, in, nullptr, kAtOnce);
}

KernelCopy bestCopy(int in, int out, bool toDisk)
{
    const mode_t from = kindOf(in), to = kindOf(out);
    if (S_ISREG(from) && S_ISREG(to))
        return toDisk ? byFileRangeToDisk : byFileRange;
    if (S_ISFIFO(from) || S_ISFIFO(to))
        return byPipe;
    return S_ISREG(from) ? bySending : nullptr;
}

size_t readSome(const OpenFile &in, char *buffer, size_t size)
{
    ssize_t got;
    while ((got = read(in.descriptor(), buffer, size)) < 0)
        if (!again(in.descriptor(), POLLIN))
            refuseErrno(in.name(), errno);
    return static_cast<size_t>(got);
}

}  // namespace

OpenFile::~OpenFile()
{
    if (descriptor_ > STDERR_FILENO)
        ::close(descriptor_);
}

OpenFile::OpenFile(OpenFile &&other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), name_(std::move(other.name_))
{
}

OpenFile &OpenFile::operator=(OpenFile &&other) noexcept
{
    std::swap(descriptor_, other.descriptor_);
    std::swap(name_, other.name_);
    return *this;
}

void OpenFile::close()
{
    const int descriptor = std::exchange(descriptor_, -1);
    if (descriptor > STDERR_FILENO && ::close(descriptor) != 0 && errno != EINTR)
        refuseErrno(name_, errno);
}

OpenFile openInput(const std::string &path)
{
    if (path.empty())
        return {STDIN_FILENO, "standard input"};
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        refuseErrno(path, errno);
    return {descriptor, path};
}

OpenFile openOrdinaryFile(const std::string &path)
{
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        refuseErrno(path, errno);
    OpenFile file(descriptor, path);
    if (const mode_t kind = kindOf(descriptor); !S_ISREG(kind))
        throw Refusal(path + (S_ISDIR(kind) ? ": is a folder" : ": is not a file but a pipe or a device"));
    return file;
}

size_t readFully(const OpenFile &in, char *buffer, size_t size)
{
    size_t total = 0;
    while (total < size) {
        const size_t got = readSome(in, buffer + total, size - total);
        if (got == 0)
            break;
        total += got;
    }
    return total;
}

std::string contentsOf(const std::string &path)
{
    constexpr size_t kPart = 64 << 10;
    const OpenFile in = openOrdinaryFile(path);
    std::string bytes;
    for (size_t got = kPart; got == kPart;) {
        const size_t before = bytes.size();
        bytes.resize(before + kPart);
        got = readFully(in, bytes.data() + before, kPart);
        bytes.resize(before + got);
    }
    return bytes;
}

void writeAll(const OpenFile &out, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t put = write(out.descriptor(), bytes.data(), bytes.size());
        if (put >= 0)
            bytes.remove_prefix(static_cast<size_t>(put));
        else if (!again(out.descriptor(), POLLOUT))
            refuseErrno(out.name(), errno);
    }
}

void copyRest(const OpenFile &in, const OpenFile &out, bool toDisk)
{
    if (const KernelCopy copy = bestCopy(in.descriptor(), out.descriptor(), toDisk))
        for (ssize_t moved; (moved = copy(in.descriptor(), out.descriptor())) != 0;)
            if (moved < 0 && errno != EINTR)
                break;
    // What the kernel would not do, or did not finish, goes through a buffer,
    // which shows which side failed; mostly this only finds the end.
    const auto buffer = std::make_unique_for_overwrite<char[]>(kBuffer);
    while (const size_t got = readSome(in, buffer.get(), kBuffer))
        writeAll(out, {buffer.get(), got});
}

bool sameFile(int one, int other)
{
    struct stat a, b;
    return fstat(one, &a) == 0 && fstat(other, &b) == 0 && S_ISREG(a.st_mode) && a.st_dev == b.st_dev &&
           a.st_ino == b.st_ino;
}

}  // namespace riders::io
