// Solid shapes on films, pixel by pixel.
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "film/drawing/drawing.h"

namespace {

using riders::film::BitPicture;
using riders::film::Drawing;
using riders::film::PixelBox;

constexpr std::int64_t kColumns = 61, kRows = 40;

// Every pixel that `expected` says, and no other; nothing beyond the last column.
template <class Expected>
void expectPixels(const Drawing &drawing, const Expected &expected)
{
    for (std::int64_t y = 0; y < kRows; ++y) {
        std::vector<std::uint8_t> bits((kColumns + 7) / 8);
        drawing.draw(y, bits.data(), kColumns);
        for (std::int64_t x = 0; x < static_cast<std::int64_t>(bits.size()) * 8; ++x)
            ASSERT_EQ((bits[static_cast<size_t>(x / 8)] >> (7 - x % 8) & 1) != 0, x < kColumns && expected(x, y))
                << x << ", " << y;
    }
}

bool isIn(const PixelBox &box, std::int64_t x, std::int64_t y)
{
    return x >= box.left && x < box.right && y >= box.top && y < box.bottom;
}

// Twice the distances from the middle are whole numbers.
bool isInEllipse(const PixelBox &box, std::int64_t x, std::int64_t y)
{
    const std::int64_t across = 2 * x + 1 - box.left - box.right, down = 2 * y + 1 - box.top - box.bottom;
    const std::int64_t width = box.width(), height = box.height();
    return across * across * height * height + down * down * width * width <= width * width * height * height;
}

TEST(FilmDrawing, FillsRectanglesAndNothingElse)
{
    for (const PixelBox &box : {PixelBox{3, 2, 4, 39}, PixelBox{0, 0, 61, 1}, PixelBox{7, 5, 17, 6},
                                PixelBox{8, 5, 16, 7}, PixelBox{-9, -3, 5, 4}, PixelBox{50, 30, 90, 70}}) {
        Drawing drawing;
        drawing.rectangle(box);
        expectPixels(drawing, [&](std::int64_t x, std::int64_t y) { return isIn(box, x, y); });
    }
}

TEST(FilmDrawing, DrawsRingsOfThePixelsWhoseMiddlesAreOnThem)
{
    for (const PixelBox &box : {PixelBox{4, 3, 37, 36}, PixelBox{4, 3, 36, 35}, PixelBox{2, 5, 58, 33},
                                PixelBox{20, 1, 33, 38}, PixelBox{-8, -8, 25, 25}}) {
        Drawing drawing;
        drawing.ring(box, 3, 2);
        expectPixels(drawing, [&](std::int64_t x, std::int64_t y) {
            return isInEllipse(box, x, y) && !isInEllipse(box.grown(-3, -2), x, y);
        });
    }
}

TEST(FilmDrawing, PutsPicturesAnywhere)
{
    // A triangle in 13 columns.
    const auto inked = [](std::int64_t x, std::int64_t y) {
        return x >= 0 && x < 13 && y >= 0 && y < 9 && x <= y;
    };
    for (const auto &place : {std::pair{0, 0}, std::pair{5, 3}, std::pair{-4, -2}, std::pair{55, 36}}) {
        const auto left = place.first, top = place.second;
        BitPicture picture{.columns = 13, .rows = 9, .bits = std::vector<std::uint8_t>(18)};
        for (int y = 0; y < 9; ++y)
            for (int x = 0; x <= y; ++x)
                picture.bits[static_cast<size_t>(y * 2 + x / 8)] |= static_cast<std::uint8_t>(0x80 >> x % 8);
        Drawing drawing;
        drawing.picture(0, 0, picture);
        drawing.move(left, top);
        expectPixels(drawing, [&](std::int64_t x, std::int64_t y) { return inked(x - left, y - top); });
    }
}

}  // namespace
