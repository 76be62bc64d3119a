// What displays of each depth show.
#include <map>
#include <random>
#include <set>

#include "quickdraw/palette.h"
#include "quickdraw_canvas.h"

using namespace toolbox::quickdraw;

namespace {

class QuickDrawDepth : public CanvasTest {
protected:
    std::set<std::uint32_t> colorsShown() const
    {
        const auto drawn = pixels();
        return {drawn.begin(), drawn.end()};
    }
    std::uint32_t shownFor(int32_t color)
    {
        const Rect r{0, 0, 2, 2};
        ForeColor(color);
        PaintRect(&r);
        return pixel(1, 1);
    }
    void expectOnlyTableColors(int depth)
    {
        const auto &table = colorsOf(depth);
        for (std::uint32_t color : colorsShown())
            EXPECT_NE(std::find(table.begin(), table.end(), color), table.end())
                << std::hex << color << " at depth " << std::dec << depth;
    }
    // Rectangles, text and inversion, in colours of all kinds.
    void drawAnything(std::mt19937 &random)
    {
        auto between = [&](int low, int high) { return int16_t(low + int(random() % unsigned(high - low + 1))); };
        for (int i = 0; i < 12; ++i) {
            const Rect r{between(0, 60), between(0, 80), between(30, 90), between(40, 120)};
            ForeColor(i % 2 ? eightColors[random() % 8]
                            : directColor(uint8_t(random()), uint8_t(random()), uint8_t(random())));
            PenPat(random() % 2 ? &qd.black : &qd.ltGray);
            PenMode(between(patCopy, patBic));
            PaintRect(&r);
            MoveTo(r.left, r.bottom);
            DrawString(P("Angle"));
        }
        PenNormal();
        ForeColor(blackColor);
    }
};

int apart(std::uint32_t a, std::uint32_t b)
{
    int sum = 0;
    for (int shift : {0, 8, 16}) {
        const int difference = int(a >> shift & 0xFF) - int(b >> shift & 0xFF);
        sum += difference * difference;
    }
    return sum;
}

}  // namespace

TEST_F(QuickDrawDepth, TablesAreAsLongAsTheirDepthAllows)
{
    EXPECT_EQ(colorsOf(1).size(), 2u);
    EXPECT_EQ(colorsOf(2).size(), 4u);
    EXPECT_EQ(colorsOf(4).size(), 16u);
    EXPECT_EQ(colorsOf(8).size(), 256u);
    EXPECT_TRUE(colorsOf(32).empty());
    for (int depth : {1, 2, 4, 8}) {
        const auto &table = colorsOf(depth);
        EXPECT_EQ(std::set<std::uint32_t>(table.begin(), table.end()).size(), table.size()) << depth;
        EXPECT_EQ(table.front(), white);
        EXPECT_EQ(table.back(), black);
    }
}

TEST_F(QuickDrawDepth, EveryColourOfATableIsShownExactly)
{
    for (int depth : {1, 2, 4, 8})
        for (std::uint32_t color : colorsOf(depth))
            EXPECT_EQ(shownColor(color, depth), color) << depth;
}

TEST_F(QuickDrawDepth, TheNearestColourIsShown)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int depth : {2, 4, 8})
        for (int i = 0; i < 2000; ++i) {
            const std::uint32_t color = random() & 0xFFFFFF, shown = shownColor(color, depth);
            double nearest = 1e9;
            for (std::uint32_t each : colorsOf(depth))
                nearest = std::min(nearest, std::sqrt(apart(color, each)));
            // A colour is looked up by its cell in a grid of cells of 8, so the
            // cell's own colour is up to half a diagonal away.
            ASSERT_LE(std::sqrt(apart(color, shown)), nearest + 8 * std::sqrt(3.0)) << std::hex << color;
        }
}

