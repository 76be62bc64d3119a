// What the screens of a riders file become on a device: the interpreter is run with the file, and asked.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace riders::explain {

struct ReachedScreen {
    std::string plate;                            // as PostScript spells it; "Default" is the rest of the plates
    double askedFrequency = 0, askedAngle = 0;    // lines per inch, degrees
    double frequency = 0, angle = 0;              // reached; the angle is within 45 degrees of the one asked for
    double cell = 0;                              // a halftone cell's side, in device pixels
    int supercellPixels = 0, supercellCells = 0;  // 0 where the screen is the interpreter's own
    int levels = 0;                               // tints that can be told apart, white among them; at most 256
};

// In the order of the names, the rest last. Plates whose screen is a threshold array of the interpreter's own are
// left out. On a device with four inks, as `riders proof` has; such screens are on all devices with several.
// Throws io::Refusal.
std::vector<ReachedScreen> explain(const std::filesystem::path &riders, int dpi);

// What one line of explain.ps says, after what it begins with; nothing where it is none.
std::optional<ReachedScreen> screenFromLine(const std::string &line, double dpi);

}  // namespace riders::explain
