// The Toolbox in a real window: what the display shows, what keyboard layouts
// and other programs' clipboards bring.
#include <chrono>
#include <cstdlib>

#include "desktop/display.h"
#include "desktop/sitting.h"
#include "desktop/weston.h"
#include "desktop/window_seat.h"
#include "toolbox/dialogs.h"

namespace fs = std::filesystem;

namespace {

using namespace desktop;
using toolbox::Picture;
using toolbox::Display;

constexpr int annotation = 8;
constexpr int textOfAnnotation = 4;
constexpr auto patience = std::chrono::seconds(20);

class InWindow : public ::testing::Test {
protected:
    // What the display shows of the window once all has been shown.
    Picture shown(WindowSeat &seat)
    {
        seat.passTicks(6);
        const fs::path file = folder_ / "shown.png";
        display_.picture(file, seat.placeOnDisplay());
        return toolbox::readPng(file);
    }

    // What it shows of the settings dialog on such a display.
    Picture shownSettings(const Display &display)
    {
        WindowSeat seat({display});
        Sitting sitting(seat, folder_ / "window");
        Picture seen;
        sitting.inSettings([&] {
            sitting.user.wait(1);
            sitting.user.then([&] { seen = shown(seat); });
        });
        return seen;
    }

    static void inAnnotation(Sitting &sitting, const std::function<void()> &steps)
    {
        sitting.inSettings([&] {
            sitting.user.choose(annotation, "Edit annotation...");
            steps();
            sitting.user.key("escape");
        });
    }

    // UTF-8.
    static std::string textOf(int item)
    {
        int16_t type;
        Handle handle;
        Rect box;
        Str255 text;
        GetDItem(FrontWindow(), static_cast<int16_t>(item), &type, &handle, &box);
        GetIText(handle, text);
        return toolbox::utf8FromPascal(text);
    }

    // Lets the dialog take keys until its text is the wanted one or patience
    // runs out.
    static void expectText(Sitting &sitting, const std::string &wanted, int patience = 200)
    {
        sitting.user.then([&sitting, wanted, patience] {
            if (patience == 0)
                EXPECT_EQ(textOf(textOfAnnotation), wanted);
            else if (textOf(textOfAnnotation) != wanted)
                sitting.user.insertNext([&] {
                    sitting.user.wait(2);
                    expectText(sitting, wanted, patience - 1);
                });
        });
    }

    // The compositor draws its pointer, which rests in the corner, as part of the
    // picture.
    static Picture withoutPointer(Picture picture)
    {
        constexpr int pointer = 24;
        for (int row = 0; row < pointer; ++row)
            std::fill_n(picture.pixels.begin() + row * picture.width, pointer, 0);
        return picture;
    }

    // Waits until the test is true, while the window keeps running.
    static bool comesTrue(WindowSeat &seat, const std::function<bool()> &test)
    {
        const auto end = std::chrono::steady_clock::now() + patience;
        while (!test() && std::chrono::steady_clock::now() < end)
            seat.passTicks(1);
        return test();
    }

    DisplayServer display_{"1400x1000x24"};
    TemporaryFolder folder_;
    Hands hands_;
};

}  // namespace

TEST_F(InWindow, ShowsWhatTheHeadlessDisplayShows)
{
    for (int scale : {1, 2})
        for (int depth : {32, 8, 1}) {
            const Display there = displayOf(640, 480, depth, scale);
            Difference difference = between(shownSettings(there), headlessSettings(folder_ / "headless", there));
            EXPECT_EQ(difference.pixels, 0) << difference.first << ", depth " << depth << ", scale " << scale;
        }
}

TEST_F(InWindow, NewSizeAndDepthAreShownWhileADialogIsOpen)
{
    const Display first = displayOf(640, 480, 8), second = displayOf(800, 600, 2);
    WindowSeat seat({first});
    Sitting sitting(seat, folder_ / "window");
    Picture seen;
    sitting.inSettings([&] {
        sitting.user.wait(1);
        sitting.user.then([&] { seat.setDisplays({second}); });
        sitting.user.wait(30);
        sitting.user.then([&] { seen = shown(seat); });
    });
    toolbox::stop();
    Difference difference = between(seen, headlessSettings(folder_ / "headless", first, {second}));
    EXPECT_EQ(difference.pixels, 0) << difference.first;
}

TEST_F(InWindow, ClipboardGoesToOtherPrograms)
{
    WindowSeat seat({displayOf(640, 480, 8)});
    Sitting sitting(seat, folder_ / "window");
    const fs::path pasted = folder_ / "pasted";
    inAnnotation(sitting, [&] {
        sitting.user.type("Büro 77");
        sitting.user.key("home");
        sitting.user.key("end", shiftKey);
        sitting.user.key("c", cmdKey);
        sitting.user.then([&] {
            ASSERT_EQ(std::system(("xclip -o -selection clipboard > " + pasted.string() + " &").c_str()), 0);
            EXPECT_TRUE(comesTrue(seat, [&] { return contentsOf(pasted) == "Büro 77"; })) << contentsOf(pasted);
        });
    });
}

TEST_F(InWindow, OtherProgramsTextsKeepTheirAccents)
{
    WindowSeat seat({displayOf(640, 480, 8)});
    Sitting sitting(seat, folder_ / "window");
    inAnnotation(sitting, [&] {
        sitting.user.putOnClipboard("Büro Ø π");
        sitting.user.key("v", cmdKey);
        expectText(sitting, "Büro Ø π");
    });
}

// Keys by their position: the layout decides what they type.
TEST_F(InWindow, LayoutAndDeadKeysGiveTheirCharacters)
{
    setenv("LC_ALL", "C.UTF-8", 1);
    ASSERT_EQ(std::system("setxkbmap de"), 0);
    WindowSeat seat({displayOf(640, 480, 8)});
    Sitting sitting(seat, folder_ / "window");
    constexpr int udiaeresis = 34, deadAcute = 21, e = 26, y = 29, q = 24;
    inAnnotation(sitting, [&] {
        sitting.user.then([&] {
            for (int place : {udiaeresis, deadAcute, e, y})
                hands_.key(std::to_string(place));
            hands_.key(std::to_string(q), "ISO_Level3_Shift");
        });
        expectText(sitting, "üéz@");
    });
}

TEST_F(InWindow, OnWaylandShowsWhatTheHeadlessDisplayShows)
{
    const Display there = displayOf(640, 480, 8);
    Weston weston(640, 480);
    const Difference difference =
        between(withoutPointer(shownSettings(there)), withoutPointer(headlessSettings(folder_ / "headless", there)));
    EXPECT_EQ(difference.pixels, 0) << difference.first;
}
