// The tiles of a plate against a slow and obvious way to get the same, pixel by pixel.
#include <sys/resource.h>

#include <cmath>
#include <random>

#include "io/refusal.h"
#include "looking/tiles/plate_tiles.h"
#include "looking/tiles/tile_on_demand.h"
#include "plates/files/plate.h"
#include "plates/measuring/grid_place.h"
#include "support/toolbox_test.h"
#include "toolbox/host/picture.h"

namespace fs = std::filesystem;

namespace {

namespace looking = riders::looking;
using looking::kTileSide;
using riders::plates::BitPlate;

void setPixel(BitPlate &plate, int x, int y)
{
    plate.row(y)[x >> 3] |= static_cast<std::uint8_t>(0x80 >> (x & 7));
}

// Blots of many sizes, and much of it bare.
BitPlate blotted(int width, int height, unsigned seed)
{
    std::mt19937 random(seed);
    BitPlate plate(width, height);
    for (int blot = 0; blot < 40; ++blot) {
        const int size = 1 << random() % 8, left = static_cast<int>(random() % static_cast<unsigned>(width)),
                  top = static_cast<int>(random() % static_cast<unsigned>(height));
        const unsigned share = 1 + random() % 4;
        for (int y = top; y < std::min(height, top + size); ++y)
            for (int x = left; x < std::min(width, left + size); ++x)
                if (random() % 4 < share)
                    setPixel(plate, x, y);
    }
    return plate;
}

looking::TileSet tilesOf(const BitPlate &plate, const fs::path &folder, looking::Colour ink = {0, 0, 0})
{
    looking::PlateTiles tiles(folder, plate.width, plate.height, ink);
    for (int y = 0; y < plate.height; ++y)
        tiles.row(plate.row(y));
    return tiles.finish();
}

// What a pixel of a level is, in 255 shares of ink: the mean of what its square has of the plate.
int meanInk(const BitPlate &plate, int level, int x, int y)
{
    const int side = 1 << level;
    int inked = 0, all = 0;
    for (int down = y * side; down < std::min(plate.height, (y + 1) * side); ++down)
        for (int across = x * side; across < std::min(plate.width, (x + 1) * side); ++across, ++all)
            inked += plate.at(across, down) ? 1 : 0;
    return static_cast<int>(std::floor(255.0 * inked / all + 0.5));
}

// What a share of ink that lets through so much of the light looks like, by the curve of sRGB.
int shade(int share, double light)
{
    const double mixed = 1 - share / 255.0 * (1 - light);
    const double value = mixed <= 0.0031308 ? 12.92 * mixed : 1.055 * std::pow(mixed, 1 / 2.4) - 0.055;
    return static_cast<int>(std::lround(255 * value));
}

// The first pixel that is not as it should be, in words; empty for none.
std::string differenceIn(const BitPlate &plate, const fs::path &folder, const looking::TileSet &set)
{
    for (int level = 0; level < static_cast<int>(set.levels.size()); ++level)
        for (int tileY = 0; tileY < set.levels[level].down; ++tileY)
            for (int tileX = 0; tileX < set.levels[level].across; ++tileX) {
                const fs::path file = folder / looking::tileName(level, tileX, tileY);
                const int width = std::min(kTileSide, looking::sideOn(level, plate.width) - tileX * kTileSide),
                          height = std::min(kTileSide, looking::sideOn(level, plate.height) - tileY * kTileSide);
                const bool has = set.levels[level].has(tileX, tileY);
                if (has != fs::exists(file))
                    return file.string() + (has ? " is missing" : " is one too many");
                const toolbox::Picture shown = has ? toolbox::readPng(file) : toolbox::Picture{};
                if (has && (shown.width != width || shown.height != height))
                    return file.string() + " has another size";
                for (int y = 0; y < height; ++y)
                    for (int x = 0; x < width; ++x) {
                        const int mean = meanInk(plate, level, tileX * kTileSide + x, tileY * kTileSide + y);
                        const int grey =
                            has ? static_cast<int>(shown.pixels[static_cast<size_t>(y * width + x)] & 0xFF) : 255;
                        if (grey != shade(mean, 0))
                            return file.string() + " at " + std::to_string(x) + ", " + std::to_string(y) + ": " +
                                   std::to_string(grey) + ", not " + std::to_string(shade(mean, 0));
                    }
            }
    return {};
}

TEST(PlateTiles, EachPixelIsThePlatesAndTheMeanOfItAbove)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto side = [&](int least, unsigned more) { return least + static_cast<int>(random() % more); };
    const TemporaryFolder folder;
    const std::pair<int, int> sizes[] = {
        {1, 1}, {7, 513}, {512, 512}, {1025, 3}, {side(513, 900), side(513, 900)}};
    int number = 0;
    for (const auto &[width, height] : sizes) {
        const BitPlate plate = blotted(width, height, seed);
        const fs::path place = folder / ("plate-" + std::to_string(number++));
        const looking::TileSet set = tilesOf(plate, place);
        EXPECT_EQ(set.folder, place.filename());
        EXPECT_EQ(set.width, width);
        EXPECT_EQ(set.height, height);
        EXPECT_EQ(differenceIn(plate, place, set), "") << width << " by " << height;
    }
}

