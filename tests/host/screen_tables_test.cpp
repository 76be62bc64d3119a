// Threshold tables of dot shapes: by formula and from the interpreter.
#include "tables/screen_tables.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

#include "io/refusal.h"
#include "shapes/tabulated_spot.h"
#include "support/documents.h"
#include "support/riders_pieces.h"
#include "support/sanitized.h"
#include "support/toolbox_test.h"
#include "tables/formulas.h"
#include "tables/kept_tables.h"

namespace {

using riders::screening::Resolution;
using riders::screening::Screen;
using riders::screening::Thresholds;
using riders::screening::Tile;
using riders::screens::Shape;

const Resolution kSquare = {600, 600};

std::vector<int> thresholdsIn(const Thresholds &thresholds)
{
    std::vector<int> all;
    for (std::int64_t y = 0; y < thresholds.tile().height; ++y)
        for (std::int64_t x = 0; x < thresholds.tile().width; ++x)
            all.push_back(thresholds.rowOf(y)[x]);
    return all;
}

// The share of pixels whose thresholds are not the same.
double unlike(const Thresholds &one, const Thresholds &other)
{
    const std::vector<int> these = thresholdsIn(one), those = thresholdsIn(other);
    EXPECT_EQ(these.size(), those.size());
    std::size_t differ = 0;
    for (std::size_t i = 0; i < these.size(); ++i)
        differ += these[i] != those[i];
    return double(differ) / double(these.size());
}

TEST(ScreenTables, TakeTheShapesOfTheProgramFromFormulas)
{
    for (const Shape &shape : riders::screens::installedShapes())
        EXPECT_TRUE(riders::tables::formulaOf(shape.body)) << shape.name;
    for (int piece = 16128; piece <= 16134; ++piece)
        EXPECT_TRUE(riders::tables::formulaOf(pieceBytes(piece))) << piece;
    EXPECT_FALSE(riders::tables::formulaOf("pop dup mul"));
    EXPECT_FALSE(riders::tables::formulaOf(""));
}

TEST(ScreenTables, OfAFormulaAreThoseOfTheInterpreter)
{
    const Tile tile = riders::screening::findTile({60, 45}, kSquare);
    ASSERT_LE(tile.pixels, riders::shapes::kMostComputedPixels);
    const bool all = std::getenv("RIDERS_EVERY_SHAPE") != nullptr;
    for (const Shape &shape : riders::screens::installedShapes()) {
        if (!all && std::set<std::string>{"CosineDot", "Diamond", "Double", "LineX"}.count(shape.name) == 0)
            continue;  // each starts the interpreter
        EXPECT_LT(unlike({tile, *riders::tables::formulaOf(shape.body)},
                         {tile, riders::shapes::tabulatedSpot(shape, tile)}),
                  0.005)
            << shape.name;
    }
}

TEST(ScreenTables, OfALargeTileAreThoseOfTheInterpreterButForAFewPixels)
{
    const Shape round = *riders::screens::installedShape("Round");
    const Tile tile = riders::screening::findTile({30, 15}, kSquare);
    ASSERT_GT(tile.pixels, riders::shapes::kMostComputedPixels);
    const Thresholds computed(tile, *riders::tables::formulaOf(round.body)),
        tabulated(tile, riders::shapes::tabulatedSpot(round, tile));
    // A step of tone here or there, and the jump where dots become holes.
    EXPECT_LT(unlike(computed, tabulated), 0.1);
    const std::vector<int> these = thresholdsIn(computed), those = thresholdsIn(tabulated);
    std::size_t far = 0;
    for (std::size_t i = 0; i < these.size(); ++i)
        far += std::abs(these[i] - those[i]) > 2;
    EXPECT_LT(double(far) / double(these.size()), 0.02);
}

std::string refusalOf(const std::string &body)
{
    try {
        riders::tables::thresholdsOf({"mine", body, {}}, {60, 45}, kSquare, {.seconds = 1});
        return "";
    } catch (const riders::io::Refusal &refusal) {
        return refusal.what();
    }
}

TEST(ScreenTables, OfWhatIsNoDotShapeAreRefused)
{
    setenv("XDG_CACHE_HOME", "/dev/full", 1);  // nothing is kept
    const std::string not1 = "the dot shape mine cannot be used: ";
    EXPECT_EQ(refusalOf("pop 0 mul"), "");
    EXPECT_EQ(refusalOf("pop 2 mul"),
              not1 + "it gives -2.0 for x = -1.0, y = -1.0, and not a number from -1 to 1");
    EXPECT_EQ(refusalOf("showpage"),
              not1 +
                  "it uses showpage, which does not calculate; a dot shape may use only operators that do");
    EXPECT_EQ(refusalOf("pop 0 div"), not1 + "it fails (undefinedresult) for x = -1.0, y = -1.0");
    EXPECT_EQ(refusalOf("{} loop"), not1 + "it does not end, or takes more than 1 seconds");
    EXPECT_EQ(refusalOf(""), not1 + "it is empty");
    // Only at a pixel between those that are tried first.
    EXPECT_EQ(refusalOf("pop dup 0.0303 sub abs 0.001 lt {pop (no)} if")
                  .find(not1 + "it leaves what is no number (string"),
              0U);
}

// Its tables are kept in a folder of the test's own.
class KeptTables : public ::testing::Test {
protected:
    KeptTables() { setenv("XDG_CACHE_HOME", (folder.path() / "cache").c_str(), 1); }
    ~KeptTables() override { unsetenv("XDG_CACHE_HOME"); }

