// Tiles that are made when somebody looks at them, from plates that are kept for it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "looking/tiles/tile_set.h"

namespace riders::looking {

// Tiles of levels below this are made so: those of the others take more of the plate than can be read soon.
inline constexpr int kFirstKeptLevel = 3;
// The plate's file in the folder of its set.
inline constexpr const char *kKeptPlate = "plate.tiff";

struct AskedTile {
    std::string set;
    int level = 0, x = 0, y = 0;
};
// "page-1-cyan/2/13-7.png"; none where the text is anything else.
std::optional<AskedTile> tileFromText(std::string_view text);

// The bytes of a picture in PNG, as `PlateTiles` would have written it; `folder` is that of all sets. Throws
// Refusal where there is none.
std::string tileOnDemand(const std::filesystem::path &folder, const AskedTile &asked);

}  // namespace riders::looking
