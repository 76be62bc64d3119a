#include "make/preferences_folder.h"

#include <stdlib.h>

#include <stdexcept>

namespace riders::make {
namespace {

std::filesystem::path newFolderIn(const std::filesystem::path &parent)
{
    std::string pattern = (parent / "riders-XXXXXX").string();
    return mkdtemp(pattern.data()) ? std::filesystem::path(pattern) : std::filesystem::path();
}

}  // namespace

// In memory where possible: these settings are never read again, so
// they need not go to a disk.
PreferencesFolder::PreferencesFolder(bool usersOwn)
{
    if (usersOwn)
        return;
    path_ = newFolderIn("/dev/shm");
    if (path_.empty())
        path_ = newFolderIn(std::filesystem::temp_directory_path());
    if (path_.empty())
        throw std::runtime_error("no folder for the settings can be made in " +
                                 std::filesystem::temp_directory_path().string());
}

PreferencesFolder::~PreferencesFolder()
{
    std::error_code ignored;
    if (!path_.empty())
        std::filesystem::remove_all(path_, ignored);
}

}  // namespace riders::make
