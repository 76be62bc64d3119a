// The patterns between the plates of a page, computed from their screens.
#pragma once

#include <optional>
#include <vector>

#include "looking/facts/page_facts.h"
#include "screens/grid.h"

namespace riders::looking {

// An ink that takes less than this share of the light is light: yellow takes 0.18, cyan 0.7.
inline constexpr double kLightInk = 0.3;

screens::Grid gridOf(const plates::MeasuredScreen &measured);
// The plate's screen as it was computed, or else as it was measured; nothing where neither is known.
std::optional<screens::Grid> screenOf(const PlateFacts &plate);

// Patterns of two or three plates that can be seen more than the rosette's own, those that show most first, and
// plates with one screen. Threes are left out where two of them make a pattern already. The plates must be
// measured, or their screens computed.
std::vector<PlatePattern> patternsBetween(const std::vector<PlateFacts> &plates);

// The plates at these places: "Cyan, Magenta and Black".
std::string namesOf(const std::vector<std::size_t> &places, const std::vector<PlateFacts> &plates);

// As a sentence.
std::string sentenceFor(const PlatePattern &pattern, const std::vector<PlateFacts> &plates);

}  // namespace riders::looking
