#include "film_pixels.h"

#include <utility>

namespace film_tests {

Pixels Pixels::part(const PixelBox &box) const
{
    Pixels cut{.columns = box.width(), .rows = box.height(), .black = {}};
    for (std::int64_t y = box.top; y < box.bottom; ++y)
        for (std::int64_t x = box.left; x < box.right; ++x)
            cut.black.push_back(at(x, y));
    return cut;
}

Pixels drawn(const riders::film::Sheet &sheet, const riders::film::PlateMarks &marks)
{
    Pixels pixels{.columns = static_cast<std::int64_t>(sheet.columns()),
                  .rows = static_cast<std::int64_t>(sheet.rows()),
                  .black = {}};
    for (std::size_t y = 0; y < sheet.rows(); ++y) {
        std::vector<std::uint8_t> bits((sheet.columns() + 7) / 8);
        marks.draw(y, bits.data());
        for (std::size_t x = 0; x < sheet.columns(); ++x)
            pixels.black.push_back(bits[x / 8] >> (7 - x % 8) & 1);
    }
    return pixels;
}

namespace {

PixelBox takeShape(Pixels &pixels, std::int64_t x, std::int64_t y)
{
    PixelBox box{x, y, x + 1, y + 1};
    std::vector<std::pair<std::int64_t, std::int64_t>> open{{x, y}};
    while (!open.empty()) {
        const auto [atX, atY] = open.back();
        open.pop_back();
        if (atX < 0 || atY < 0 || atX >= pixels.columns || atY >= pixels.rows || !pixels.at(atX, atY))
            continue;
        pixels.black[static_cast<size_t>(atY * pixels.columns + atX)] = 0;
        box = box.with({atX, atY, atX + 1, atY + 1});
        for (int down = -1; down <= 1; ++down)
            for (int right = -1; right <= 1; ++right)
                open.emplace_back(atX + right, atY + down);
    }
    return box;
}

}  // namespace

std::vector<PixelBox> shapes(const Pixels &pixels)
{
    Pixels left = pixels;
    std::vector<PixelBox> found;
    for (std::int64_t y = 0; y < left.rows; ++y)
        for (std::int64_t x = 0; x < left.columns; ++x)
            if (left.at(x, y))
                found.push_back(takeShape(left, x, y));
    return found;
}

}  // namespace film_tests
