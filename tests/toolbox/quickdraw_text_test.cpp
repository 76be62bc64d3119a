#include <random>

#include "quickdraw/fonts.h"
#include "quickdraw_canvas.h"

using QuickDrawText = CanvasTest;

static std::string everyCharacter()
{
    std::string all;
    for (int character = 1; character < 256; ++character)
        all += char(character);
    return all;
}

TEST_F(QuickDrawText, StringsAreAsWideAsTheirCharacters)
{
    const std::string text = everyCharacter();
    for (int16_t font : {0, 1, 2, 3, 4, 20, 21, 22, 23, 999})
        for (int16_t face : {0, 1, 2, 3, 4, 32, 64})
            for (int16_t size : {0, 9, 10, 12, 24}) {
                TextFont(font);
                TextFace(face);
                TextSize(size);
                int sum = 0;
                for (char character : text)
                    sum += CharWidth(uint8_t(character));
                ASSERT_EQ(StringWidth(P(text)), sum) << font << " " << face << " " << size;
                ASSERT_EQ(TextWidth(text.data(), 10, 20), StringWidth(P(text.substr(10, 20))));
                ASSERT_GT(sum, 255);
            }
}

TEST_F(QuickDrawText, SizeZeroIsTwelve)
{
    const int16_t width = StringWidth(P("Frequency"));
    TextSize(12);
    EXPECT_EQ(StringWidth(P("Frequency")), width);
    TextSize(24);
    EXPECT_GT(StringWidth(P("Frequency")), width * 3 / 2);
}

TEST_F(QuickDrawText, MonospacedFontsAdvanceEvenly)
{
    for (int16_t font : {4, 22}) {
        TextFont(font);
        EXPECT_EQ(CharWidth('i'), CharWidth('W'));
    }
    TextFont(3);
    EXPECT_LT(CharWidth('i'), CharWidth('W'));
}

TEST_F(QuickDrawText, LinesAreSixteenPixelsAtTwelvePoints)
{
    FontInfo info{};
    GetFontInfo(&info);
    EXPECT_EQ(info.ascent, 12);
    EXPECT_EQ(info.descent, 3);
    EXPECT_EQ(info.leading, 1);
    EXPECT_GE(info.widMax, CharWidth('W'));
}

TEST_F(QuickDrawText, StandsOnTheBaselineAndMovesThePen)
{
    MoveTo(10, 40);
    DrawString(P("HI"));
    Point pen{};
    GetPen(&pen);
    EXPECT_EQ(pen.h, 10 + StringWidth(P("HI")));
    EXPECT_EQ(pen.v, 40);
    const auto drawn = pixels();
    int onBaseline = 0, below = 0;
    for (int h = 0; h < width; ++h) {
        onBaseline += at(drawn, h, 39) != white;
        for (int v = 40; v < height; ++v)
            below += at(drawn, h, v) != white;
    }
    EXPECT_GT(onBaseline, 2);
    EXPECT_EQ(below, 0);
}

TEST_F(QuickDrawText, EveryCharacterButBlanksDrawsSomething)
{
    for (int16_t font : {0, 3, 22, 23}) {
        TextFont(font);
        for (int character = 0; character < 256; ++character) {
            EraseRect(&port.portRect);
            MoveTo(30, 40);
            DrawChar(int16_t(character));
            const bool blank = character == ' ' || (character == 0xCA && font != 23);
            ASSERT_EQ(inked() == 0, blank) << "font " << font << " character " << character;
        }
    }
}

TEST_F(QuickDrawText, TakesTheForegroundColour)
{
    ForeColor(redColor);
    TextSize(36);
    MoveTo(10, 60);
    DrawString(P("I"));
    const auto drawn = pixels();
    EXPECT_NE(std::find(drawn.begin(), drawn.end(), 0xDD0000u), drawn.end());
}