TEST_F(QuickDrawDepth, OppositesAreEachOthers)
{
    for (int depth : {1, 2, 4, 8}) {
        for (std::uint32_t color : colorsOf(depth)) {
            const std::uint32_t opposite = oppositeColor(color, depth);
            EXPECT_EQ(oppositeColor(opposite, depth), color) << std::hex << color;
            const bool alone = depth == 4 && (color == 0x808080 || color == 0x562C05);
            EXPECT_EQ(opposite == color, alone) << std::hex << color;
        }
        EXPECT_EQ(oppositeColor(white, depth), black);
    }
    EXPECT_EQ(oppositeColor(0x123456, 32), 0xEDCBA9u);
}

TEST_F(QuickDrawDepth, ConstantsStayDistinctFromFourBitsUp)
{
    for (int depth : {4, 8, 32}) {
        useDepth(depth);
        std::set<std::uint32_t> shown;
        for (int32_t color : eightColors)
            shown.insert(shownFor(color));
        EXPECT_EQ(shown.size(), 8u) << depth;
    }
}

TEST_F(QuickDrawDepth, WithTwoBitsColoursAreGreysNeitherBlackNorWhite)
{
    useDepth(2);
    std::map<int32_t, std::uint32_t> shown;
    for (int32_t color : eightColors)
        shown[color] = shownFor(color);
    const std::map<int32_t, std::uint32_t> expected{
        {blackColor, black},   {whiteColor, white},   {redColor, 0x555555},     {greenColor, 0x555555},
        {blueColor, 0x555555}, {cyanColor, 0xAAAAAA}, {magentaColor, 0xAAAAAA}, {yellowColor, 0xAAAAAA}};
    EXPECT_EQ(shown, expected);
}

TEST_F(QuickDrawDepth, OnlyColoursOfTheTableAreOnTheDisplay)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int depth : {1, 2, 4, 8}) {
        useDepth(depth);
        EraseRect(&port.portRect);
        drawAnything(random);
        expectOnlyTableColors(depth);
        const auto before = pixels();
        InvertRect(&port.portRect);
        expectOnlyTableColors(depth);
        EXPECT_NE(pixels(), before);
        InvertRect(&port.portRect);
        EXPECT_EQ(pixels(), before);
    }
}

TEST_F(QuickDrawDepth, ExistingPixelsBecomeWhatTheNewDepthShows)
{
    std::mt19937 random(1);
    useDepth(32);
    drawAnything(random);
    const auto before = pixels();
    for (int depth : {8, 4, 2, 1}) {
        useDepth(32);
        EraseRect(&port.portRect);
        std::mt19937 again(1);
        drawAnything(again);
        useDepth(depth);
        const auto after = pixels();
        for (std::size_t i = 0; i < after.size(); ++i)
            ASSERT_EQ(after[i], shownColor(before[i], depth));
    }
}

TEST_F(QuickDrawDepth, OnAGroundWithoutColoursBetweenTextInksThePixelsThatItHalfCovers)
{
    auto text = [&](int depth, int32_t ground) {
        useDepth(depth);
        ForeColor(ground);
        PaintRect(&port.portRect);
        ForeColor(blackColor);
        TextSize(40);
        MoveTo(10, 60);
        DrawString(P("OS"));
        return pixels();
    };
    const auto smooth = text(32, whiteColor), coarse = text(4, blueColor);
    for (std::size_t i = 0; i < smooth.size(); ++i)
        ASSERT_EQ(coarse[i] == black, (smooth[i] & 0xFF) < 128) << i;
}

TEST_F(QuickDrawDepth, EdgesOfTextAreSmoothWhereTheDisplayHasColoursBetween)
{
    auto grades = [&](int depth, int32_t color) {
        useDepth(depth);
        EraseRect(&port.portRect);
        ForeColor(color);
        TextSize(40);
        MoveTo(10, 60);
        DrawString(P("OS"));
        return colorsShown().size();
    };
    EXPECT_EQ(grades(1, blackColor), 2u);
    EXPECT_EQ(grades(2, blackColor), 4u);
    EXPECT_EQ(grades(4, blackColor), 5u);
    EXPECT_EQ(grades(4, blueColor), 2u);
    EXPECT_GT(grades(8, blackColor), 8u);
    EXPECT_GT(grades(8, blueColor), 3u);
}
