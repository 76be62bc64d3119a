// Fills and images on every pair of frequency and angle: on film for one ink, for
// several, and where the page is painted in bands. Some of the pairs; all of them with RIDERS_EVERY_PAIR=1.
// Lines too, which distinguish an angle from one a quarter turn off.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "printed/postscript_support.h"
#include "screens/plain_bitmap.h"
#include "support/screen_pairs.h"

namespace {

namespace meter = riders::meter;

struct Film {
    const char *name;
    bool fourInks;
    const char *options;
    int dpi;
    double frequencyError, angleError;  // at most, %, degrees
    size_t step;                        // only every so many pairs

    size_t steps() const { return std::getenv("RIDERS_EVERY_PAIR") != nullptr ? 1 : step; }
};

std::ostream &operator<<(std::ostream &out, const Film &film)
{
    return out << film.name;
}

constexpr int kRound = 16128, kLine = 16130;
constexpr double kSide = 1.5;  // inches of each tint

// A page for each pair: a fill on the left, an image on the right, both of half ink.
std::string jobFor(const std::vector<ScreenPair> &pairs, bool fourInks, int spot = kRound)
{
    const std::string fill = fourInks ? ".5 .5 .5 .5 setcmykcolor" : ".5 setgray";
    const std::string image = fourInks ? "{<80808080>} false 4 colorimage" : "{<80>} image";
    std::string job = "%!PS\n{} settransfer\n";
    for (const ScreenPair &pair : pairs) {
        std::ostringstream frequency, angle;
        frequency << pair.frequency, angle << pair.angle;
        job += composeRiders({.frequency = frequency.str(), .angle = angle.str(), .spotBody = pieceBytes(spot)});
        job += fill + " 0 0 108 108 rectfill gsave 108 0 translate 108 108 scale\n" + "1 1 8 [1 0 0 1 0 0] " +
               image + " grestore showpage\n";
    }
    return job;
}

class Errors {
public:
    void add(const meter::ScreenReading &reading, const ScreenPair &pair)
    {
        ASSERT_EQ(reading.kind, meter::ScreenKind::dots);
        frequency_.push_back(100 * std::abs(reading.frequency / pair.frequency - 1));
        angle_.push_back(std::abs(std::remainder(reading.angle - pair.angle, 90)));
        EXPECT_LT(reading.beat.strength, 0.35);
        EXPECT_NEAR(reading.ink, 0.5, 0.007);
    }
    static double worst(const std::vector<double> &values)
    {
        return *std::max_element(values.begin(), values.end());
    }
    static double median(std::vector<double> values)
    {
        std::nth_element(values.begin(), values.begin() + long(values.size() / 2), values.end());
        return values[values.size() / 2];
    }
    void expectWithin(const Film &film) const
    {
        EXPECT_LT(worst(frequency_), film.frequencyError);
        EXPECT_LT(worst(angle_), film.angleError);
        if (film.steps() > 4)
            return;  // too few for their median to say anything
        EXPECT_LT(median(frequency_), 0.05);
        EXPECT_LT(median(angle_), 0.03);
    }

private:
    std::vector<double> frequency_, angle_;
};

// The first of the four inks of a page of four bits per pixel, or of an arbitrary
// map with a byte for each.
PlainBitmap readFirstInk(const std::filesystem::path &file, int width, int height, double dpi)
{
    const std::string inks = contentsOf(file), end = "ENDHDR\n";
    const bool map = inks.starts_with("P7");
    const size_t pixels = static_cast<size_t>(width) * height, start = map ? inks.find(end) + end.size() : 0;
    if (inks.size() - start != (map ? 4 * pixels : pixels / 2))
        throw std::runtime_error("no page of four inks: " + file.string());
    std::string bits(pixels / 8, 0);
    for (size_t i = 0; i < pixels; ++i)
        if (map ? inks[start + 4 * i] != 0 : (inks[i / 2] & (i % 2 ? 0x08 : 0x80)) != 0)
            bits[i / 8] = static_cast<char>(bits[i / 8] | 0x80 >> i % 8);
    return {std::move(bits), 0, width, height, dpi};
}

class EveryPair : public ::testing::TestWithParam<Film> {
protected:
    // Runs the job, and calls `look` with each pair and the readings of its fill and its image.
    template <typename Look>
    void read(const std::vector<ScreenPair> &pairs, int spot, Look look)
    {
        const Film &film = GetParam();
        const int side = static_cast<int>(kSide * film.dpi);
        const auto result = runGhostscript(folder, jobFor(pairs, film.fourInks, spot), "page%d",
                                           std::string(film.options) + " -r" + std::to_string(film.dpi) + " -g" +
                                               std::to_string(2 * side) + "x" + std::to_string(side));
        EXPECT_EQ(result.output + result.errors, "");
        for (size_t i = 0; i < pairs.size(); ++i) {
            SCOPED_TRACE(std::to_string(pairs[i].frequency) + " lpi, " + std::to_string(pairs[i].angle) +
                         " degrees");
            const std::filesystem::path file = folder / ("page" + std::to_string(i + 1));
            const PlainBitmap page =
                film.fourInks ? readFirstInk(file, 2 * side, side, film.dpi) : readPlainBitmap(file, film.dpi);
            look(pairs[i], meter::readScreen(page.page(), meter::PageWindow{0, 0, side, side}),
                 meter::readScreen(page.page(), meter::PageWindow{side, 0, side, side}));
        }
    }

    TemporaryFolder folder;
};

TEST_P(EveryPair, IsOnFilmInFillsAndImages)
{
    std::vector<ScreenPair> pairs;
    for (size_t i = 0; i < screenPairs().size(); i += GetParam().steps())
        pairs.push_back(screenPairs()[i]);
    Errors fills, images;
    read(pairs, kRound,
         [&](const ScreenPair &pair, const meter::ScreenReading &fill, const meter::ScreenReading &image) {
             fills.add(fill, pair);
             images.add(image, pair);
         });
    fills.expectWithin(GetParam());
    images.expectWithin(GetParam());
}

TEST_P(EveryPair, OfLinesIsTurnedAsAsked)
{
    const std::vector<ScreenPair> pairs = {{60, 10}, {85, 55}, {60, 100}, {85, 145}, {60, 190}, {85, 350}};
    read(pairs, kLine,
         [&](const ScreenPair &pair, const meter::ScreenReading &fill, const meter::ScreenReading &image) {
             for (const meter::ScreenReading *reading : {&fill, &image}) {
                 EXPECT_EQ(reading->kind, meter::ScreenKind::lines);
                 EXPECT_NEAR(std::remainder(reading->angle - pair.angle, 180), 0, GetParam().angleError);
             }
         });
}

INSTANTIATE_TEST_SUITE_P(
    Films, EveryPair,
    ::testing::Values(
        Film{"OneInk", false, "-sDEVICE=pbmraw", 600, 0.4, 0.3, 4},
        Film{"FourInks", true, "-sDEVICE=bitcmyk", 600, 0.4, 0.3, 13},
        Film{"OneInkInBands", false, "-sDEVICE=pbmraw -dMaxBitmap=0 -dBufferSpace=300000", 600, 0.4, 0.3, 17},
        Film{"FourInksInBands", true, "-sDEVICE=bitcmyk -dMaxBitmap=0 -dBufferSpace=1000000", 600, 0.4, 0.3, 23},
        Film{"Planes", true, "-sDEVICE=plank", 600, 0.5, 0.6, 29},
        Film{"FineFilm", false, "-sDEVICE=pbmraw", 2400, 0.5, 0.4, 29}),
    [](const auto &test) { return std::string(test.param.name); });

}  // namespace
