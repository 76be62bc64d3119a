#include "make/preferences_folder.h"

#include <stdlib.h>

#include <stdexcept>

namespace riders {

PreferencesFolder::PreferencesFolder(bool usersOwn)
{
    if (usersOwn)
        return;
    std::string pattern = (std::filesystem::temp_directory_path() / "riders-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("no folder for the settings can be made in " +
                                 std::filesystem::temp_directory_path().string());
    path_ = pattern;
}

PreferencesFolder::~PreferencesFolder()
{
    std::error_code ignored;
    if (!path_.empty())
        std::filesystem::remove_all(path_, ignored);
}

}  // namespace riders