TEST_F(QuickDrawText, OnABlackAndWhiteDisplayHasNoGreys)
{
    useDepth(1);
    const int before = StringWidth(P("Screen angle"));
    ForeColor(blueColor);
    MoveTo(2, 30);
    DrawString(P("Screen angle"));
    for (std::uint32_t value : pixels())
        ASSERT_TRUE(value == white || value == black);
    EXPECT_GT(inked(), 50);
    EXPECT_EQ(StringWidth(P("Screen angle")), before);
}

TEST_F(QuickDrawText, IsClippedToThePort)
{
    TextSize(100);
    MoveTo(-20, 60);
    DrawString(P("WWWWWW"));
    const auto drawn = pixels();
    for (int v = -rim; v < height + rim; ++v)
        for (int h = -rim; h < width + rim; ++h)
            if (h < 0 || h >= width || v < 0 || v >= height) {
                ASSERT_EQ(at(drawn, h, v), white);
            }
    EXPECT_GT(inked(), 500);
}

TEST_F(QuickDrawText, TextModesCombineWithWhatIsThere)
{
    const Rect all{0, 0, 60, 100};
    PaintRect(&all);
    MoveTo(10, 40);
    ForeColor(whiteColor);
    DrawString(P("H"));
    EXPECT_LT(inked(), 6000);
    ForeColor(blackColor);
    PaintRect(&all);
    TextMode(srcXor);
    for (int twice = 0; twice < 2; ++twice) {
        MoveTo(10, 40);
        DrawString(P("H"));
        EXPECT_EQ(inked() == 6000, twice == 1);
    }
    TextMode(srcCopy);
    MoveTo(10, 40);
    DrawString(P(" "));
    EXPECT_EQ(inked(), 6000 - StringWidth(P(" ")) * 15);
}

TEST_F(QuickDrawText, UnderlinesUnderTheWholeWidth)
{
    TextFace(underline);
    MoveTo(10, 40);
    DrawString(P("   "));
    EXPECT_EQ(inked(), StringWidth(P("   ")));
    EXPECT_EQ(pixel(10, 41), black);
}

TEST_F(QuickDrawText, SymbolHasItsOwnCharacters)
{
    TextFont(23);
    TextSize(100);
    EXPECT_EQ(CharWidth('a'), 63);   // alpha
    EXPECT_EQ(CharWidth('"'), 71);   // for all
    EXPECT_EQ(CharWidth(0xE5), 71);  // sum
    TextFace(bold);
    EXPECT_EQ(CharWidth('a'), 64) << "made bold by an extra pixel";
}

TEST_F(QuickDrawText, MenuMarksHaveShapes)
{
    for (int mark = 0x11; mark <= 0x14; ++mark) {
        EraseRect(&port.portRect);
        MoveTo(10, 40);
        DrawChar(int16_t(mark));
        EXPECT_GT(inked(), 10) << mark;
    }
}

TEST_F(QuickDrawText, IsTracedAsDrawn)
{
    std::vector<std::string> drawing;
    toolbox::trace::setDrawingSink(toolbox::trace::into(drawing));
    TextFont(3);
    TextSize(9);
    TextFace(bold | italic);
    ForeColor(blueColor);
    MoveTo(7, 8);
    DrawString(P("45\xA1 \"x\""));
    DrawText("abcdef", 2, 3);
    ASSERT_EQ(drawing.size(), 2u);
    EXPECT_EQ(drawing[0], "text 7,8 \"45\xC2\xB0 \\\"x\\\"\" font 3 size 9 face 3 color 409");
    EXPECT_NE(drawing[1].find("\"cde\""), std::string::npos);
}

TEST_F(QuickDrawText, MayBeLongerAndLargerThanAnyDisplay)
{
    TextSize(32767);
    MoveTo(32000, -32000);
    DrawString(P(std::string(255, 'W')));
    EXPECT_EQ(StringWidth(P(std::string(255, 'W'))), 32767);
    TextSize(-5);
    EXPECT_GT(StringWidth(P("W")), 0);
    EXPECT_EQ(TextWidth("abc", 0, -3), 0);
}

