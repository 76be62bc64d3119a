// Where files saved through the dialog really go. Private to Standard File.
#pragma once

#include "toolbox/host/save_place.h"

namespace toolbox::standardfile {

// Empty where nobody asked for another place than the one chosen.
const SavePlaceProc &savePlace();
// What the host proposes; empty where it proposes nothing.
const std::filesystem::path &proposedFile();

}  // namespace toolbox::standardfile
