// Plates in memory: one ink of one page.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace riders::plates {

inline constexpr int kLongestPlateSide = 1 << 20;  // pixels

// In 256 steps, 255 being solid; row 0 is the top.
struct TintPlate {
    int width = 0, height = 0;
    std::vector<std::uint8_t> ink;

    const std::uint8_t *row(int y) const { return ink.data() + static_cast<size_t>(y) * width; }
    bool hasInk() const;
};

// In dots: a set bit is ink, the leftmost pixel the highest bit of a byte; row 0 is the top.
struct BitPlate {
    int width = 0, height = 0;
    size_t rowBytes = 0;
    std::vector<std::uint8_t> bits;

    BitPlate() = default;
    BitPlate(int width, int height);
    const std::uint8_t *row(int y) const { return bits.data() + static_cast<size_t>(y) * rowBytes; }
    std::uint8_t *row(int y) { return bits.data() + static_cast<size_t>(y) * rowBytes; }
    bool at(int x, int y) const { return row(y)[x >> 3] >> (7 - (x & 7)) & 1; }
    bool hasInk() const;
    void clearEdge();  // the bits of each row that lie past its width
};

inline constexpr const char *kProcessPlates[] = {"Cyan", "Magenta", "Yellow", "Black"};
bool isProcessPlate(std::string_view plate);

}  // namespace riders::plates
