// What is kept of a film to be looked at: upright, however the page lies on it.
#include <random>

#include "film/kept_window.h"
#include "support/toolbox_test.h"

namespace {

namespace film = riders::film;

using riders::plates::BitPlate;

void set(BitPlate &plate, int x, int y)
{
    plate.row(y)[x >> 3] |= static_cast<std::uint8_t>(0x80 >> (x & 7));
}

BitPlate noise(int width, int height)
{
    std::mt19937 random(1);
    BitPlate plate(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            if (random() & 1)
                set(plate, x, y);
    return plate;
}

// A quarter turn anticlockwise: what is at the right comes to the top.
BitPlate quarterTurned(const BitPlate &plate)
{
    BitPlate turned(plate.height, plate.width);
    for (int y = 0; y < turned.height; ++y)
        for (int x = 0; x < turned.width; ++x)
            if (plate.at(plate.width - 1 - y, x))
                set(turned, x, y);
    return turned;
}

// The page's first pixel is at (left, top) of the film.
film::KeptWindow keptOf(const BitPlate &page, const riders::plates::Place &place, int left, int top)
{
    BitPlate whole(page.width + left, page.height + top);
    for (int y = 0; y < page.height; ++y)
        for (int x = 0; x < page.width; ++x)
            if (page.at(x, y))
                set(whole, x + left, y + top);
    film::KeptWindow window(place, {20, 20}, static_cast<size_t>(left), static_cast<size_t>(top),
                            static_cast<size_t>(whole.width), static_cast<size_t>(whole.height));
    for (int y = 0; y < whole.height; ++y)
        window.take(static_cast<size_t>(y), whole.row(y));
    return window;
}

TEST(KeptWindow, IsUprightHoweverThePageLies)
{
    constexpr int kLeft = 13, kTop = 22, kWidth = 31, kHeight = 24;  // of the place, in pixels
    const BitPlate upright = noise(100, 80);
    BitPlate onFilm = upright;
    for (const int rotation : {0, 90, 180, 270}) {
        const riders::plates::Place place = {kLeft / 20., kTop / 20., kWidth / 20., kHeight / 20.};
        const BitPlate kept = keptOf(onFilm, film::turned(place, rotation, 5, 4), 7, 3).upright(rotation);
        ASSERT_EQ(kept.width, kWidth) << rotation;
        ASSERT_EQ(kept.height, kHeight) << rotation;
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                ASSERT_EQ(kept.at(x, y), upright.at(kLeft + x, kTop + y)) << rotation << ": " << x << ", " << y;
        onFilm = quarterTurned(onFilm);
    }
}

}  // namespace
