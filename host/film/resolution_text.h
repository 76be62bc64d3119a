// A film's resolution as it is written: 1200, or 1440x720 for pixels that are not square.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "screening/tile.h"

namespace riders::film {

// Pixels per inch across and down, whole numbers from kLeastFilmDpi to kMostFilmDpi; nothing for anything else.
std::optional<screening::Resolution> resolutionFromText(std::string_view text);
std::string resolutionText(const screening::Resolution &resolution);

}  // namespace riders::film
