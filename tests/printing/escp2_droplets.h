// ESC/P2, what Epson's inkjets are sent, read as the places where droplets fall.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace escp2 {

// In units of 1/kUnitsPerInch, from the top left of what the printer counts from.
inline constexpr int kUnitsPerInch = 28800;

struct Droplet {
    std::int64_t x = 0, y = 0;
    int ink = 0;   // the printer's number of it
    int size = 0;  // 1 is the smallest
};

using Page = std::vector<Droplet>;

// The pages of a job. Throws std::runtime_error at what it does not know.
std::vector<Page> read(std::string_view bytes);

}  // namespace escp2
