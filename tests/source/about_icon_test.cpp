// The icon's fall out of the window, and the pictures.
#include "source/about_box.h"

namespace about {
namespace {

TEST_F(About, IconIsStretchedAndFallsOutOfTheWindow)
{
    for (int depth : {1, 8}) {
        useDepth(depth);
        Rect icon{}, text{}, strip{};
        int16_t bottom = 0, number = depth < 8 ? 3 : 4;
        open([&] {
            user.wait(kIntroLong);
            look([&] {
                icon = ItemBox(gTheDialog, number);
                text = ItemBox(gTheDialog, kTextArea);
                strip = ItemBox(gTheDialog, 7);
                bottom = gTheDialog->portRect.bottom;
                drawn.clear();
            });
            user.press(kPictureArea);
            look([&] {
                EXPECT_EQ(gIconDone, 1);
                EXPECT_EQ(gDoIntro, 0);
                EXPECT_TRUE(same(ItemBox(gTheDialog, kTextArea), text)) << "put back";
                EXPECT_TRUE(same(ItemBox(gTheDialog, 7), strip)) << "put back";
            });
        });
        std::vector<std::string> expected;
        while (icon.bottom < bottom - 50) {
            icon.bottom += 6;
            expected.push_back(asText(icon));
        }
        while (icon.top < bottom + 10) {
            icon.top += 4;
            icon.bottom += 8;
            expected.push_back(asText(icon));
        }
        // Below the window nothing is visible.
        std::erase_if(expected, [&](const std::string &box) {
            return std::stoi(box.substr(box.find(',') + 1)) >= bottom;
        });
        std::vector<std::string> steps = drawnWith("picture ");
        std::erase_if(steps, [](const std::string &line) { return !line.starts_with("15,"); });
        EXPECT_GT(expected.size(), 20u);
        EXPECT_EQ(steps, expected) << "depth " << depth;
        EXPECT_EQ(drawnWith("eraseRect ").front(), asText(text));
    }
}

TEST_F(About, EachStepOfStretchFallAndNarrowingLastsATick)
{
    open([&] {
        user.wait(kIntroLong);
        look([&] {
            Rect icon = ItemBox(gTheDialog, 4);
            int16_t bottom = gTheDialog->portRect.bottom;
            uint32_t stretch = static_cast<uint32_t>(bottom - 50 - icon.bottom + 5) / 6;
            uint32_t fall = static_cast<uint32_t>(bottom + 10 - icon.top + 3) / 4;
            uint32_t narrowing = 22;
            uint32_t before = machine.ticks();
            DoAboutIconMove();
            EXPECT_EQ(machine.ticks() - before, stretch + fall + narrowing);
        });
    });
}

// The lines' left edges are moved out of sight, and they are not drawn while the
// icon falls through their place.
TEST_F(About, NoLineIsDrawnWhileTheIconFalls)
{
    open([&] {
        user.wait(kIntroLong);
        look([&] { drawn.clear(); });
        user.press(kPictureArea);
    });
    bool falling = false;
    int meanwhile = 0, fallen = 0;
    for (const std::string &line : drawn) {
        falling = falling || line.starts_with("picture 15,");
        if (line.starts_with("eraseRgn 59,20"))
            break;
        meanwhile += falling && line.starts_with("text ");
        fallen += line.starts_with("picture 15,");
    }
    EXPECT_GT(fallen, 20);
    EXPECT_EQ(meanwhile, 0);
}

TEST_F(About, PictureShrinksToNothingAfterTheFall)
{
    for (int depth : {1, 8}) {
        useDepth(depth);
        open([&] {
            user.wait(kIntroLong);
            look([&] { drawn.clear(); });
            user.press(kPictureArea);
            look([&] {
                Rect left = ItemBox(gTheDialog, depth < 8 ? 1 : 2);
                EXPECT_EQ(asText(left), "147,42,147,42");
            });
        });
        std::vector<std::string> strips = drawnWith("eraseRgn ");
        ASSERT_GE(strips.size(), 22u);
        strips.erase(strips.begin(), strips.end() - 22);
        for (int step = 0; step < 22; ++step) {
            Rect outer = {static_cast<int16_t>(kFullPicture.top + step), static_cast<int16_t>(kFullPicture.left + 4 * step),
                          static_cast<int16_t>(kFullPicture.bottom - step),
                          static_cast<int16_t>(kFullPicture.right - 4 * step)};
            EXPECT_EQ(strips[static_cast<size_t>(step)], asText(outer)) << "step " << step;
        }
        EXPECT_EQ(machine.soundsPlayed() % 2, depth == 1 ? 1 : 0) << "the intro's only";
    }
}

TEST_F(About, MiddleOfThePictureStaysWhileItsEdgesGo)
{
    std::vector<int> inked;  // pixels of the middle, each time something is shown
    open([&] {
        user.wait(kIntroLong);
        look([&] {
            machine.setWatcher([&](int, const toolbox::Picture &screen) {
                int found = 0;
                for (int v = 108 + 32; v < 108 + 52; ++v)
                    for (int h = 195 + 107; h < 195 + 187; ++h)
                        found += screen.pixels[static_cast<size_t>(v * screen.width + h)] != 0xFFFFFF;
                inked.push_back(found);
            });
            DoAboutIntro(false);
            machine.setWatcher({});
        });
    });
    ASSERT_GE(inked.size(), 22u);
    EXPECT_GT(inked.front(), 0);
    for (size_t step = 0; step < 10; ++step)
        EXPECT_EQ(inked[step], inked.front()) << step;
    EXPECT_EQ(inked.back(), 0);
}

TEST_F(About, NothingOfPictureAndIconIsLeft)
{
    open([&] {
        user.wait(kIntroLong);
        user.press(kPictureArea);
        user.wait(5);
        look([] {
            toolbox::Picture display = toolbox::displayPicture(0);
            for (int v = 108; v < 108 + 80; ++v)
                for (int h = 195; h < 195 + kWindowWidth; ++h)
                    ASSERT_EQ(display.pixels[static_cast<size_t>(v * display.width + h)], 0xFFFFFFu)
                        << h << "," << v;
        });
    });
}

TEST_F(About, PicturesAreDrawnAsTheirSourcesAre)
{
    machine.setDisplays({{{0, 0, 480, 640}, 32}});
    const std::pair<int16_t, const char *> pictures[] = {{16201, "about_black"}, {16202, "about_color"},
                                                         {16203, "loupe_black"}, {16204, "loupe_color"},
                                                         {17001, "dots_black"},  {17002, "dots_color"}};
    for (const auto &[id, name] : pictures) {
        toolbox::Picture source = toolbox::readPng(std::string(RIDERS_SOURCE_DIR "/resources/art/") + name + ".png");
        ASSERT_GT(source.width, 0) << name;
        Rect box = {100, 100, static_cast<int16_t>(100 + source.height), static_cast<int16_t>(100 + source.width)};
        GetMainDevice();
        SetPort(nullptr);
        DrawPicture(GetPicture(id), &box);
        toolbox::Picture display = toolbox::displayPicture(0);
        int different = 0;
        for (int v = 0; v < source.height; ++v)
            for (int h = 0; h < source.width; ++h)
                different += display.pixels[static_cast<size_t>((100 + v) * display.width + 100 + h)] !=
                             source.pixels[static_cast<size_t>(v * source.width + h)];
        EXPECT_EQ(different, 0) << name;
    }
}

TEST_F(About, PicturesForFewColoursAreBlackAndWhite)
{
    for (const char *name : {"about_black", "loupe_black", "dots_black"})
        for (uint32_t pixel :
             toolbox::readPng(std::string(RIDERS_SOURCE_DIR "/resources/art/") + name + ".png").pixels)
            ASSERT_TRUE(pixel == 0 || pixel == 0xFFFFFF) << name;
}

}  // namespace
}  // namespace about
