#include "toolbox/files.h"

#include "files/calls.h"
#include "files/catalog.h"
#include "files/datafork.h"
#include "files/names.h"
#include "files/openfiles.h"
#include "files/places.h"
#include "session/managers.h"
#include "toolbox/bigendian.h"
#include "toolbox/host/failed_changes.h"
#include "toolbox/host/text.h"

namespace toolbox::files {
namespace {

std::string quotedName(ConstStr255Param name)
{
    return name ? trace::quoted(name) : "\"\"";
}

std::string quotedName(std::int16_t refNum)
{
    return trace::quoted(utf8FromRoman(openFiles().nameOf(refNum)));
}

std::string fourCharacters(OSType type)
{
    BigUInt32 bytes = type;
    return {reinterpret_cast<const char *>(bytes.bytes), sizeof bytes.bytes};
}

}  // namespace

}  // namespace toolbox::files

namespace toolbox::managers {

void startFiles(const Configuration &configuration)
{
    forgetFailedChanges();
    files::startPlaces(configuration);
}

void stopFiles()
{
    files::openFiles().clear();
    files::forgetAliases();
    files::stopPlaces();
}

int openFileCount()
{
    return files::openFiles().count();
}

}  // namespace toolbox::managers

using namespace toolbox;
using namespace toolbox::files;

OSErr Create(ConstStr255Param name, int16_t vRefNum, OSType creator, OSType fileType)
{
    return HCreate(vRefNum, 0, name, creator, fileType);
}

OSErr HCreate(int16_t vRefNum, int32_t dirID, ConstStr255Param name, OSType creator, OSType fileType)
{
    return fileCall(FileCall::create, quotedName(name),
                    [&] { return createFile(vRefNum, dirID, name, creator, fileType); });
}

OSErr FSOpen(ConstStr255Param name, int16_t vRefNum, int16_t *refNum)
{
    return HOpen(vRefNum, 0, name, fsCurPerm, refNum);
}

OSErr HOpen(int16_t vRefNum, int32_t dirID, ConstStr255Param name, int8_t permission, int16_t *refNum)
{
    if (refNum)
        *refNum = 0;
    return fileCall(FileCall::open, quotedName(name), [&] {
        return refNum ? openFork(vRefNum, dirID, name, permission, *refNum) : OSErr{paramErr};
    });
}

// A file that cannot be closed would stay open for good, so this closes it even
// when a fault is planned.
OSErr FSClose(int16_t refNum)
{
    std::string name = quotedName(refNum);
    OSErr planned = faults::check(FileCall::close);
    OSErr error = closeFork(refNum);
    if (planned != noErr)
        error = planned;
    traceCall(FileCall::close, name, error);
    return error;
}

OSErr FSRead(int16_t refNum, int32_t *count, void *buffer)
{
    int32_t none = 0;
    int32_t &moved = count ? *count : none;
    return partCall(FileCall::read, quotedName(refNum), moved,
                    [&] { return count ? readBytes(refNum, moved, buffer) : OSErr{paramErr}; });
}

OSErr FSWrite(int16_t refNum, int32_t *count, const void *buffer)
{
    int32_t none = 0;
    int32_t &moved = count ? *count : none;
    return partCall(FileCall::write, quotedName(refNum), moved,
                    [&] { return count ? writeBytes(refNum, moved, buffer) : OSErr{paramErr}; });
}

OSErr GetEOF(int16_t refNum, int32_t *logicalEnd)
{
    return fileCall(FileCall::getEOF, quotedName(refNum), [&] { return getEnd(refNum, logicalEnd); });
}

OSErr SetEOF(int16_t refNum, int32_t logicalEnd)
{
    return fileCall(FileCall::setEOF, quotedName(refNum), [&] { return setEnd(refNum, logicalEnd); });
}

OSErr GetFPos(int16_t refNum, int32_t *position)
{
    return fileCall(FileCall::getFPos, quotedName(refNum), [&] { return getPosition(refNum, position); });
}

OSErr SetFPos(int16_t refNum, int16_t mode, int32_t offset)
{
    return fileCall(FileCall::setFPos, quotedName(refNum), [&] { return setPosition(refNum, mode, offset); });
}

OSErr FSDelete(ConstStr255Param name, int16_t vRefNum)
{
    return HDelete(vRefNum, 0, name);
}

OSErr HDelete(int16_t vRefNum, int32_t dirID, ConstStr255Param name)
{
    return fileCall(FileCall::remove, quotedName(name), [&] { return removeFile(vRefNum, dirID, name); });
}

OSErr Rename(ConstStr255Param oldName, int16_t vRefNum, ConstStr255Param newName)
{
    return fileCall(FileCall::rename, quotedName(oldName),
                    [&] { return renameFile(vRefNum, 0, oldName, newName); });
}

OSErr GetFInfo(ConstStr255Param name, int16_t vRefNum, FInfo *info)
{
    return HGetFInfo(vRefNum, 0, name, info);
}

OSErr HGetFInfo(int16_t vRefNum, int32_t dirID, ConstStr255Param name, FInfo *info)
{
    return fileCall(FileCall::getFInfo, quotedName(name), [&] { return getInfo(vRefNum, dirID, name, info); });
}

OSErr SetFInfo(ConstStr255Param name, int16_t vRefNum, const FInfo *info)
{
    return fileCall(FileCall::setFInfo, quotedName(name), [&] { return setInfo(vRefNum, 0, name, info); });
}

OSErr FlushVol(ConstStr255Param name, int16_t vRefNum)
{
    return fileCall(FileCall::flushVol, quotedName(name), [&] { return flush(vRefNum); });
}

OSErr FindFolder(int16_t vRefNum, OSType folderType, Boolean create, int16_t *foundVRefNum, int32_t *foundDirID)
{
    int16_t volume = 0;
    int32_t directory = 0;
    OSErr error = fileCall(FileCall::findFolder, trace::quoted(utf8FromRoman(fourCharacters(folderType))),
                           [&] { return findFolder(vRefNum, folderType, create != 0, volume, directory); });
    if (foundVRefNum)
        *foundVRefNum = volume;
    if (foundDirID)
        *foundDirID = directory;
    return error;
}
