// A plate in a file of which any part can be read soon, however large it is: a tiled TIFF.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "plates/files/plate.h"

struct tiff;  // libtiff's TIFF

namespace riders::plates {

inline constexpr int kTiledSide = 512;  // pixels of a tile

class TiledPlateWriter {
public:
    // `words`: kept with it. Throws Refusal, as the others do.
    TiledPlateWriter(const std::filesystem::path &file, int width, int height, const std::string &words);

    // The next rows, from the top down: kTiledSide, or what is left of the plate. A set bit is ink, the leftmost
    // pixel the highest bit of a byte.
    void rows(const std::uint8_t *rows, std::size_t rowBytes, int count);
    // After the last.
    void finish();

private:
    const std::string name_;
    const int width_;
    std::unique_ptr<::tiff, void (*)(::tiff *)> tiff_;
    std::uint32_t next_ = 0;  // tile
};

struct PlatePart {
    BitPlate bits;
    std::string words;
};

// A part of it that begins with a tile; as much of it as there is. Throws Refusal.
PlatePart readPart(const std::filesystem::path &file, int left, int top, int width, int height);

}  // namespace riders::plates
