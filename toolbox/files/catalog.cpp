#include "files/catalog.h"

#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

#include <cstring>
#include <string>
#include <utility>

#include "files/companion.h"
#include "files/openfiles.h"
#include "files/openforks.h"
#include "files/places.h"
#include "toolbox/bigendian.h"
#include "toolbox/host/removal.h"
#include "toolbox/host/text.h"

namespace fs = std::filesystem;

namespace toolbox::files {
namespace {

RemovalProc removalProc;

// As stored: the first 16 bytes of the Finder information.
struct StoredInfo {
    BigUInt32 type;
    BigUInt32 creator;
    BigUInt16 flags;
    BigPoint location;
    BigInt16 folder;
};
static_assert(sizeof(StoredInfo) == 16);

std::string stored(const FInfo &info)
{
    StoredInfo bytes;
    bytes.type = info.fdType;
    bytes.creator = info.fdCreator;
    bytes.flags = info.fdFlags;
    bytes.location.v = info.fdLocation.v;
    bytes.location.h = info.fdLocation.h;
    bytes.folder = info.fdFldr;
    return {reinterpret_cast<const char *>(&bytes), sizeof bytes};
}

FInfo infoFrom(const std::string &finderInfo)
{
    StoredInfo bytes;
    std::memcpy(&bytes, finderInfo.data(), sizeof bytes);
    FInfo info{};
    info.fdType = bytes.type;
    info.fdCreator = bytes.creator;
    info.fdFlags = bytes.flags;
    info.fdLocation.v = bytes.location.v;
    info.fdLocation.h = bytes.location.h;
    info.fdFldr = bytes.folder;
    return info;
}

OSErr locate(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name, Match match, fs::path &path)
{
    fs::path folder;
    if (OSErr error = folderOf(vRefNum, dirID, folder))
        return error;
    return name ? pathFor(folder, pascalView(name), match, path) : OSErr{bdNamErr};
}

// Otherwise a new file would take over the fork of a companion whose file is gone.
OSErr removeOrphan(const fs::path &file)
{
    if (unlink(companionOf(file).c_str()) == 0 || errno == ENOENT || errno == ENAMETOOLONG || errno == EISDIR)
        return noErr;
    return errorOf(errno, Aim::change);
}

// 0 or errno; EEXIST rather than replacing anything.
int moveWithoutReplacing(const fs::path &from, const fs::path &to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    // The file system cannot guarantee it.
    struct stat status;
    if (lstat(to.c_str(), &status) == 0)
        return EEXIST;
    return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

// The companion is moved last: if that fails, the file is moved back.
OSErr moveBoth(const fs::path &from, const fs::path &to)
{
    if (int failed = moveWithoutReplacing(from, to))
        return errorOf(failed, Aim::change, from);
    if (::rename(companionOf(from).c_str(), companionOf(to).c_str()) == 0)
        return noErr;
    OSErr error = errno == ENOENT || errno == ENAMETOOLONG ? removeOrphan(to) : errorOf(errno, Aim::change);
    if (error != noErr)
        moveWithoutReplacing(to, from);
    return error;
}

}  // namespace

OSErr locateFile(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name, Match match, Aim aim,
                 fs::path &path, struct stat &status)
{
    OSErr error = locate(vRefNum, dirID, name, match, path);
    return error ? error : statusOf(path, aim, status);
}

OSErr createFile(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name, OSType creator, OSType fileType)
{
    fs::path path;
    if (OSErr error = locate(vRefNum, dirID, name, Match::literal, path))
        return error;
    Descriptor made = openPath(path, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW);
    struct stat status;
    if (!made.open() || fstat(made.number(), &status) != 0)
        return errorOf(errno, Aim::change, path);
    FInfo info{};
    info.fdType = fileType;
    info.fdCreator = creator;
    OSErr error = removeOrphan(path);
    // The type that an empty file has anyway need not be stored.
    if (error == noErr && (fileType != 'TEXT' || creator != 'ttxt'))
        error = setFinderInfoOf(path, stored(info));
    if (error == noErr)
        openFiles().made(path, status);
    else
        unlink(path.c_str());
    return error;
}

OSErr removeFile(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name)
{
    fs::path path;
    struct stat status;
    if (OSErr error = locateFile(vRefNum, dirID, name, Match::spelling, Aim::change, path, status))
        return error;
    if (isLocked(status))
        return fLckdErr;
    if (openFiles().isOpen(status) || !openForksOf(path).empty())
        return fBsyErr;
    if (removalProc && removalProc(path))
        return noErr;
    if (unlink(path.c_str()) != 0)
        return errorOf(errno, Aim::change, path);
    // The file is gone: an error would say that it is still there. Who makes one of its name tries again.
    removeOrphan(path);
    openFiles().forgetMade(path);
    return noErr;
}

OSErr renameFile(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param oldName, ConstStr255Param newName)
{
    fs::path from, to;
    struct stat status;
    if (OSErr error = locate(vRefNum, dirID, newName, Match::literal, to))
        return error;
    if (OSErr error = locateFile(vRefNum, dirID, oldName, Match::spelling, Aim::change, from, status))
        return error;
    if (isLocked(status))
        return fLckdErr;
    std::vector<OpenFork *> forks = openForksOf(from);
    if (OSErr error = moveBoth(from, to))
        return error;
    std::string name(pascalView(newName));
    openFiles().moved(status, to, name);
    openFiles().forgetMade(from);
    openFiles().forgetMade(to);
    for (OpenFork *fork : forks)
        fork->renamed(name);
    return noErr;
}

OSErr getInfo(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name, FInfo *info)
{
    fs::path path;
    struct stat status;
    if (OSErr error = locateFile(vRefNum, dirID, name, Match::anyCase, Aim::open, path, status))
        return error;
    if (!info)
        return paramErr;
    std::string bytes;
    if (OSErr error = readFinderInfo(path, bytes))
        return error;
    *info = infoFrom(bytes);
    return noErr;
}

OSErr setInfo(std::int16_t vRefNum, std::int32_t dirID, ConstStr255Param name, const FInfo *info)
{
    fs::path path;
    struct stat status;
    if (OSErr error = locateFile(vRefNum, dirID, name, Match::anyCase, Aim::change, path, status))
        return error;
    return info ? setFinderInfoOf(path, stored(*info)) : OSErr{paramErr};
}

}  // namespace toolbox::files

void toolbox::setRemoval(RemovalProc removal)
{
    files::removalProc = std::move(removal);
}
