// The user's saved settings: a copy for the plug-in to work on, put back whole or not at all.
#pragma once

#include <array>
#include <filesystem>
#include <string>

namespace riders::settings {

// The settings file and the "._" file beside it are two files. New ones are written to a folder beside them first,
// and that folder gets its name in one step; from then on they count, even should the process be killed before
// each is where it belongs: whoever reads them next puts them there.
class SavedSettings {
public:
    // `folder` is the user's, which need not be there yet; `name` the settings file's.
    SavedSettings(std::filesystem::path folder, const std::string &name);

    // Puts in place what an earlier process was killed over. For those who go on to use the files themselves.
    // Throws io::Refusal.
    void finishEarlier() const;
    // Copies what there is into the folder. Throws io::Refusal where it cannot be read.
    void copyTo(const std::filesystem::path &copy) const;
    // The names of both files, the settings file's first.
    const std::array<std::string, 2> &names() const { return names_; }
    // Makes the files of that folder the user's. Throws io::Refusal; the user's are then as they were.
    void takeFrom(const std::filesystem::path &copy) const;

private:
    void putDecidedInPlace() const;

    std::filesystem::path folder_;
    std::array<std::string, 2> names_;
};

}  // namespace riders::settings
