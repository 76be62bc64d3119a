// Asking for a file, in the dialogs of Standard File.
#pragma once

#include <filesystem>

#include "app/words.h"

namespace riders::app {

// Each returns an empty path when the person cancels.
std::filesystem::path askForJob();
std::filesystem::path askForRiders();
// Where a job is to be saved; proposed is what the dialog opens with. The
// person has agreed to replace a file of that name.
std::filesystem::path askWhereToSave(Words prompt, const std::filesystem::path &proposed);

}  // namespace riders::app
