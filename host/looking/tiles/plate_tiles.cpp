#include "looking/tiles/plate_tiles.h"

#include <errno.h>
#include <fcntl.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "io/bytes.h"
#include "io/interruption.h"
#include "io/refusal.h"
#include "looking/tiles/tile_on_demand.h"

namespace fs = std::filesystem;

namespace riders::looking {
namespace {

int tilesAlong(int side)
{
    return (side + kTileSide - 1) / kTileSide;
}

void makeFolder(const fs::path &folder)
{
    std::error_code error;
    fs::create_directory(folder, error);
    if (error)
        io::refuseErrno(folder, error.value());
}

bool hasInk(const TileShares &shares)
{
    for (int y = 0; y < shares.height; ++y) {
        const std::uint8_t *row = shares.first + static_cast<std::size_t>(y) * shares.rowBytes;
        if (std::any_of(row, row + shares.width, [](std::uint8_t share) { return share != 0; }))
            return true;
    }
    return false;
}

void writeTile(const fs::path &file, const std::string &bytes)
{
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0)
        io::refuseErrno(file, errno);
    io::OpenFile out(descriptor, file);
    io::writeAll(out, bytes);
    out.close();
}

}  // namespace

PlateTiles::PlateTiles(fs::path folder, int width, int height, Colour ink, FineTiles fine)
    : folder_(std::move(folder)), shades_(shadesOf(ink)), set_{folder_.filename(), width, height, {}},
      tile_(std::size_t{kTileSide} * kTileSide)
{
    makeFolder(folder_);
    if (fine == FineTiles::onDemand)
        plate_.emplace(folder_ / kKeptPlate, width, height, hexColour(ink));
    for (int level = 0; level < levelsOf(width, height); ++level) {
        const int across = sideOn(level, width), down = sideOn(level, height);
        const auto bytes = static_cast<std::size_t>(level == 0 ? (across + 7) / 8 : across);
        strips_.push_back(
            {across, down, 0, bytes,
             std::vector<std::uint8_t>(bytes * static_cast<std::size_t>(std::min(down, kTileSide)))});
        if (level > 0)
            coverages_.emplace_back(level, width, height);
        TileLevel &tiles = set_.levels.emplace_back();
        tiles.across = tilesAlong(across);
        tiles.down = tilesAlong(down);
        tiles.inked.resize(static_cast<std::size_t>(tiles.across) * static_cast<std::size_t>(tiles.down));
        if (!isOnDemand(static_cast<std::size_t>(level)))
            makeFolder(folder_ / std::to_string(level));
    }
}

bool PlateTiles::isOnDemand(std::size_t level) const
{
    return plate_ && level < kFirstKeptLevel;
}

void PlateTiles::row(const std::uint8_t *bits)
{
    Strip &strip = strips_[0];
    std::copy_n(bits, strip.rowBytes, strip.next());
    taken(0);
    if (coverages_.empty() || !coverages_[0].takeBits(bits))
        return;
    takeShares(1);
    for (std::size_t i = 1; i < coverages_.size(); ++i) {
        if (!coverages_[i].takeCounts(coverages_[i - 1].counts(), coverages_[i - 1].width()))
            return;
        takeShares(i + 1);
    }
}

void PlateTiles::takeShares(std::size_t level)
{
    coverages_[level - 1].shares(strips_[level].next());
    taken(level);
}

void PlateTiles::taken(std::size_t level)
{
    Strip &strip = strips_[level];
    ++strip.taken;
    if (strip.taken % kTileSide == 0 || strip.taken == strip.height)
        writeStrip(level);
}

TileShares PlateTiles::sharesOf(const Strip &strip, bool bits, int x, int rows)
{
    const int left = x * kTileSide, width = std::min(kTileSide, strip.width - left);
    if (!bits)
        return {strip.rows.data() + left, strip.rowBytes, width, rows};
    for (int y = 0; y < rows; ++y) {
        const std::uint8_t *row = strip.rows.data() + static_cast<std::size_t>(y) * strip.rowBytes;
        std::uint8_t *out = tile_.data() + static_cast<std::size_t>(y) * kTileSide;
        for (int i = 0; i < width; ++i)
            out[i] = (row[(left + i) >> 3] >> (7 - (i & 7)) & 1) != 0 ? 255 : 0;
    }
    return {tile_.data(), kTileSide, width, rows};
}

void PlateTiles::writeStrip(std::size_t level)
{
    io::Interruption::check();
    const Strip &strip = strips_[level];
    TileLevel &tiles = set_.levels[level];
    const int y = (strip.taken - 1) / kTileSide, rows = strip.taken - y * kTileSide;
    if (plate_ && level == 0)
        plate_->rows(strip.rows.data(), strip.rowBytes, rows);
    for (int x = 0; x < tiles.across; ++x) {
        const TileShares shares = sharesOf(strip, level == 0, x, rows);
        if (!hasInk(shares))
            continue;
        tiles.inked[static_cast<std::size_t>(y) * static_cast<std::size_t>(tiles.across) +
                    static_cast<std::size_t>(x)] = true;
        if (!isOnDemand(level))
            writeTile(folder_ / tileName(static_cast<int>(level), x, y), tilePicture(shares, shades_));
    }
}

TileSet PlateTiles::finish()
{
    if (strips_[0].taken != set_.height)
        throw std::logic_error("not all rows of the plate were given");
    if (plate_)
        plate_->finish();
    return std::move(set_);
}

}  // namespace riders::looking
