// How close the dots on the page come to the frequency, angle, ink and shape asked for.
#include <bit>
#include <cmath>

#include "meter/meter.h"
#include "printed/postscript_support.h"

namespace {

namespace meter = riders::meter;

constexpr double kDpi = 600;

// The bits of a page, packed as the meter reads them.
struct PackedPage {
    explicit PackedPage(const Bitmap &bitmap)
        : bits(static_cast<size_t>((bitmap.width + 7) / 8) * bitmap.height),
          page{bits.data(), bitmap.width, bitmap.height, static_cast<size_t>(bitmap.width + 7) / 8, kDpi}
    {
        for (int y = 0; y < bitmap.height; ++y)
            for (int x = 0; x < bitmap.width; ++x)
                if (bitmap.at(x, y))
                    bits[y * page.rowBytes + x / 8] |= 0x80 >> x % 8;
    }
    std::vector<std::uint8_t> bits;
    meter::BitPage page;
};

struct ExactCase {
    const char *frequency, *angle;
};

class ScreenExact : public ::testing::TestWithParam<ExactCase> {
protected:
    meter::ScreenReading read(const std::string &paint)
    {
        const RidersChoice choice = {
            .frequency = GetParam().frequency, .angle = GetParam().angle, .spotBody = pieceBytes(16128)};
        const auto result =
            runGhostscript(folder, "%!PS\n{} settransfer\n" + composeRiders(choice) + paint + " showpage\n",
                           "page.pbm", "-sDEVICE=pbmraw -r600 -g1800x1800");
        EXPECT_EQ(result.output + result.errors, "");
        packed.emplace(readBitmap(folder / "page.pbm"));
        return meter::readScreen(packed->page, meter::PageWindow{0, 0, 1800, 1800});
    }
    void expectExact(const meter::ScreenReading &reading)
    {
        const double frequency = std::stod(GetParam().frequency), angle = std::stod(GetParam().angle);
        EXPECT_NEAR(reading.frequency, frequency, 0.004 * frequency);
        EXPECT_LT(std::abs(std::remainder(reading.angle - angle, 90)), 0.3) << reading.angle;
        EXPECT_LT(reading.beat.strength, 0.35) << reading.beat.frequency << " per inch";
    }

