// Pictures of the displays, for hosts and tests.
#pragma once

#include <filesystem>

#include "toolbox/host/machine.h"

namespace toolbox {

// The pixels of display number index (from 0) as they are at this moment,
// including what has not been presented yet; empty when the machine wants no
// pictures. std::out_of_range when there is no such display. Between start and
// stop of the Toolbox.
Picture displayPicture(int index);

// Writes an 8-bit RGB PNG, replacing a file of that name. False, and no file
// left over, when it cannot be written.
bool writePng(const std::filesystem::path &path, const Picture &picture);
// Reads any PNG, with transparent parts on white; an empty picture when it cannot
// be read.
Picture readPng(const std::filesystem::path &path);

}  // namespace toolbox