TEST_F(QuickDrawText, AMissingFontIsNamedWithItsPackage)
{
    toolbox::quickdraw::setFontFolder(folder.path());
    try {
        StringWidth(P("x"));
        FAIL() << "there is no font to measure with";
    } catch (const std::runtime_error &error) {
        EXPECT_NE(std::string(error.what()).find("NimbusSans-Bold.otf"), std::string::npos);
        EXPECT_NE(std::string(error.what()).find("fonts-urw-base35"), std::string::npos);
    }
    toolbox::quickdraw::setFontFolder(toolbox::quickdraw::usualFontFolder);
    EXPECT_GT(StringWidth(P("x")), 0);
}

TEST_F(QuickDrawText, OutlinedLettersAreHollowWithALineAround)
{
    TextSize(60);
    auto draw = [&](int16_t face) {
        EraseRect(&port.portRect);
        TextFace(face);
        MoveTo(20, 70);
        DrawChar('I');
        return pixels();
    };
    useDepth(1);
    const auto plain = draw(normal), line = draw(outline), thick = draw(shadow), both = draw(outline | shadow);
    for (int v = 2; v < height - 3; ++v)
        for (int h = 2; h < width - 3; ++h) {
            auto near = [&](int further) {
                for (int down = -1 - further; down <= 1; ++down)
                    for (int right = -1 - further; right <= 1; ++right)
                        if (at(plain, h + right, v + down) == black)
                            return true;
                return false;
            };
            const bool inside = at(plain, h, v) == black;
            ASSERT_EQ(at(line, h, v) == black, near(0) && !inside) << h << "," << v;
            ASSERT_EQ(at(thick, h, v) == black, near(1) && !inside) << h << "," << v;
            ASSERT_EQ(at(both, h, v) == black, near(2) && !inside) << h << "," << v;
        }
}

TEST_F(QuickDrawText, SynthesisedFacesMakeCharactersWider)
{
    const int16_t plain = CharWidth('e');
    for (int16_t face : {outline, shadow, extend}) {
        TextFace(face);
        EXPECT_EQ(CharWidth('e'), plain + 1) << face;
    }
    TextFace(outline | shadow);
    EXPECT_EQ(CharWidth('e'), plain + 2);
    TextFace(condense);
    EXPECT_EQ(CharWidth('e'), plain - 1);
}

TEST_F(QuickDrawText, WithoutSmoothingLettersKeepTheirDots)
{
    useDepth(1);
    for (int16_t font : {0, 3})
        for (int16_t size : {10, 12, 14}) {
            EraseRect(&port.portRect);
            TextFont(font);
            TextSize(size);
            MoveTo(20, 40);
            DrawChar('i');
            const auto drawn = pixels();
            std::string rows;  // with ink and without, from the top
            for (int v = 20; v < 40; ++v) {
                bool ink = false;
                for (int h = 10; h < 40; ++h)
                    ink = ink || at(drawn, h, v) == black;
                if (rows.empty() || rows.back() != (ink ? '#' : '.'))
                    rows += ink ? '#' : '.';
            }
            EXPECT_EQ(rows, ".#.#") << "font " << font << " size " << size;
        }
}

TEST_F(QuickDrawText, AMarkHasSmoothSlantsOnAFineDisplay)
{
    useDepth(8);
    machine.setDisplays({{{0, 0, 480, 640}, 8, 3}});
    GetMainDevice();
    openCanvas();
    MoveTo(10, 40);
    DrawChar(0x13);
    const toolbox::Picture display = toolbox::displayPicture(0);
    std::vector<int> widths;
    for (int y = 0; y < display.height; ++y)
        if (auto row = display.pixels.begin() + y * display.width;
            int dark =
                int(std::count_if(row, row + display.width, [](auto pixel) { return (pixel & 255) < 128; })))
            widths.push_back(dark);
    ASSERT_GE(widths.size(), 25u);
    for (std::size_t i = 1; i < widths.size(); ++i)
        EXPECT_LE(std::abs(widths[i] - widths[i - 1]), 3) << "row " << i;
}
