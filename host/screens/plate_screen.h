// The screen of one plate, as a person asks for it.
#pragma once

#include <optional>
#include <string>

namespace riders::screens {

// The plate named so is every plate that no other entry names.
inline constexpr const char *kRestOfPlates = "*";

// What is left out stays as it was on that plate.
struct PlateScreen {
    // The colorant as PostScript spells it, UTF-8: Cyan, Black, PANTONE 300 C; or kRestOfPlates.
    std::string plate;
    std::optional<double> frequency;  // lines per inch
    std::optional<double> angle;      // degrees, counterclockwise as PostScript counts them
    std::string shape;                // a dot shape's name or a spot function file; empty when left out
};

}  // namespace riders::screens
