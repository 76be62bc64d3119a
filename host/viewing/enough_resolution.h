// At which resolution a screen would come out as it was asked for.
#pragma once

#include <filesystem>

#include "io/beside.h"
#include "viewing/dots_picture.h"

namespace riders::viewing {

// Whether the frequency measured is so far from the one asked for that an eye sees it.
bool frequencyMissed(const Dots &dots);

// The lowest usual resolution above `dpi` at which all screens of a riders file are reached; 0 where there is
// none. Asks the interpreter, as `riders make --explain` does, until it is not wanted any more. Throws Refusal.
int enoughResolution(const std::filesystem::path &riders, double dpi, const io::Beside &unwanted);

}  // namespace riders::viewing
