#include "looking/tiles/tile_on_demand.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "io/bytes.h"
#include "io/refusal.h"
#include "looking/tiles/coverage.h"
#include "looking/tiles/tile_picture.h"
#include "plates/files/tiled_plate.h"

namespace fs = std::filesystem;

namespace riders::looking {
namespace {

static_assert(kTileSide == plates::kTiledSide);

// Takes a number and what follows it off the text.
std::optional<int> takeNumber(std::string_view &text, std::string_view after)
{
    int number = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + std::min<std::size_t>(text.size(), 7), number);
    if (error != std::errc() || number < 0)
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (!text.starts_with(after))
        return std::nullopt;
    text.remove_prefix(after.size());
    return number;
}

// All of a part of a plate on a level, one share after the other.
std::vector<std::uint8_t> sharesOf(const plates::BitPlate &part, int level)
{
    std::vector<std::uint8_t> shares;
    if (level == 0) {
        for (int y = 0; y < part.height; ++y)
            for (int x = 0; x < part.width; ++x)
                shares.push_back(part.at(x, y) ? 255 : 0);
        return shares;
    }
    std::vector<Coverage> coverages;
    for (int i = 1; i <= level; ++i)
        coverages.emplace_back(i, part.width, part.height);
    for (int y = 0; y < part.height; ++y) {
        bool whole = coverages[0].takeBits(part.row(y));
        for (std::size_t i = 1; whole && i < coverages.size(); ++i)
            whole = coverages[i].takeCounts(coverages[i - 1].counts(), coverages[i - 1].width());
        if (!whole)
            continue;
        const auto width = static_cast<std::size_t>(coverages.back().width());
        shares.resize(shares.size() + width);
        coverages.back().shares(shares.data() + shares.size() - width);
    }
    return shares;
}

}  // namespace

std::optional<AskedTile> tileFromText(std::string_view text)
{
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyz0123456789-";
    const std::size_t slash = std::min(text.find('/'), text.size());
    AskedTile asked{std::string(text.substr(0, slash))};
    if (slash == 0 || slash == text.size() || asked.set.find_first_not_of(plain) != asked.set.npos)
        return std::nullopt;
    text.remove_prefix(slash + 1);
    const auto level = takeNumber(text, "/"), x = takeNumber(text, "-"), y = takeNumber(text, ".png");
    if (!level || !x || !y || !text.empty() || *level > 20)
        return std::nullopt;
    asked.level = *level;
    asked.x = *x;
    asked.y = *y;
    return asked;
}

std::string tileOnDemand(const fs::path &folder, const AskedTile &asked)
{
    const fs::path set = folder / asked.set, kept = set / tileName(asked.level, asked.x, asked.y);
    std::error_code none;
    if (asked.level >= kFirstKeptLevel || fs::exists(kept, none))
        return io::contentsOf(kept);
    const int side = kTileSide << asked.level;
    if (asked.x > plates::kLongestPlateSide / side || asked.y > plates::kLongestPlateSide / side)
        throw io::Refusal(kept.string() + ": there is no such tile");
    const plates::PlatePart part = plates::readPart(set / kKeptPlate, asked.x * side, asked.y * side, side, side);
    const std::vector<std::uint8_t> shares = sharesOf(part.bits, asked.level);
    const int width = sideOn(asked.level, part.bits.width);
    return tilePicture(
        {shares.data(), static_cast<std::size_t>(width), width, sideOn(asked.level, part.bits.height)},
        shadesOf(colourFrom(part.words)));
}

}  // namespace riders::looking
