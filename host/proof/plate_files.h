// Plates in memory, and the files they come from and go to.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace riders::proof {

inline constexpr int kLongestPlateSide = 1 << 20;  // pixels

// One ink of one page in 256 steps, 255 being solid; row 0 is the top.
struct TintPlate {
    int width = 0, height = 0;
    std::vector<std::uint8_t> ink;

    const std::uint8_t *row(int y) const { return ink.data() + static_cast<size_t>(y) * width; }
};

// One ink of one page in dots: a set bit is ink, the leftmost pixel the highest bit of a byte; row 0 is the top.
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
    void clearEdge();  // bits behind the width are nobody's
};

// Throws the Refusal of a file that is not as the interpreter should write it.
[[noreturn]] void refusePicture(const std::filesystem::path &file);

// All throw Refusal for a file that cannot be read or is not as it should be.
TintPlate readTints(const std::filesystem::path &tiff);
BitPlate readPlate(const std::filesystem::path &tiff);
// The four process inks that all inks of a page, spot inks too, come to.
std::vector<TintPlate> readComposite(const std::filesystem::path &tiff);

// Writes a plate as film recorders take it: TIFF, CCITT group 4, white is 0. Throws Refusal.
void writeFilm(const std::filesystem::path &file, const BitPlate &plate, double dpi);

struct PlateFile {
    std::string plate;  // as the interpreter writes it: %25 for a per cent sign and so on
    std::filesystem::path file;
};
// The interpreter's files of one page, "7(Cyan).tif": the process plates in their
// order, then the others by name.
std::vector<PlateFile> plateFiles(const std::filesystem::path &folder, int page);

inline constexpr const char *kProcessPlates[] = {"Cyan", "Magenta", "Yellow", "Black"};
bool isProcessPlate(std::string_view plate);

}  // namespace riders::proof
