#include "quickdraw/mark_glyphs.h"

#include <algorithm>
#include <cmath>

namespace toolbox::quickdraw {
namespace {

// Drawn for lines of 12 pixels; the last row is on the baseline.
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

// A mark as a surface over the plane: 1 at the middle of a black square, 0 at
// that of a white one, and linear between them.
static double heightAt(const char *const *mark, double x, double y)
{
    auto square = [&](int column, int row) {
        return column >= 0 && column < side && row >= 0 && row < side && mark[row][column] == '#' ? 1.0 : 0.0;
    };
    x -= 0.5;
    y -= 0.5;
    const int column = static_cast<int>(std::floor(x)), row = static_cast<int>(std::floor(y));
    const double right = x - column, below = y - row;
    return (square(column, row) * (1 - right) + square(column + 1, row) * right) * (1 - below) +
           (square(column, row + 1) * (1 - right) + square(column + 1, row + 1) * right) * below;
}

// What lies above half the height is black. That is the squares themselves at
// the size they were drawn for, and smooth slants at larger ones.
GlyphImage markImage(std::uint8_t character, int deviceSize)
{
    GlyphImage image;
    image.width = image.height = side * deviceSize / drawnFor;
    image.left = deviceSize / drawnFor;
    image.top = -image.height;
    const double step = double(side) / std::max(image.width, 1);
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
            const double height = heightAt(marks[character - 0x11], (x + 0.5) * step, (y + 0.5) * step);
            const double coverage = std::clamp((height - 0.5) / std::min(step, 1.0) + 0.5, 0.0, 1.0);
            image.coverage.push_back(static_cast<std::uint8_t>(std::lround(255 * coverage)));
        }
    return image;
}

}  // namespace toolbox::quickdraw