TEST(PlateTiles, ThereIsALevelForEachHalvingUntilOneTileIsEnough)
{
    EXPECT_EQ(looking::levelsOf(1, 1), 1);
    EXPECT_EQ(looking::levelsOf(512, 512), 1);
    EXPECT_EQ(looking::levelsOf(512, 513), 2);
    EXPECT_EQ(looking::levelsOf(1025, 1), 3);
    EXPECT_EQ(looking::levelsOf(79000, 112000), 9);
}

// As an eye mixes them, which is not the mean of their numbers.
TEST(PlateTiles, ATintOfAnInkIsItsLightAndThePapers)
{
    const looking::InkShades shades = looking::shadesOf({0, 158, 224});
    EXPECT_EQ(shades[0], (looking::Colour{255, 255, 255}));
    EXPECT_EQ(shades[255], (looking::Colour{0, 158, 224}));
    for (const int share : {1, 51, 128, 200})
        EXPECT_NEAR(shades[static_cast<size_t>(share)].red, shade(share, 0), 1) << share;
}

// What was written past a row's width does not count.
TEST(PlateTiles, BitsPastTheEdgeAreNoInk)
{
    const TemporaryFolder folder;
    BitPlate plate(515, 2);
    for (int y = 0; y < 2; ++y)
        plate.row(y)[plate.rowBytes - 1] = 0x1F;
    const looking::TileSet set = tilesOf(plate, folder / "plate");
    for (const looking::TileLevel &level : set.levels)
        EXPECT_EQ(std::count(level.inked.begin(), level.inked.end(), true), 0);
}

TEST(PlateTiles, WhatCannotBeWrittenIsRefused)
{
    const TemporaryFolder folder;
    EXPECT_THROW(looking::PlateTiles(folder / "missing/plate", 10, 10, {}), riders::io::Refusal);
    BitPlate plate(600, 600);
    setPixel(plate, 599, 599);
    looking::PlateTiles tiles(folder / "plate", plate.width, plate.height, {});
    fs::remove_all(folder / "plate/0");
    EXPECT_THROW(
        {
            for (int y = 0; y < plate.height; ++y)
                tiles.row(plate.row(y));
        },
        riders::io::Refusal);
}

TEST(PlateTiles, APlateIsFinishedOnceAllRowsAreThere)
{
    const TemporaryFolder folder;
    looking::PlateTiles tiles(folder / "plate", 10, 10, {});
    EXPECT_THROW(tiles.finish(), std::logic_error);
}

