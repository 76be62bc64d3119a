#include "files/forks.h"

#include <fcntl.h>
#include <unistd.h>

#include "files/calls.h"
#include "files/companion.h"
#include "files/linuxfile.h"
#include "files/names.h"
#include "files/places.h"
#include "toolbox/host/text.h"

namespace fs = std::filesystem;

namespace toolbox::files {
namespace {

OSErr replaceFork(const fs::path &path, const std::string &bytes)
{
    AppleDouble contents;
    if (loadCompanion(path, contents) == Companion::damaged)
        return ioErr;
    contents.set(resourceForkEntry, bytes);
    return storeCompanion(path, contents);
}

OSErr write(const ForkAddress &address, const std::string &bytes)
{
    fs::path path;
    if (OSErr error = locateFork(address, path))
        return error;
    Descriptor made = openPath(path, O_RDWR | O_CREAT | O_EXCL);
    if (!made.open() && errno != EEXIST)
        return errorOf(errno, Aim::change, path);
    OSErr error = replaceFork(path, bytes);
    if (error != noErr && made.open())
        unlink(path.c_str());
    return error;
}

}  // namespace

OSErr locateFork(const ForkAddress &address, fs::path &path)
{
    fs::path folder;
    OSErr error = folderOf(address.vRefNum, address.dirID, folder);
    return error ? error : pathFor(folder, address.name, Match::anyCase, path);
}

OSErr readFork(const ForkAddress &address, std::string &bytes)
{
    bytes.clear();
    fs::path path;
    if (OSErr error = locateFork(address, path))
        return error;
    AppleDouble contents;
    switch (loadCompanion(path, contents)) {
    case Companion::damaged:
        return ioErr;
    case Companion::present:
        bytes = contents.bytes(resourceForkEntry);
        return noErr;
    case Companion::none:
        break;
    }
    struct stat status;
    return statusOf(path, Aim::open, status);
}

OSErr writeFork(const ForkAddress &address, const std::string &bytes)
{
    auto count = static_cast<std::int32_t>(bytes.size());
    return transferCall(FileCall::write, trace::quoted(utf8FromRoman(address.name)), count, [&] {
        OSErr error = write(address, bytes);
        if (error != noErr)
            count = 0;
        return error;
    });
}

}  // namespace toolbox::files