    TemporaryFolder folder;
    std::optional<PackedPage> packed;
};

TEST_P(ScreenExact, Tint)
{
    const auto reading = read("0.75 setgray 0 0 216 216 rectfill");
    expectExact(reading);
    EXPECT_NEAR(reading.ink, 0.25, 0.007);
    if (reading.cellPixels >= 8) {
        EXPECT_GE(meter::likenessTo(packed->page, reading, kSpotShapes[0].value).correlation, 0.99);
    }
}

// An image is screened in another way, which must give the same.
TEST_P(ScreenExact, Image)
{
    const auto reading = read("216 216 scale 2 2 8 [2 0 0 -2 0 2] {<80808080>} image");
    expectExact(reading);
    EXPECT_NEAR(reading.ink, 0.5, 0.007);
}

INSTANTIATE_TEST_SUITE_P(Pairs, ScreenExact,
                         ::testing::Values(ExactCase{"30", "22.5"}, ExactCase{"20", "30"}, ExactCase{"60", "75"},
                                           ExactCase{"85", "7.5"}, ExactCase{"50", "90"}, ExactCase{"133", "45"},
                                           ExactCase{"150", "0"}));

class ScreenOfWholePixels : public ScreenExact {};

// Of equal values the same ones are inked everywhere, except for the last few pixels.
TEST_P(ScreenOfWholePixels, HasCellsThatAreAlike)
{
    EXPECT_GT(read("0.75 setgray 0 0 216 216 rectfill").evenness, 0.97);
}

INSTANTIATE_TEST_SUITE_P(Pairs, ScreenOfWholePixels,
                         ::testing::Values(ExactCase{"50", "90"}, ExactCase{"30", "0"}));

// The interpreter refuses cells of that size.
TEST(ScreenTooCoarse, GetsTheNearestThereIs)
{
    TemporaryFolder folder;
    const RidersChoice choice = {.frequency = "1", .angle = "33", .spotBody = pieceBytes(16128)};
    const auto result = runGhostscript(
        folder, "%!PS\n{} settransfer\n" + composeRiders(choice) + ".5 setgray clippath fill showpage\n", "page");
    EXPECT_TRUE(result.output.starts_with(
        "%%[ riders: 1.0 lines per inch at 33.0 degrees cannot be reached; the nearest is 1.05"))
        << result.output;
    const Bitmap page = readBitmap(folder / "page");
    EXPECT_NEAR(page.share(0, 0, page.width, page.height), 0.5, 0.1);  // some four cells
}

// Practically upright, so that the best supercell would be many times the same few pixels.
TEST(ScreenNextToUpright, InksTintsOfSeveralInks)
{
    TemporaryFolder folder;
    const RidersChoice choice = {.frequency = "120", .angle = "359.9", .spotBody = pieceBytes(16128)};
    const auto result = runGhostscript(folder,
                                       "%!PS\n{} settransfer\n" + composeRiders(choice) +
                                           "0 0 0 .7 setcmykcolor clippath fill showpage\n",
                                       "page", "-sDEVICE=tiffsep1 -r600 -g900x900 -sCompression=none");
    EXPECT_EQ(result.output + result.errors, "");
    const std::string plate = contentsOf(folder / "page(Black).tif");
    size_t white = 0;  // one bit per pixel; the file's other bytes are few
    for (unsigned char byte : plate)
        white += static_cast<size_t>(std::popcount(byte));
    EXPECT_NEAR(static_cast<double>(white) / (900 * 904), 0.3, 0.01);
}

const std::string kShortStrings =
    "playedSystem /string [/dup load 65535 /gt load {stop} /if load systemdict /string get] cvx put\n";
const std::string kOtherMaker = "playedSystem /product (Another) put\n";

struct Played {
    const char *name;
    std::vector<std::string> hidden;
    std::string changed;
    double percent, degrees;  // at most
};

class PlayedInterpreter : public ::testing::TestWithParam<Played> {};

TEST_P(PlayedInterpreter, GetsTheBestThatItHas)
{
    TemporaryFolder folder;
    const Played &played = GetParam();
    const RidersChoice choice = {.frequency = "47",
                                 .angle = "22.5",
                                 .spotBody = pieceBytes(16128),
                                 .flatness = "2",
                                 .annotation = "long " + std::string(200, 'x') + " words"};
    std::vector<std::string> hidden = played.hidden;
    hidden.insert(hidden.end(), kGhostscriptOnly.begin(), kGhostscriptOnly.end());
    const std::string job = onInterpreterWithout(composeRiders(choice), hidden, played.changed) +
                            "0.75 setgray 0 0 144 144 rectfill showpage\n";
    const auto result = runGhostscript(folder, job, "page");
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output.find("trap"), std::string::npos) << result.output;
    const auto measured = measureScreen(readBitmap(folder / "page"), kDpi);
    EXPECT_NEAR(measured.frequency, 47, 0.01 * played.percent * 47);
    EXPECT_LT(std::abs(std::remainder(measured.angle - 22.5, 90)), played.degrees) << measured.angle;
}

INSTANTIATE_TEST_SUITE_P(Made, PlayedInterpreter,
                         ::testing::Values(Played{"Level1", kLevel2Only, "", 7, 1.5},
                                           Played{"Level2", kLevel3Only, "", 0.4, 0.3},
                                           Played{"Level2WithShortStrings", kLevel3Only, kShortStrings, 0.4, 0.3},
                                           Played{"Level3WithShortStrings", {}, kShortStrings, 0.4, 0.3},
                                           Played{"OfAnotherMaker", {}, kOtherMaker + kShortStrings, 0.4, 0.3}),
                         [](const auto &test) { return std::string(test.param.name); });

}  // namespace
