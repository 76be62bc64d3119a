#include "files/datafork.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "files/catalog.h"
#include "files/companion.h"
#include "files/openfiles.h"
#include "files/places.h"
#include "files/retried.h"
#include "toolbox/host/text.h"

namespace fs = std::filesystem;

namespace toolbox::files {
namespace {

constexpr std::int64_t longestFile = std::numeric_limits<std::int32_t>::max();

bool refusedForWriting(int number)
{
    return number == EACCES || number == EPERM || number == EROFS || number == ETXTBSY;
}

// Opens as the permission says; fsCurPerm for writing too, if that is possible.
OSErr openData(const fs::path &path, const struct stat &status, std::int8_t permission, OpenFile &file)
{
    bool mustWrite = permission == fsWrPerm || permission == fsRdWrPerm;
    bool otherWriter = openFiles().isOpenForWriting(status);
    if (mustWrite && (otherWriter || isLocked(status)))
        return otherWriter ? opWrErr : permErr;
    file.writable = mustWrite || (permission == fsCurPerm && !otherWriter && !isLocked(status));
    file.descriptor = openPath(path, file.writable ? O_RDWR : O_RDONLY);
    if (!file.descriptor.open() && file.writable && !mustWrite && refusedForWriting(errno)) {
        file.writable = false;
        file.descriptor = openPath(path, O_RDONLY);
    }
    return file.descriptor.open() ? OSErr{noErr} : errorOf(errno, Aim::open, path);
}

// A plain file that counted as text and no longer looks like it keeps its type.
void keepTextType(const OpenFile &file)
{
    bool isText = true;
    if (!file.written || !file.lookedLikeText || beginsAsText(file.descriptor.number(), isText) != noErr || isText)
        return;
    struct stat status;
    bool still = statusOf(file.path, Aim::open, status) == noErr && status.st_dev == file.device &&
                 status.st_ino == file.inode;
    if (still && !hasTypeOfItsOwn(file.path))
        setFinderInfoOf(file.path, "TEXTttxt");
}

OSErr endOf(const OpenFile &file, std::int64_t &end)
{
    struct stat status;
    if (fstat(file.descriptor.number(), &status) != 0)
        return errorOf(errno, Aim::open);
    end = status.st_size;
    return noErr;
}

// Positions are 32-bit numbers to callers.
OSErr storePosition(std::int64_t position, std::int32_t *result)
{
    if (!result || position > longestFile)
        return paramErr;
    *result = static_cast<std::int32_t>(position);
    return noErr;
}

}  // namespace

OSErr openFork(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name, std::int8_t permission,
               std::int16_t &refNum)
{
    if (permission < fsCurPerm || permission > fsRdWrPerm)
        return paramErr;
    OpenFile file;
    struct stat status;
    if (OSErr error = locateFile(vRefNum, dirID, name, Match::anyCase, Aim::open, file.path, status))
        return error;
    if (OSErr error = openData(file.path, status, permission, file))
        return error;
    if (fstat(file.descriptor.number(), &status) != 0)
        return errorOf(errno, Aim::open);
    if (!openFiles().isStillTheOneMade(file.path, status))
        return fnfErr;
    file.device = status.st_dev;
    file.inode = status.st_ino;
    file.name = pascalView(name);
    if (file.writable && status.st_size > 0)
        beginsAsText(file.descriptor.number(), file.lookedLikeText);
    file.lookedLikeText |= file.writable && status.st_size == 0;
    refNum = openFiles().add(std::move(file));
    return refNum ? noErr : tmfoErr;
}

OSErr closeFork(std::int16_t refNum)
{
    OpenFile *file = openFiles().find(refNum);
    if (!file)
        return rfNumErr;
    keepTextType(*file);
    int failed = file->descriptor.close();
    openFiles().remove(refNum);
    return errorOf(failed, Aim::change);
}

OSErr readBytes(std::int16_t refNum, std::int32_t &count, void *buffer)
{
    std::int32_t wanted = std::exchange(count, 0);
    OpenFile *file = openFiles().find(refNum);
    if (!file)
        return rfNumErr;
    if (wanted < 0 || (wanted > 0 && !buffer))
        return paramErr;
    std::size_t done;
    OSErr error = readAt(file->descriptor.number(), static_cast<char *>(buffer), static_cast<std::size_t>(wanted),
                         file->mark, done);
    file->mark += static_cast<std::int64_t>(done);
    count = static_cast<std::int32_t>(done);
    return error;
}

OSErr writeBytes(std::int16_t refNum, std::int32_t &count, const void *buffer)
{
    std::int32_t wanted = std::exchange(count, 0);
    OpenFile *file = openFiles().find(refNum);
    if (!file)
        return rfNumErr;
    if (!file->writable)
        return wrPermErr;
    if (wanted < 0 || (wanted > 0 && !buffer))
        return paramErr;
    if (file->mark + wanted > longestFile)
        return dskFulErr;
    file->written = file->unflushed = true;
    std::size_t done;
    OSErr error = writeAt(file->descriptor.number(), static_cast<const char *>(buffer),
                          static_cast<std::size_t>(wanted), file->mark, done);
    file->mark += static_cast<std::int64_t>(done);
    count = static_cast<std::int32_t>(done);
    return error;
}

OSErr getEnd(std::int16_t refNum, std::int32_t *logicalEnd)
{
    OpenFile *file = openFiles().find(refNum);
    if (!file)
        return rfNumErr;
    std::int64_t end = 0;
    OSErr error = endOf(*file, end);
    return error ? error : storePosition(end, logicalEnd);
}

OSErr setEnd(std::int16_t refNum, std::int32_t logicalEnd)
{
    OpenFile *file = openFiles().find(refNum);
    if (!file)
        return rfNumErr;
    if (!file->writable)
        return wrPermErr;
    if (logicalEnd < 0)
        return paramErr;
    if (retried([&] { return ftruncate(file->descriptor.number(), logicalEnd); }) != 0)
        return errorOf(errno, Aim::change);
    file->written = file->unflushed = true;
    file->mark = std::min<std::int64_t>(file->mark, logicalEnd);
    return noErr;
}

OSErr getPosition(std::int16_t refNum, std::int32_t *position)
{
    OpenFile *file = openFiles().find(refNum);
    return file ? storePosition(file->mark, position) : OSErr{rfNumErr};
}

OSErr setPosition(std::int16_t refNum, std::int16_t mode, std::int32_t offset)
{
    OpenFile *file = openFiles().find(refNum);
    if (!file)
        return rfNumErr;
    std::int64_t end = 0;
    if (OSErr error = endOf(*file, end))
        return error;
    if (mode < fsAtMark || mode > fsFromMark)
        return paramErr;
    std::int64_t base = mode == fsFromStart ? 0 : mode == fsFromLEOF ? end : file->mark;
    std::int64_t position = mode == fsAtMark ? file->mark : base + offset;
    if (position < 0)
        return posErr;
    file->mark = std::min(position, end);
    return position > end ? eofErr : noErr;
}

OSErr flush(std::int16_t vRefNum)
{
    fs::path folder;
    if (OSErr error = folderOf(vRefNum, 0, folder))
        return error;
    struct stat volume;
    if (stat(folder.c_str(), &volume) != 0)
        return nsvErr;
    OSErr first = noErr;
    for (auto &[refNum, file] : openFiles()) {
        if (!file.unflushed || file.device != volume.st_dev)
            continue;
        int descriptor = file.descriptor.number();
        bool failed = retried([descriptor] { return fsync(descriptor); }) != 0;
        file.unflushed = failed;
        if (failed && first == noErr)
            first = errorOf(errno, Aim::change);
    }
    return first;
}

}  // namespace toolbox::files
