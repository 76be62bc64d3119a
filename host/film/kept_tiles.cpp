#include "film/kept_tiles.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace riders::film {

KeptTiles::KeptTiles(const PageOnFilm &page, std::filesystem::path folder, looking::Colour ink,
                     looking::FineTiles fine)
    : page_(page), folder_(std::move(folder)), ink_(ink), fine_(fine),
      across_(page.resolution.across / std::max(page.resolution.across, page.resolution.down)),
      down_(page.resolution.down / std::max(page.resolution.across, page.resolution.down)),
      width_(static_cast<int>(static_cast<double>(page.columns) / across_)),
      height_(static_cast<int>(static_cast<double>(page.rows) / down_)),
      row_((static_cast<std::size_t>(width_) + 7) / 8 + 1)
{
}

void KeptTiles::take(std::size_t y, const std::uint8_t *bits)
{
    if (y < page_.top || y - page_.top >= page_.rows)
        return;
    if (!tiles_)
        tiles_.emplace(folder_, width_, height_, ink_, fine_);
    takeOut(bits);
    const bool last = y - page_.top + 1 == page_.rows;
    while (given_ < height_ && (last || static_cast<std::size_t>(given_ * down_) <= y - page_.top)) {
        tiles_->row(row_.data());
        ++given_;
    }
}

// The page's part of a row.
void KeptTiles::takeOut(const std::uint8_t *bits)
{
    if (across_ < 1) {
        std::fill(row_.begin(), row_.end(), 0);
        for (int x = 0; x < width_; ++x) {
            const std::size_t from =
                page_.left + std::min(static_cast<std::size_t>(x * across_), page_.columns - 1);
            if ((bits[from >> 3] >> (7 - (from & 7)) & 1) != 0)
                row_[static_cast<std::size_t>(x) >> 3] |= static_cast<std::uint8_t>(0x80 >> (x & 7));
        }
        return;
    }
    const std::size_t first = page_.left / 8, shift = page_.left % 8,
                      end = (page_.left + page_.columns + 7) / 8;  // of the row's bytes
    if (shift == 0) {
        std::memcpy(row_.data(), bits + first, end - first);
        return;
    }
    for (std::size_t i = first; i < end; ++i)
        row_[i - first] =
            static_cast<std::uint8_t>(bits[i] << shift | (i + 1 < end ? bits[i + 1] >> (8 - shift) : 0));
}

looking::TileSet KeptTiles::finish()
{
    return tiles_ ? tiles_->finish() : looking::TileSet{};
}

}  // namespace riders::film
