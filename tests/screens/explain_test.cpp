// What `riders make --explain` says of each plate is what is on film.
#include <gtest/gtest.h>

#include <cmath>

#include "explain/explain.h"
#include "printed/postscript_support.h"
#include "screens/plain_bitmap.h"
#include "support/command.h"

namespace {

namespace meter = riders::meter;
using riders::explain::ReachedScreen;

constexpr int kDpi = 600, kSide = 1200;

class Explain : public ::testing::Test {
protected:
    std::vector<ReachedScreen> explained(std::vector<std::string> options)
    {
        options.insert(options.begin(), {"make", "-o", "film"});
        const CommandResult result = runRiders(options, {}, folder.path());
        EXPECT_EQ(result.status, 0) << result.err;
        return riders::explain::explain(folder / "film", kDpi);
    }
    // The plates of a page with half of each ink: a bit for each in four bits a pixel.
    std::vector<PlainBitmap> films()
    {
        const auto result = runGhostscript(folder,
                                           "%!PS\n{} settransfer\n" + contentsOf(folder / "film") +
                                               ".5 .5 .5 .5 setcmykcolor clippath fill showpage\n",
                                           "page", "-sDEVICE=bitcmyk -r600 -g1200x1200");
        EXPECT_EQ(result.output + result.errors, "");
        const std::string inks = contentsOf(folder / "page");
        std::vector<PlainBitmap> films;
        for (int ink = 0; ink < 4; ++ink) {
            std::string bits(kSide * kSide / 8, 0);
            for (int i = 0; i < kSide * kSide; ++i)
                if (inks[i / 2] & (i % 2 ? 0x08 : 0x80) >> ink)
                    bits[i / 8] = static_cast<char>(bits[i / 8] | 0x80 >> i % 8);
            films.emplace_back(std::move(bits), 0, kSide, kSide, kDpi);
        }
        return films;
    }

    TemporaryFolder folder;
};

const ReachedScreen *find(const std::vector<ReachedScreen> &reached, const std::string &plate)
{
    for (const ReachedScreen &screen : reached)
        if (screen.plate == plate)
            return &screen;
    return nullptr;
}

}  // namespace

TEST_F(Explain, SaysWhatIsOnThePlates)
{
    const std::vector<ReachedScreen> reached =
        explained({"--plate", "Cyan:61.3@15,Round", "--plate", "Magenta:87@-15,Round", "--plate",
                   "Yellow:66.666667@0,Round", "--plate", "*:33@22.5,round"});
    const std::vector<PlainBitmap> plates = films();
    const std::vector<std::string> names = {"Cyan", "Magenta", "Yellow", "Default"};
    for (size_t i = 0; i < names.size(); ++i) {
        SCOPED_TRACE(names[i]);
        const ReachedScreen *const told = find(reached, names[i]);
        ASSERT_NE(told, nullptr);
        const meter::ScreenReading film = meter::readScreen(plates[i].page());
        EXPECT_NEAR(told->frequency, film.frequency, 4e-4 * film.frequency);
        EXPECT_LT(std::abs(std::remainder(told->angle - film.angle, 90)), 0.02) << told->angle << film.angle;
        EXPECT_NEAR(told->cell, film.cellPixels, 4e-4 * film.cellPixels);
        EXPECT_GT(told->supercellPixels, 0);
        EXPECT_NEAR(told->supercellPixels / told->cell / told->cell, told->supercellCells, 1e-6);
        EXPECT_GE(told->levels, 80);
        EXPECT_LE(told->levels, 256);
    }
    EXPECT_EQ(find(reached, "Cyan")->askedAngle, 15);
    EXPECT_NEAR(find(reached, "Cyan")->askedFrequency, 61.3, 1e-4);
    EXPECT_NEAR(find(reached, "Yellow")->frequency, 66.666667, 1e-5);
}

TEST_F(Explain, KnowsSpotInksToo)
{
    const std::vector<ReachedScreen> reached = explained({"--plate", "PANTONE 300 C:61.3@15,Line"});
    ASSERT_NE(find(reached, "PANTONE 300 C"), nullptr);
    EXPECT_NEAR(find(reached, "PANTONE 300 C")->frequency, 61.3, 0.1);
}

TEST_F(Explain, SaysNothingWhereNoScreenIsChosen)
{
    EXPECT_TRUE(explained({"--flatness", "1"}).empty());
}

TEST(ExplainLine, IsRefusedWhereItIsNone)
{
    using riders::explain::screenFromLine;
    const auto own = screenFromLine("60 45 0 0 59.9 44.9 0 Gold leaf", 600);
    ASSERT_TRUE(own);
    EXPECT_EQ(own->plate, "Gold leaf");
    EXPECT_EQ(own->frequency, 59.9);
    EXPECT_EQ(own->levels, 101);
    const auto supercell = screenFromLine("60 45 14 14 0 0 900 Gold", 600);
    ASSERT_TRUE(supercell);
    EXPECT_NEAR(supercell->frequency, 60.6092, 1e-3);
    EXPECT_NEAR(supercell->angle, 45, 1e-9);
    EXPECT_EQ(supercell->supercellCells, 4);
    EXPECT_EQ(supercell->levels, 256);
    for (const char *line :
         {"", "60 45 0 0 59.9 44.9 Gold", "60 45 0 0 0 0 0 Gold", "60 45 99999 0 0 0 0 Gold",
          "0 45 14 14 0 0 0 Gold", "600 45 1 0 0 0 0 ", "inf nan 1 0 0 0 0 Gold", "1 0 14 14 0 0 0 x"})
        EXPECT_FALSE(screenFromLine(line, 600)) << line;
}
