#include "files/places.h"

#include <pwd.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <map>
#include <optional>
#include <vector>

#include "files/linuxfile.h"
#include "files/names.h"
#include "toolbox/files.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/text.h"

namespace fs = std::filesystem;

namespace toolbox::files {
namespace {

constexpr std::int16_t firstWorkingDirectory = -32000;
constexpr std::int32_t firstDirectory = 16;

// Numbers are given out in turn and kept: the same folder has the same number.
class NumberedFolders {
public:
    std::size_t indexOf(const fs::path &folder)
    {
        auto [entry, isNew] = indexes_.try_emplace(folder, folders_.size());
        if (isNew)
            folders_.push_back(folder);
        return entry->second;
    }
    bool has(const fs::path &folder) const { return indexes_.contains(folder); }
    std::size_t size() const { return folders_.size(); }
    const fs::path *at(std::int64_t index) const
    {
        bool known = index >= 0 && index < static_cast<std::int64_t>(folders_.size());
        return known ? &folders_[static_cast<std::size_t>(index)] : nullptr;
    }

private:
    std::vector<fs::path> folders_;
    std::map<fs::path, std::size_t> indexes_;
};

struct Places {
    fs::path startFolder;
    fs::path preferencesFolder;
    NumberedFolders workingDirectories;
    NumberedFolders directories;
    fs::path temporaryFolder;  // once made
};
Places places;

std::string environment(const char *name)
{
    const char *value = getenv(name);
    return value ? value : "";
}

fs::path home()
{
    std::string folder = environment("HOME");
    if (!folder.empty())
        return folder;
    const passwd *user = getpwuid(getuid());
    return user && user->pw_dir ? user->pw_dir : "/";
}

fs::path defaultFolder()
{
    return places.startFolder.empty() ? home() : places.startFolder;
}

fs::path preferencesFolder()
{
    return places.preferencesFolder.empty() ? folders::usersPreferences() : places.preferencesFolder;
}

OSErr makeTemporaryFolder()
{
    fs::path parent = environment("TMPDIR");
    if (!parent.is_absolute())
        parent = "/tmp";
    std::string pattern = (parent / "riders-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        return errorOf(errno, Aim::change, pattern);
    places.temporaryFolder = pattern;
    return noErr;
}

OSErr makeFolder(const fs::path &folder)
{
    std::error_code failed;
    fs::create_directories(folder, failed);
    if (failed.value() == EEXIST || failed.value() == ENOTDIR)
        return dupFNErr;
    return errorOf(failed.value(), Aim::change);
}

// dupFNErr if something that is not a folder has the name.
OSErr ensureFolder(const fs::path &folder, bool create)
{
    struct stat status;
    if (stat(folder.c_str(), &status) == 0)
        return S_ISDIR(status.st_mode) ? noErr : dupFNErr;
    if (errno != ENOENT)
        return errno == ENOTDIR ? OSErr{dupFNErr} : errorOf(errno, Aim::open);
    return create ? makeFolder(folder) : OSErr{fnfErr};
}

}  // namespace

void startPlaces(const Configuration &configuration)
{
    places = {};
    places.startFolder = configuration.startFolder;
    places.preferencesFolder = configuration.preferencesFolder;
}

void stopPlaces()
{
    std::error_code ignored;
    if (!places.temporaryFolder.empty())
        fs::remove_all(places.temporaryFolder, ignored);
    places = {};
}

OSErr folderOf(std::int16_t vRefNum, std::int32_t dirID, fs::path &folder)
{
    const fs::path *working = places.workingDirectories.at(std::int64_t{vRefNum} - firstWorkingDirectory);
    if (!working && vRefNum != 0 && vRefNum != kOnSystemDisk)
        return nsvErr;
    if (dirID == 0) {
        folder = working ? *working : defaultFolder();
        return noErr;
    }
    const fs::path *directory = places.directories.at(std::int64_t{dirID} - firstDirectory);
    if (!directory)
        return dirNFErr;
    folder = *directory;
    return noErr;
}

OSErr findFolder(std::int16_t vRefNum, OSType folderType, bool create, std::int16_t &foundVRefNum,
                 std::int32_t &foundDirID)
{
    fs::path folder;
    if (OSErr error = folderOf(vRefNum, 0, folder))
        return error;
    if (folderType == kPreferencesFolderType)
        folder = preferencesFolder();
    else if (folderType != kTemporaryFolderType)
        return fnfErr;
    else if (OSErr error = places.temporaryFolder.empty() ? makeTemporaryFolder() : OSErr{noErr})
        return error;
    else
        folder = places.temporaryFolder;
    if (OSErr error = ensureFolder(folder, create))
        return error;
    foundVRefNum = kOnSystemDisk;
    foundDirID = firstDirectory + static_cast<std::int32_t>(places.directories.indexOf(folder));
    return noErr;
}

}  // namespace toolbox::files

namespace toolbox::folders {

using namespace toolbox::files;

std::optional<std::int16_t> workingDirectory(const fs::path &folder)
{
    std::error_code failed;
    fs::path canonical = fs::canonical(folder, failed);
    if (failed || !fs::is_directory(canonical, failed))
        return std::nullopt;
    constexpr std::size_t most = -firstWorkingDirectory;
    if (places.workingDirectories.size() == most && !places.workingDirectories.has(canonical))
        return std::nullopt;
    return static_cast<std::int16_t>(firstWorkingDirectory +
                                     static_cast<int>(places.workingDirectories.indexOf(canonical)));
}

fs::path pathOf(std::int16_t vRefNum, std::int32_t dirID)
{
    fs::path folder;
    return folderOf(vRefNum, dirID, folder) == noErr ? folder : fs::path();
}

fs::path pathOf(std::int16_t vRefNum, std::int32_t dirID, const unsigned char *name)
{
    fs::path folder, path;
    bool known = name && folderOf(vRefNum, dirID, folder) == noErr &&
                 pathFor(folder, pascalView(name), Match::anyCase, path) == noErr;
    return known ? path : fs::path();
}

fs::path usersPreferences()
{
    fs::path configuration = environment("XDG_CONFIG_HOME");
    // A relative one is to be ignored, by the variable's definition.
    if (!configuration.is_absolute())
        configuration = home() / ".config";
    return configuration / "riders";
}

fs::path preferences()
{
    return preferencesFolder();
}

void usePreferences(const fs::path &folder)
{
    places.preferencesFolder = folder;
}

std::string macName(const fs::path &folder, const std::string &linuxName)
{
    return macNameFor(folder, linuxName);
}

}  // namespace toolbox::folders
