#include "plates/files/tiled_plate.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

#include "io/refusal.h"
#include "libtiff/libtiff.h"
#include "plates/files/group4.h"
#include "plates/files/plate_files.h"

namespace riders::plates {
namespace {

using tiff::libtiff;

constexpr std::size_t kTileRowBytes = kTiledSide / 8;

[[noreturn]] void refuseToWrite(const std::string &name)
{
    throw io::Refusal(name + ": cannot be written; is the disk full?");
}

// Copies as much of a tile as there is of the part into it, at a place of whole tiles.
void copyTile(const std::vector<std::uint8_t> &tile, BitPlate &part, int left, int top)
{
    const auto bytes = static_cast<std::size_t>((std::min(kTiledSide, part.width - left) + 7) / 8);
    for (int y = 0; y < std::min(kTiledSide, part.height - top); ++y)
        std::memcpy(part.row(top + y) + left / 8, tile.data() + static_cast<std::size_t>(y) * kTileRowBytes,
                    bytes);
}

}  // namespace

TiledPlateWriter::TiledPlateWriter(const std::filesystem::path &file, int width, int height,
                                   const std::string &words)
    : name_(file), width_(width), tiff_(libtiff().open(file.c_str(), "w8"), libtiff().close)
{
    if (!tiff_)
        throw io::Refusal(name_ + ": cannot be written");
    TIFF *out = tiff_.get();
    libtiff().setField(out, TIFFTAG_IMAGEWIDTH, width);
    libtiff().setField(out, TIFFTAG_IMAGELENGTH, height);
    libtiff().setField(out, TIFFTAG_BITSPERSAMPLE, 1);
    libtiff().setField(out, TIFFTAG_SAMPLESPERPIXEL, 1);
    libtiff().setField(out, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    libtiff().setField(out, TIFFTAG_FILLORDER, FILLORDER_MSB2LSB);
    libtiff().setField(out, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
    libtiff().setField(out, TIFFTAG_TILEWIDTH, kTiledSide);
    libtiff().setField(out, TIFFTAG_TILELENGTH, kTiledSide);
    libtiff().setField(out, TIFFTAG_IMAGEDESCRIPTION, words.c_str());
}

void TiledPlateWriter::rows(const std::uint8_t *rows, std::size_t rowBytes, int count)
{
    for (int left = 0; left < width_; left += kTiledSide) {
        const std::size_t first = static_cast<std::size_t>(left) / 8,
                          bytes = std::min(kTileRowBytes, (static_cast<std::size_t>(width_) + 7) / 8 - first);
        Group4Encoder encoder(kTiledSide);
        std::uint8_t row[kTileRowBytes] = {};
        for (int y = 0; y < kTiledSide; ++y) {
            if (y < count)
                std::memcpy(row, rows + static_cast<std::size_t>(y) * rowBytes + first, bytes);
            else
                std::memset(row, 0, sizeof row);
            encoder.row(row);
        }
        encoder.end();
        const std::string_view packed = encoder.bytes();
        if (libtiff().writeRawTile(tiff_.get(), next_++, const_cast<char *>(packed.data()),
                                   static_cast<tmsize_t>(packed.size())) < 0)
            refuseToWrite(name_);
    }
}

void TiledPlateWriter::finish()
{
    if (!libtiff().flush(tiff_.get()))
        refuseToWrite(name_);
    tiff_.reset();
}

PlatePart readPart(const std::filesystem::path &file, int left, int top, int width, int height)
{
    silencePictures();
    const tiff::File tiff(libtiff().open(file.c_str(), "r"));
    TIFF *in = tiff.get();
    std::uint32_t columns = 0, rows = 0, side = 0;
    const char *words = nullptr;
    const auto refuse = [&] { throw io::Refusal(file.string() + ": is not a plate that can be read in parts"); };
    if (!tiff || !libtiff().getField(in, TIFFTAG_IMAGEWIDTH, &columns) ||
        !libtiff().getField(in, TIFFTAG_IMAGELENGTH, &rows) || !libtiff().getField(in, TIFFTAG_TILEWIDTH, &side) ||
        side != kTiledSide || columns > kLongestPlateSide || rows > kLongestPlateSide ||
        libtiff().tileSize(in) != static_cast<tmsize_t>(kTileRowBytes * kTiledSide) ||
        !libtiff().getField(in, TIFFTAG_IMAGEDESCRIPTION, &words))
        refuse();
    const int right = std::min(left + width, static_cast<int>(columns)),
              bottom = std::min(top + height, static_cast<int>(rows));
    if (left < 0 || top < 0 || left % kTiledSide != 0 || top % kTiledSide != 0 || left >= right || top >= bottom)
        refuse();
    PlatePart part{BitPlate(right - left, bottom - top), words};
    std::vector<std::uint8_t> tile(kTileRowBytes * kTiledSide);
    for (int y = top; y < bottom; y += kTiledSide)
        for (int x = left; x < right; x += kTiledSide) {
            const std::uint32_t number =
                libtiff().computeTile(in, static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y), 0, 0);
            if (libtiff().readEncodedTile(in, number, tile.data(), static_cast<tmsize_t>(tile.size())) < 0)
                refuse();
            copyTile(tile, part.bits, x - left, y - top);
        }
    return part;
}

}  // namespace riders::plates