// The same bytes, whether made with the others or when somebody looks at them.
TEST(TileOnDemand, IsTheTileThatWouldBeAFile)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    const TemporaryFolder folder;
    const BitPlate plate = blotted(4500, 1300, seed);
    const looking::Colour ink{0, 158, 224};
    const looking::TileSet files = tilesOf(plate, folder / "files", ink);
    looking::PlateTiles tiles(folder / "kept", plate.width, plate.height, ink, looking::FineTiles::onDemand);
    for (int y = 0; y < plate.height; ++y)
        tiles.row(plate.row(y));
    const looking::TileSet kept = tiles.finish();
    ASSERT_EQ(kept.levels.size(), 5u);
    EXPECT_FALSE(fs::exists(folder / "kept/2"));
    for (int level = 0; level < 5; ++level) {
        const looking::TileLevel &all = files.levels[static_cast<size_t>(level)];
        EXPECT_EQ(kept.levels[static_cast<size_t>(level)].inked, all.inked) << level;
        for (int tile = 0; tile < all.across * all.down; ++tile) {
            const int x = tile % all.across, y = tile / all.across;
            if (all.has(x, y)) {
                EXPECT_EQ(looking::tileOnDemand(folder.path(), {"kept", level, x, y}),
                          contentsOf(folder / "files" / looking::tileName(level, x, y)))
                    << level << ": " << x << ", " << y;
            }
        }
    }
    for (const looking::AskedTile &asked :
         {looking::AskedTile{"kept", 0, 9, 0}, looking::AskedTile{"kept", 2, 0, 1},
          looking::AskedTile{"kept", 4, 1, 0}, looking::AskedTile{"kept", 0, 999999, 0},
          looking::AskedTile{"other", 0, 0, 0}})
        EXPECT_THROW(looking::tileOnDemand(folder.path(), asked), riders::io::Refusal);
    writeFile(folder / "kept/plate.tiff", "no plate");
    EXPECT_THROW(looking::tileOnDemand(folder.path(), {"kept", 0, 0, 0}), riders::io::Refusal);
}

TEST(TileOnDemand, OnlyTheNameOfATileIsOne)
{
    const auto asked = looking::tileFromText("page-1-cyan/2/13-7.png");
    ASSERT_TRUE(asked);
    EXPECT_EQ(asked->set, "page-1-cyan");
    EXPECT_EQ(asked->level, 2);
    EXPECT_EQ(asked->x, 13);
    EXPECT_EQ(asked->y, 7);
    for (const char *text :
         {"", "/", "page-1/2/1-1", "page-1/2/1-1.pngx", "../2/1-1.png", "page.1/2/1-1.png", "page-1/21/1-1.png",
          "page-1/-2/1-1.png", "page-1/2/1--1.png", "page-1/2/99999999-1.png", "page-1/2/1.png", "/0/0-0.png",
          "page-1//0/0-0.png", "a/b/0/0-0.png"})
        EXPECT_FALSE(looking::tileFromText(text)) << text;
}

// Discs on a grid whose place is known.
BitPlate dotted(double dpi, double frequency, double angle, double x, double y)
{
    BitPlate plate(600, 500);
    const double turn = angle * 3.14159265358979 / 180;
    for (int row = 0; row < plate.height; ++row)
        for (int column = 0; column < plate.width; ++column) {
            const double right = (column + 0.5) / dpi - x, down = (row + 0.5) / dpi - y;
            const double u = (right * std::cos(turn) + down * std::sin(turn)) * frequency,
                         v = (down * std::cos(turn) - right * std::sin(turn)) * frequency;
            if (std::hypot(u - std::round(u), v - std::round(v)) < 0.3)
                setPixel(plate, column, row);
        }
    return plate;
}

TEST(GridPlace, AGridIsLaidThroughTheMiddlesOfDots)
{
    constexpr double dpi = 600, frequency = 45;
    for (const double angle : {0.0, 15.0, 45.0, 75.0, -7.5}) {
        const double x = 0.3127, y = 0.4033;
        const BitPlate plate = dotted(dpi, frequency, angle, x, y);
        const auto middle = riders::plates::middleOfDot(plate, dpi, {0.05, 0.05, 0.8, 0.7}, frequency, angle);
        ASSERT_TRUE(middle);
        // A whole number of cells from the dot that is known.
        const double turn = angle * 3.14159265358979 / 180, right = middle->x - x, down = middle->y - y;
        const double u = (right * std::cos(turn) + down * std::sin(turn)) * frequency,
                     v = (down * std::cos(turn) - right * std::sin(turn)) * frequency;
        EXPECT_NEAR(u, std::round(u), 0.02) << angle;
        EXPECT_NEAR(v, std::round(v), 0.02) << angle;
        EXPECT_NEAR(middle->x, 0.45, 1 / frequency);
        EXPECT_NEAR(middle->y, 0.4, 1 / frequency);
    }
}

TEST(GridPlace, WithoutInkThereIsNoGrid)
{
    const BitPlate bare(100, 100);
    EXPECT_FALSE(riders::plates::middleOfDot(bare, 300, {0, 0, 0.3, 0.3}, 45, 45));
    EXPECT_FALSE(riders::plates::middleOfDot(dotted(600, 45, 0, 0, 0), 600, {}, 45, 45));
}

}  // namespace
