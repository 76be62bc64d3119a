#include "files/companion.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>

#include "files/linuxfile.h"
#include "files/retried.h"

namespace fs = std::filesystem;

namespace toolbox::files {
namespace {

constexpr std::size_t beginningBytes = 1024;
constexpr OSType textType = 0x54455854, unknownType = 0x3F3F3F3F;  // 'TEXT', '????'
// A fork holds 16 MiB; nothing else in a companion comes near that.
constexpr std::size_t companionLimit = std::size_t{64} * 1024 * 1024;
// Header, two entries, Finder information, and a fork with an empty map.
constexpr off_t sizeWithoutResources = 26 + 2 * 12 + 32 + 286;

bool isControl(char c)
{
    auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r' && byte != '\f') || byte == 0x7F;
}

bool isBlank(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return c == '\0'; });
}

// The type and creator that the file has without a companion. One that cannot be read may be of any type.
OSErr plainType(const fs::path &file, std::string &type)
{
    type = "????????";
    Descriptor opened = openPath(file, O_RDONLY);
    if (!opened.open())
        return errorOf(errno, Aim::open, file);
    bool isText = false;
    OSErr error = beginsAsText(opened.number(), isText);
    if (isText)
        type = "TEXTttxt";
    return error;
}

OSErr seeWhetherItSaysNothing(const fs::path &file, const AppleDouble &contents, bool &nothing)
{
    nothing = false;
    for (const AppleDouble::Entry &entry : contents.entries)
        if (entry.id != finderInfoEntry && !entry.bytes.empty())
            return noErr;
    std::string_view info = contents.bytes(finderInfoEntry);
    if (info.size() > finderInfoBytes || !isBlank(info.substr(std::min<std::size_t>(info.size(), 8))))
        return noErr;
    std::string type;
    nothing = isBlank(info);
    OSErr error = nothing ? OSErr{noErr} : plainType(file, type);
    nothing |= error == noErr && info.substr(0, 8) == type;
    return error;
}

OSErr removeCompanion(const fs::path &companion)
{
    if (unlink(companion.c_str()) != 0 && errno != ENOENT && errno != ENAMETOOLONG)
        return errorOf(errno, Aim::change);
    return noErr;
}

}  // namespace

std::string companionName(const std::string &name)
{
    return "._" + name;
}

fs::path companionOf(const fs::path &file)
{
    return file.parent_path() / companionName(file.filename().string());
}

bool looksLikeText(std::string_view beginning)
{
    if (beginning.find('\0') != std::string_view::npos)
        return false;
    // A few control characters are common in PostScript, such as the one that ends a job.
    auto controls = static_cast<std::size_t>(std::count_if(beginning.begin(), beginning.end(), isControl));
    return controls <= 1 + beginning.size() / 20;
}

OSErr beginsAsText(int descriptor, bool &isText)
{
    char beginning[beginningBytes];
    std::size_t count;
    OSErr error = readAt(descriptor, beginning, sizeof beginning, 0, count);
    isText = (error == noErr || error == eofErr) && looksLikeText({beginning, count});
    return error == eofErr ? OSErr{noErr} : error;
}

Companion loadCompanion(const fs::path &file, AppleDouble &contents)
{
    contents = newAppleDouble();
    fs::path companion = companionOf(file);
    struct stat status;
    if (lstat(companion.c_str(), &status) != 0)
        return errno == ENOENT || errno == ENAMETOOLONG ? Companion::none : Companion::damaged;
    std::string bytes;
    if (readWhole(companion, companionLimit, bytes) != noErr)
        return Companion::damaged;
    auto parsed = parseAppleDouble(bytes);
    if (!parsed)
        return Companion::damaged;
    contents = std::move(*parsed);
    return Companion::present;
}

// Waits for the disk only if the old companion holds resources, whose loss in a
// power failure would matter; a file just made has nothing to lose yet.
OSErr storeCompanion(const fs::path &file, const AppleDouble &contents)
{
    fs::path companion = companionOf(file);
    struct stat data, old;
    if (OSErr error = statusOf(file, Aim::change, data))
        return error;
    bool existed = stat(companion.c_str(), &old) == 0;
    if (isLocked(data) || (existed && isLocked(old)))
        return fLckdErr;
    bool saysNothing;
    if (OSErr error = seeWhetherItSaysNothing(file, contents, saysNothing))
        return error;
    if (saysNothing)
        return removeCompanion(companion);
    mode_t mode = (existed ? old.st_mode : data.st_mode) & 0666;
    bool precious = existed && old.st_size > sizeWithoutResources;
    return replaceWhole(companion, composeAppleDouble(contents), mode, precious);
}

OSErr readFinderInfo(const fs::path &file, std::string &info)
{
    AppleDouble contents;
    loadCompanion(file, contents);
    info = contents.finderInfo();
    if (!isBlank({info.data(), 8}))
        return noErr;
    std::string type;
    OSErr error = plainType(file, type);
    info.replace(0, 8, type);
    return error;
}

OSType plainTypeIn(int folder, const std::string &name)
{
    char beginning[beginningBytes];
    const Descriptor opened(
        retried([&] { return openat(folder, name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
    const ssize_t got = retried([&] { return read(opened.number(), beginning, sizeof beginning); });
    const bool isText = got >= 0 && looksLikeText({beginning, static_cast<std::size_t>(got)});
    return isText ? textType : unknownType;
}

bool hasTypeOfItsOwn(const fs::path &file)
{
    AppleDouble contents;
    loadCompanion(file, contents);
    return !isBlank(contents.finderInfo().substr(0, 8));
}

OSErr setFinderInfoOf(const fs::path &file, std::string_view firstBytes)
{
    AppleDouble contents;
    if (loadCompanion(file, contents) == Companion::damaged)
        return ioErr;
    std::string info = contents.finderInfo();
    info.replace(0, firstBytes.size(), firstBytes);
    contents.setFinderInfo(info);
    return storeCompanion(file, contents);
}

OSType typeIn(std::string_view finderInfo)
{
    OSType type = 0;
    for (char c : finderInfo.substr(0, 4))
        type = type << 8 | static_cast<unsigned char>(c);
    return type;
}

}  // namespace toolbox::files
