// A spot function file as the plug-in's dialog takes it.
#pragma once

#include <filesystem>

namespace riders::shapes {

struct FixRequest {
    std::filesystem::path file;
    std::filesystem::path copy = {};  // empty: the file's name and -fixed, here; may be the file itself
    bool force = false;               // replace a copy's place that holds anything else, too
};

struct Fixed {
    std::filesystem::path copy;
    bool changed = false;  // false: the file was right as it is
};

// Writes a copy whose first line ends in a carriage return, as that of an editor of today does not; the rest stays
// as it is, byte for byte. Throws Refusal where more than that is wrong with the file, or the place is taken by
// what is neither empty nor a spot function file.
Fixed fixShape(const FixRequest &request);

}  // namespace riders::shapes
