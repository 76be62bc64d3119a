// The copy of the saved settings that the plug-in works on, from one of its calls to the next.
#pragma once

#include "io/private_folder.h"
#include "settings/saved_settings.h"

namespace riders::settings {

class WorkingCopy {
public:
    // Throws io::Refusal when there is no place for a copy.
    explicit WorkingCopy(SavedSettings saved);

    const std::filesystem::path &folder() const { return folder_; }
    // Before a call: makes the copy what the user has saved. What an earlier call left there, and could not be
    // saved, stays instead. Throws io::Refusal when the user's settings cannot be read; the copy
    // may lack them then, and is not kept.
    void prepare();
    // After it: saves what has changed, unless the user's settings could not be read. Throws io::Refusal when that
    // fails; they are then as they were, and the next call works on the copy. Without a change it is tried again,
    // but not reported.
    void keep();
    // Instead of that: what the call left there is not to be used.
    void forget();

private:
    std::string bytes() const;
    void empty() const;

    SavedSettings saved_;
    io::PrivateFolder private_;
    std::filesystem::path folder_;
    std::string before_;
    bool readable_ = true;
    bool unsaved_ = false;
};

}  // namespace riders::settings
