// The plug-in's settings, filled in by the host; docs/riders-file.md describes their file.
#pragma once

#include <filesystem>

#include "remaking/dialog_values.h"

namespace riders::remaking {

// Puts the values into a settings file that the plug-in has written; all else in it stays. Throws io::Refusal
// where it is not as this version writes it, or cannot be changed. The Toolbox must be started.
void putIntoSettings(const std::filesystem::path &settings, const DialogValues &values);

}  // namespace riders::remaking
