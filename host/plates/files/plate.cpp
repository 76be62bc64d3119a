#include "plates/files/plate.h"

#include <algorithm>

namespace riders::plates {
namespace {

bool hasAny(const std::vector<std::uint8_t> &bytes)
{
    return std::any_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte != 0; });
}

}  // namespace

bool TintPlate::hasInk() const
{
    return hasAny(ink);
}

BitPlate::BitPlate(int across, int down)
    : width(across), height(down), rowBytes((static_cast<size_t>(across) + 7) / 8),
      bits(rowBytes * static_cast<size_t>(down))
{
}

bool BitPlate::hasInk() const
{
    return hasAny(bits);
}

void BitPlate::clearEdge()
{
    if (width % 8 == 0)
        return;
    const auto mask = static_cast<std::uint8_t>(0xFF << (8 - width % 8));
    for (int y = 0; y < height; ++y)
        row(y)[rowBytes - 1] &= mask;
}

bool isProcessPlate(std::string_view plate)
{
    return std::find(std::begin(kProcessPlates), std::end(kProcessPlates), plate) != std::end(kProcessPlates);
}

}  // namespace riders::plates
