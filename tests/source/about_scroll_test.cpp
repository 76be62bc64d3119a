// The lines that scroll by.
#include "source/about_box.h"

namespace about {
namespace {

class AboutScroll : public About {
protected:
    int widthOf(const std::string &line)
    {
        GrafPtr saved;
        GetPort(&saved);
        SetPort(nullptr);
        GrafPtr port;
        GetPort(&port);
        TextFont(3);
        TextSize(9);
        TextFace(bold + italic);
        int width = StringWidth(P(line));
        TextFont(0);
        TextSize(0);
        TextFace(0);
        SetPort(saved);
        return width;
    }

    // What the three lines draw from the first step to the last.
    std::vector<std::string> wholeScroll(const Rect &area)
    {
        std::vector<std::string> lines;
        for (int16_t i = 1; i <= 3; ++i) {
            std::string words = text(16201, i);
            lines.push_back("eraseRect " + asText(area));
            for (int delta = kWindowWidth - 3; delta > -widthOf(words); delta -= 2) {
                lines.push_back("scrollRect " + asText(area) + " by -2,0");
                lines.push_back("text " + std::to_string(delta) + "," + std::to_string(area.bottom - 22) + " \"" + words +
                                "\" font 3 size 9 face 3 color 409");
            }
        }
        return lines;
    }

    std::vector<std::string> scrolled() const
    {
        std::vector<std::string> lines;
        for (const std::string &line : drawn)
            if (line.starts_with("scrollRect") || line.find("face 3") != std::string::npos ||
                line == "eraseRect " + asText(area))
                lines.push_back(line);
        return lines;
    }

    void startScroll()
    {
        user.wait(kIntroLong);
        look([&] {
            area = gScrollRect;
            drawn.clear();
        });
        user.press(kPictureArea, controlKey);
    }

    Rect area{};
};

TEST_F(AboutScroll, ThreeLinesScrollTwoPixelsPerStep)
{
    open([&] {
        startScroll();
        user.wait(900);
        look([&] {
            EXPECT_EQ(gScrollInProg, 0);
            EXPECT_EQ(gScrollDelta, kWindowWidth);
            EXPECT_EQ(gWhichScrollString, 1);
            EXPECT_EQ(gGetScrollStr, 1);
            GrafPtr port = gTheDialog;
            EXPECT_EQ(port->fgColor, 33);
            EXPECT_EQ(port->txMode, srcOr);
            EXPECT_EQ(port->txFace, 0);
        });
    });
    std::vector<std::string> expected = wholeScroll(area);
    std::vector<std::string> seen = scrolled();
    ASSERT_EQ(seen.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i)
        ASSERT_EQ(seen[i], expected[i]) << "line " << i;
    EXPECT_EQ(drawnWith("text ").back().find(text(16200, 3)) != std::string::npos, true) << "lines drawn again";
}

TEST_F(AboutScroll, StepsComeWithTheIdleEvents)
{
    open([&] {
        startScroll();
        user.wait(10);
        look([&] {
            EXPECT_EQ(gScrollInProg, 1);
            EXPECT_LE(gScrollDelta, kWindowWidth - 1 - 2 * 9);
            EXPECT_GE(gScrollDelta, kWindowWidth - 1 - 2 * 15);
        });
    });
}

TEST_F(AboutScroll, AnotherScrollMayFollow)
{
    open([&] {
        startScroll();
        user.wait(900);
        look([&] { drawn.clear(); });
        user.press(kPictureArea, controlKey);
        user.wait(900);
        look([&] { EXPECT_EQ(scrolled(), wholeScroll(area)); });
    });
}

TEST_F(AboutScroll, LineLengthIsKeptAsMinusItsWidth)
{
    open([&] {
        startScroll();
        user.wait(20);
        look([&] {
            EXPECT_EQ(plain(gTheScrollStr), text(16201, 1));
            EXPECT_EQ(gScrollStrLen, -widthOf(text(16201, 1)));
        });
    });
}

TEST_F(AboutScroll, NothingOfTheTitleIsLeftInTheScroll)
{
    open([&] {
        startScroll();
        user.wait(2);
        look([] {
            toolbox::Picture display = toolbox::displayPicture(0);
            Rect text = ItemBox(gTheDialog, kTextArea);
            for (int v = 108 + text.top; v < 108 + text.bottom; ++v)
                for (int h = 195; h < 195 + 200; ++h)
                    ASSERT_EQ(display.pixels[static_cast<size_t>(v * display.width + h)], 0xFFFFFFu)
                        << h << "," << v;
        });
    });
}

// Each step draws it again over what was moved; it must not become bolder.
TEST_F(AboutScroll, LineLooksTheSameAllTheWay)
{
    auto darkness = [] {
        toolbox::Picture display = toolbox::displayPicture(0);
        long sum = 0;
        for (int v = 108 + gScrollRect.top; v < 108 + gScrollRect.bottom; ++v)
            for (int h = 195; h < 195 + kWindowWidth; ++h)
                sum += 255 - (display.pixels[static_cast<size_t>(v * display.width + h)] >> 16 & 255);
        return sum;
    };
    long early = 0;
    open([&] {
        startScroll();
        user.wait(80);
        look([&] { early = darkness(); });
        user.wait(30);
        look([&] { EXPECT_EQ(darkness(), early); });
    });
    EXPECT_GT(early, 0);
}

TEST_F(AboutScroll, LinesHaveThirtyOneCharactersAtMost)
{
    for (int16_t i = 1; i <= 5; ++i) {
        EXPECT_FALSE(text(16201, i).empty()) << i;
        EXPECT_LE(text(16201, i).size(), 31u) << i;
    }
    EXPECT_EQ(text(16201, 3), "Happy Bum Lives!");
}

}  // namespace
}  // namespace about
