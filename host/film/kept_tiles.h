// The dots of a film as tiles, to be zoomed into, made while its rows go by.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "looking/tiles/plate_tiles.h"
#include "screening/tile.h"

namespace riders::film {

// The page on a film that is not turned, in the film's pixels.
struct PageOnFilm {
    std::size_t left = 0, top = 0, columns = 0, rows = 0;
    screening::Resolution resolution;
};

class KeptTiles {
public:
    // `folder` is made at the first row.
    KeptTiles(const PageOnFilm &page, std::filesystem::path folder, looking::Colour ink, looking::FineTiles fine);

    // The film's row y; each once, from the top down. Throws Refusal.
    void take(std::size_t y, const std::uint8_t *bits);
    // Once all rows have gone by, in square pixels of the higher resolution; an empty set where none has.
    looking::TileSet finish();

private:
    void takeOut(const std::uint8_t *bits);

    const PageOnFilm page_;
    const std::filesystem::path folder_;
    const looking::Colour ink_;
    const looking::FineTiles fine_;
    const double across_, down_;  // pixels of the film for one of the tiles
    const int width_, height_;
    std::optional<looking::PlateTiles> tiles_;
    int given_ = 0;  // rows, to the tiles
    std::vector<std::uint8_t> row_;
};

}  // namespace riders::film
