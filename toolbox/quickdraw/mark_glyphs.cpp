#include "quickdraw/mark_glyphs.h"

namespace toolbox::quickdraw {
namespace {

// Drawn for 12 pixels a line; the last row stands on the baseline.
constexpr int side = 9, drawnFor = 12;

constexpr const char *marks[4][side] = {
    {".##...##.", "#..#.#..#", "#..#.#..#", ".#######.", "...#.#...", ".#######.", "#..#.#..#", "#..#.#..#",
     ".##...##."},
    {".........", "........#", ".......##", "......##.", "#....##..", "##..##...", ".####....", "..##.....",
     "........."},
    {"....#....", "...###...", "..#####..", ".#######.", "#########", ".#######.", "..#####..", "...###...",
     "....#...."},
    {".....##..", "....##...", ".##.#.##.", "########.", "#######..", "#######..", "########.", ".########",
     "..##.##.."},
};

}  // namespace

bool isMark(std::uint8_t character)
{
    return character >= 0x11 && character <= 0x14;
}

int markAdvance(int size)
{
    return (side + 2) * size / drawnFor;
}

GlyphImage markImage(std::uint8_t character, int deviceSize)
{
    GlyphImage image;
    image.width = image.height = side * deviceSize / drawnFor;
    image.left = deviceSize / drawnFor;
    image.top = -image.height;
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
            bool black = marks[character - 0x11][y * side / image.height][x * side / image.width] == '#';
            image.coverage.push_back(black ? 255 : 0);
        }
    return image;
}

}  // namespace toolbox::quickdraw
