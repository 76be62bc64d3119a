// The beginning of the Photoshop file in which the interpreter writes the plates of a page.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace riders::plates {

struct InkFileHead {
    int columns = 0, rows = 0;
    std::vector<std::string> inks;  // the bytes of the spot inks' names, in the order of their plates
    // Cyan, magenta, yellow and black of each, 0 to 1; empty where the file does not say.
    std::vector<std::array<double, 4>> colours;
    std::uint64_t tones = 0;  // where the first plate begins, the process plates first; 255 is no ink
};

// From the first bytes of the file; empty where they are too few. Throws the Refusal of a file that is not as the
// interpreter should write it.
std::optional<InkFileHead> inkFileHead(std::string_view bytes, const std::filesystem::path &file);

}  // namespace riders::plates
