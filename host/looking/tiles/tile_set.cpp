#include "looking/tiles/tile_set.h"

#include <algorithm>

namespace riders::looking {

int levelsOf(int width, int height)
{
    int levels = 1;
    while (sideOn(levels - 1, std::max(width, height)) > kTileSide)
        ++levels;
    return levels;
}

int sideOn(int level, int side)
{
    return static_cast<int>((static_cast<long long>(side) + (1LL << level) - 1) >> level);
}

std::string tileName(int level, int x, int y)
{
    return std::to_string(level) + "/" + std::to_string(x) + "-" + std::to_string(y) + ".png";
}

}  // namespace riders::looking
