// What is measured on the dots of films, of a few of the screens that `./measure film-dots` measures all of.
#include "support/film_dots.h"

#include <gtest/gtest.h>

#include "meter/spots.h"
#include "support/sanitized.h"

namespace {

using riders::meter::ScreenKind;
using riders::meter::ScreenReading;
using riders::screening::Resolution;
using riders::screening::Screen;
using riders::screening::Thresholds;
using riders::screening::Tile;

struct Asked {
    Screen screen;
    Resolution resolution;
};

Thresholds thresholdsOf(const Asked &asked)
{
    return {riders::screening::findTile(asked.screen, asked.resolution),
            riders::meter::namedSpots().front().value};
}

// The meter itself is exact to a fifth of the aims, in two inches and a half.
TEST(FilmDots, HaveTheFrequencyAndAngleThatWereAskedFor)
{
    for (const Asked &asked : std::vector<Asked>{{{133, 15}, {600, 600}}, {{60, 75}, {720, 360}}}) {
        SCOPED_TRACE(asked.screen.frequency);
        const ScreenReading reading = FilmDots(thresholdsOf(asked), asked.resolution, 128, 2.5).read();
        EXPECT_EQ(reading.kind, ScreenKind::dots);
        EXPECT_NEAR(reading.frequency, asked.screen.frequency, 0.02);
        EXPECT_NEAR(std::remainder(reading.angle - asked.screen.angle, 90), 0, 0.004);
        EXPECT_NEAR(reading.ink, 128 / 255.0, 0.002);
    }
}

// Cells of 14 to 36 pixels, whose dots cannot all be alike.
TEST(FilmDots, OfSmallCellsMakeNoCoarsePattern)
{
    for (const Asked &asked : std::vector<Asked>{{{150, 30}, {600, 600}},
                                                 {{400 / 3.0, 0}, {600, 600}},
                                                 {{150, 0}, {600, 600}},
                                                 {{133, 15}, {720, 360}}}) {
        const Thresholds thresholds = thresholdsOf(asked);
        // With 15 pixels twice as high as wide, a quarter is not in reach.
        for (const int tone : asked.resolution.across == asked.resolution.down && !triesLess()
                                  ? std::vector{64, 128, 191}
                                  : std::vector{128}) {
            const ScreenReading reading = FilmDots(thresholds, asked.resolution, tone, 1).read();
            EXPECT_EQ(reading.kind, ScreenKind::dots);
            EXPECT_LT(reading.beat.strength, 0.1)
                << asked.screen.frequency << " at " << asked.screen.angle << ", tone " << tone;
        }
    }
}

// Where cells have whole pixels, dots of one tint are alike to the pixel.
TEST(FilmDots, OfOneTintAreAlike)
{
    const Asked asked = {{60, 0}, {600, 600}};
    const Thresholds thresholds = thresholdsOf(asked);
    for (const int tone : {51, 102, 153, 204}) {
        std::vector<int> dots;
        for (std::int64_t y = 0; y < thresholds.tile().height; y += 10)
            for (std::int64_t x = 0; x < thresholds.tile().width; x += 10) {
                int ink = 0;
                for (std::int64_t i = 0; i < 100; ++i)
                    ink += tone >= thresholds.rowOf(y + i / 10)[thresholds.placeIn(x + i % 10, y + i / 10)];
                dots.push_back(ink);
            }
        EXPECT_EQ(std::count(dots.begin(), dots.end(), 100 * tone / 255), std::ptrdiff_t(dots.size())) << tone;
    }
}

TEST(FilmDots, AreThoseOfTheShape)
{
    for (const Asked &asked : std::vector<Asked>{{{60, 15}, {600, 600}}, {{45, 22.5}, {720, 360}}}) {
        const FilmDots film(thresholdsOf(asked), asked.resolution, 77, 1);
        // The meter compares with a dot on square pixels, which no dot of longer ones can be.
        EXPECT_GT(riders::meter::likenessToNamed(film.page(), film.read(), "Round"),
                  asked.resolution.across == asked.resolution.down ? 0.995 : 0.9);
    }
}

}  // namespace
