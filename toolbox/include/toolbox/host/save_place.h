// Where the files go that users save, for hosts.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace toolbox {

struct SavePlace {
    // Whoever called the save dialog gets this folder instead of the file's own; empty: the file's own.
    std::filesystem::path folder;
    // UTF-8; not empty: the file cannot be saved, for this reason. It is shown, and the dialog stays.
    std::string refusal;
};

// Called with the file, UTF-8, when the user has chosen a name in a save dialog and agreed to replace what has it.
// Must not call the Toolbox.
using SavePlaceProc = std::function<SavePlace(const std::filesystem::path &file)>;
// From now on, for all save dialogs; empty, as at the start of the session: files go where the user says.
void setSavePlace(SavePlaceProc place);

// From now on save dialogs open in that file's folder and propose its name, UTF-8, whatever their caller proposes;
// of the name all but the ending is selected. Without a folder, where they would open otherwise. Empty, as at the
// start of the session: what the caller proposes.
void proposeToSave(const std::filesystem::path &file);

}  // namespace toolbox
