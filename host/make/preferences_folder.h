// The folder the plug-in keeps its settings in while a file is made: the
// user's own, or an empty one that is removed afterwards.
#pragma once

#include <filesystem>

namespace riders::make {

class PreferencesFolder {
public:
    explicit PreferencesFolder(bool usersOwn);
    ~PreferencesFolder();
    PreferencesFolder(const PreferencesFolder &) = delete;
    // Empty for the user's own: the Toolbox knows where that is.
    const std::filesystem::path &path() const { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace riders::make
