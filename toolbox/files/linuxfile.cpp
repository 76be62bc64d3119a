#include "files/linuxfile.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "files/retried.h"
#include "toolbox/host/write_all.h"

namespace fs = std::filesystem;

namespace toolbox::files {

OSErr errorOf(int number, Aim aim)
{
    switch (number) {
    case 0:
        return noErr;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return dskFulErr;
    case ENOENT:
    case EISDIR:
    case ELOOP:
        return fnfErr;
    case ENOTDIR:
        return dirNFErr;
    case EEXIST:
        return dupFNErr;
    case EROFS:
        return wPrErr;
    case EACCES:
        return aim == Aim::open ? permErr : wrPermErr;
    case EPERM:
        return aim == Aim::open ? permErr : fLckdErr;
    case ENOTEMPTY:
    case EBUSY:
    case EAGAIN:
    case EDEADLK:
        return fBsyErr;
    case ETXTBSY:
        return opWrErr;
    case EBADF:
        return rfNumErr;
    case EINVAL:
    case EFAULT:
    case EDOM:
    case ERANGE:
    case EOVERFLOW:
    case ENOSYS:
    case ENOTSUP:
    case ENOTTY:
        return paramErr;
    case ESPIPE:
        return posErr;
    case EMFILE:
    case ENFILE:
        return tmfoErr;
    case ENOMEM:
        return memFullErr;
    case ENAMETOOLONG:
    case EILSEQ:
        return bdNamErr;
    case EXDEV:
        return badMovErr;
    case ENODEV:
    case ENXIO:
        return nsvErr;
    case ESTALE:
    case ETIMEDOUT:
    case EHOSTDOWN:
    case ENOTCONN:
    case ECONNRESET:
        return volOffLinErr;
    default:
        return ioErr;
    }
}

OSErr errorOf(int number, Aim aim, const fs::path &path)
{
    struct stat folder;
    if (number == ENOENT && stat(path.parent_path().c_str(), &folder) != 0 && errno == ENOENT)
        return dirNFErr;
    return errorOf(number, aim);
}

Descriptor &Descriptor::operator=(Descriptor &&other) noexcept
{
    if (this != &other) {
        close();
        number_ = other.release();
    }
    return *this;
}

Descriptor::~Descriptor()
{
    close();
}

int Descriptor::release()
{
    return std::exchange(number_, -1);
}

int Descriptor::close()
{
    // Linux frees the number even if close returns EINTR; trying again could
    // close another file.
    int number = release();
    if (number >= 0 && ::close(number) != 0 && errno != EINTR)
        return errno;
    return 0;
}

Descriptor openPath(const fs::path &path, int flags)
{
    return Descriptor(
        retried([&] { return ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666); }));
}

OSErr statusOf(const fs::path &path, Aim aim, struct stat &status)
{
    if (stat(path.c_str(), &status) != 0)
        return errorOf(errno, aim, path);
    return S_ISREG(status.st_mode) ? noErr : fnfErr;
}

OSErr writeAt(int descriptor, const char *bytes, std::size_t count, off_t position, std::size_t &done)
{
    return errorOf(writeAll(descriptor, {bytes, count}, position, done), Aim::change);
}

OSErr readAt(int descriptor, char *bytes, std::size_t count, off_t position, std::size_t &done)
{
    done = 0;
    while (done < count) {
        ssize_t got = retried(
            [&] { return pread(descriptor, bytes + done, count - done, position + static_cast<off_t>(done)); });
        if (got <= 0)
            return got == 0 ? OSErr{eofErr} : errorOf(errno, Aim::open);
        done += static_cast<std::size_t>(got);
    }
    return noErr;
}

OSErr readWhole(const fs::path &path, std::size_t limit, std::string &bytes)
{
    bytes.clear();
    Descriptor file = openPath(path, O_RDONLY);
    struct stat status;
    if (!file.open() || fstat(file.number(), &status) != 0)
        return errorOf(errno, Aim::open, path);
    if (!S_ISREG(status.st_mode) || static_cast<std::uint64_t>(status.st_size) > limit)
        return ioErr;
    bytes.resize(static_cast<std::size_t>(status.st_size));
    std::size_t done;
    OSErr error = readAt(file.number(), bytes.data(), bytes.size(), 0, done);
    bytes.resize(done);
    // Shorter than its status says: another program is cutting it.
    return error == eofErr ? OSErr{ioErr} : error;
}

namespace {

OSErr fill(Descriptor &file, const std::string &bytes, mode_t mode, bool sync)
{
    std::size_t done;
    if (OSErr error = writeAt(file.number(), bytes.data(), bytes.size(), 0, done))
        return error;
    if (fchmod(file.number(), mode) != 0 || (sync && retried([&] { return fsync(file.number()); }) != 0))
        return errorOf(errno, Aim::change);
    return errorOf(file.close(), Aim::change);
}

}  // namespace

OSErr replaceWhole(const fs::path &path, const std::string &bytes, mode_t mode, bool sync)
{
    std::string temporary = (path.parent_path() / ".riders-XXXXXX").string();
    Descriptor file(mkostemp(temporary.data(), O_CLOEXEC));
    if (!file.open())
        return errorOf(errno, Aim::change, path);
    OSErr error = fill(file, bytes, mode, sync);
    if (error == noErr && rename(temporary.c_str(), path.c_str()) != 0)
        error = errorOf(errno, Aim::change, path);
    if (error != noErr)
        unlink(temporary.c_str());
    else if (sync)
        syncFolder(path.parent_path());
    return error;
}

void syncFolder(const fs::path &folder)
{
    Descriptor opened = openPath(folder, O_RDONLY | O_DIRECTORY);
    if (opened.open())
        fsync(opened.number());
}

}  // namespace toolbox::files