    std::filesystem::path place() const { return folder.path() / "cache" / "riders" / "screens"; }
    std::vector<std::filesystem::path> files() const
    {
        std::vector<std::filesystem::path> all;
        if (std::filesystem::exists(place()))
            for (const auto &entry : std::filesystem::directory_iterator(place()))
                all.push_back(entry.path());
        return all;
    }
    // 41209 pixels in small cells.
    Thresholds table(const std::string &body = "dup mul exch dup mul add 1 exch sub", double frequency = 133) const
    {
        return riders::tables::thresholdsOf({"round", body, {}}, {frequency, 0}, kSquare);
    }

    TemporaryFolder folder;
};

TEST_F(KeptTables, AreReadAsTheyWereComputed)
{
    const std::vector<int> computed = thresholdsIn(table());
    ASSERT_EQ(files().size(), 1U);
    EXPECT_EQ(thresholdsIn(table()), computed);
    EXPECT_EQ(files().size(), 1U);
    // It is the file that is read.
    const Thresholds kept = table();
    Tile other = kept.tile();
    riders::tables::keepTable("any key", Thresholds(other, std::vector<std::uint8_t>(computed.size(), 9)));
    EXPECT_EQ(thresholdsIn(*riders::tables::keptTable("any key")), std::vector<int>(computed.size(), 9));
    EXPECT_FALSE(riders::tables::keptTable("any other"));
}

TEST_F(KeptTables, OfOtherScreensAndShapesAreOthers)
{
    table(), table("dup mul exch dup mul add 1 sub"), table("dup mul exch dup mul add 1 exch sub", 140);
    EXPECT_EQ(files().size(), 3U);
}

TEST_F(KeptTables, ThatAreDamagedAreMadeAnew)
{
    const std::vector<int> computed = thresholdsIn(table());
    const std::filesystem::path file = files().at(0);
    const std::string good = contentsOf(file);
    for (std::size_t at = 0; at < good.size(); at += 1 + good.size() / (triesLess() ? 5 : 23)) {
        std::string bad = good;
        bad[at] = static_cast<char>(bad[at] ^ 0x10);
        writeFile(file, bad);
        EXPECT_EQ(thresholdsIn(table()), computed) << "byte " << at;
        EXPECT_EQ(contentsOf(file), good);
    }
    for (const std::string &bad :
         {std::string(), good.substr(0, 40), good.substr(0, good.size() - 1), good + "x"}) {
        writeFile(file, bad);
        EXPECT_EQ(thresholdsIn(table()), computed);
        EXPECT_EQ(contentsOf(file), good);
    }
    // Another's, under this name.
    table("dup mul exch dup mul add 1 sub");
    for (const std::filesystem::path &other : files())
        if (other != file)
            std::filesystem::copy_file(other, file, std::filesystem::copy_options::overwrite_existing);
    EXPECT_EQ(thresholdsIn(table()), computed);
}

TEST_F(KeptTables, ThatCannotBeKeptAreNoFailure)
{
    const std::vector<int> computed = thresholdsIn(table());
    std::filesystem::remove_all(folder.path() / "cache");
    writeFile(folder.path() / "cache", "no folder");
    EXPECT_EQ(thresholdsIn(table()), computed);
    setenv("XDG_CACHE_HOME", "/dev/full", 1);
    EXPECT_EQ(thresholdsIn(table()), computed);
}

TEST_F(KeptTables, AreNeverTooMany)
{
    const Thresholds one = table();
    Tile tile = one.tile();
    tile.width = 4096, tile.height = 4096, tile.shift = 0, tile.pixels = 4096 * 4096;
    const Thresholds large(tile, std::vector<std::uint8_t>(std::size_t(tile.pixels), 7));
    for (int i = 0; i < 5; ++i)
        riders::tables::keepTable("large " + std::to_string(i), large);
    std::uintmax_t all = 0;
    for (const std::filesystem::path &file : files())
        all += std::filesystem::file_size(file);
    EXPECT_LE(all, riders::tables::kMostKept);
    EXPECT_TRUE(riders::tables::keptTable("large 4")) << "the newest stays";
    EXPECT_FALSE(riders::tables::keptTable("large 0"));
}

}  // namespace
