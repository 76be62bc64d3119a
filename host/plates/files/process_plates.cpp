#include "plates/files/process_plates.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

#include "io/bytes.h"
#include "plates/files/plate_files.h"

namespace fs = std::filesystem;

namespace riders::plates {
namespace {

constexpr int kBlack = 3;
constexpr std::size_t kAtOnce = 1 << 20;  // bytes of the file, or a row

// For each byte of two pixels, what they add to a byte of each plate: bit 1
// the left pixel, bit 0 the right one, cyan in the highest byte.
std::array<std::uint32_t, 256> pixelPairs()
{
    std::array<std::uint32_t, 256> pairs{};
    for (unsigned value = 0; value < 256; ++value)
        for (unsigned plate = 0; plate < 4; ++plate) {
            const unsigned left = value >> (7 - plate) & 1, right = value >> (3 - plate) & 1;
            pairs[value] |= (left << 1 | right) << (24 - 8 * plate);
        }
    return pairs;
}

// Deals a row out to the plates from the first on; they have no ink there yet.
void dealRow(const std::uint8_t *pixels, std::vector<BitPlate> &plates, int first, int y)
{
    static const std::array<std::uint32_t, 256> pairs = pixelPairs();
    for (std::size_t i = 0; i < plates[0].rowBytes; ++i, pixels += 4) {
        std::uint32_t four = 0;
        std::memcpy(&four, pixels, 4);
        if (four == 0)
            continue;
        const std::uint32_t all =
            pairs[pixels[0]] << 6 | pairs[pixels[1]] << 4 | pairs[pixels[2]] << 2 | pairs[pixels[3]];
        for (std::size_t plate = 0; plate < plates.size(); ++plate)
            plates[plate].row(y)[i] =
                static_cast<std::uint8_t>(all >> (24 - 8 * (static_cast<std::size_t>(first) + plate)));
    }
}

// The process plates from the first on.
std::vector<BitPlate> readFrom(const fs::path &file, int first, int columns, int rows)
{
    if (columns < 1 || columns > kLongestPlateSide || rows < 1 || rows > kLongestPlateSide)
        refusePicture(file);
    const io::OpenFile in = io::openInput(file);
    const std::size_t rowBytes = (static_cast<std::size_t>(columns) + 1) / 2;
    const std::size_t rowsAtOnce = std::max<std::size_t>(1, kAtOnce / rowBytes);
    std::vector<BitPlate> plates(static_cast<std::size_t>(4 - first), BitPlate(columns, rows));
    std::vector<std::uint8_t> bytes(rowBytes * rowsAtOnce), padded(plates[0].rowBytes * 4);
    for (int y = 0; y < rows;) {
        const std::size_t some = std::min(rowsAtOnce, static_cast<std::size_t>(rows - y)) * rowBytes;
        if (io::readFully(in, reinterpret_cast<char *>(bytes.data()), some) != some)
            refusePicture(file);
        for (std::size_t at = 0; at < some; at += rowBytes, ++y) {
            std::copy_n(bytes.data() + at, rowBytes, padded.data());
            dealRow(padded.data(), plates, first, y);
        }
    }
    char more = 0;
    if (io::readFully(in, &more, 1) != 0)
        refusePicture(file);
    for (BitPlate &plate : plates)
        plate.clearEdge();
    return plates;
}

}  // namespace

std::vector<BitPlate> readProcessPlates(const fs::path &file, int columns, int rows)
{
    return readFrom(file, 0, columns, rows);
}

BitPlate readBlackPlate(const fs::path &file, int columns, int rows)
{
    return std::move(readFrom(file, kBlack, columns, rows).front());
}

}  // namespace riders::plates
