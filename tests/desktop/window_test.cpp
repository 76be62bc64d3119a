// The Toolbox in a real window: what the display shows, what keyboard layouts
// and other programs' clipboards bring.
#include <chrono>
#include <cstdlib>

#include "desktop/display.h"
#include "desktop/window_seat.h"
#include "plugin/plugin.h"
#include "support/toolbox_test.h"
#include "toolbox/dialogs.h"
#include "toolbox/host/picture.h"
#include "toolbox/host/user.h"

namespace fs = std::filesystem;

namespace {

using toolbox::Picture;
using toolbox::Screen;

constexpr int kCancel = 2, kAnnotation = 8;
constexpr int kTextOfAnnotation = 4;
constexpr auto patience = std::chrono::seconds(20);

// One session with the plug-in, at any machine.
class Sitting {
public:
    Sitting(toolbox::HeadlessMachine &machine, const fs::path &preferences) : user(machine)
    {
        toolbox::Configuration configuration;
        configuration.preferencesFolder = preferences;
        toolbox::start(configuration, machine);
        plugin_ = std::make_unique<riders::Plugin>(riders::pluginBesideProgram());
    }
    ~Sitting()
    {
        plugin_.reset();
        toolbox::stop();
    }
    Sitting(const Sitting &) = delete;

    // The settings dialog, from opening to cancelling, with these steps between.
    void inSettings(const std::function<void()> &steps)
    {
        steps();
        user.press(kCancel);
        plugin_->call(kSelectCommand, kCommandSettings);
    }

    toolbox::ScriptedUser user;

private:
    std::unique_ptr<riders::Plugin> plugin_;
};

struct Difference {
    int pixels = 0;
    std::string first;
};

Difference between(const Picture &is, const Picture &should)
{
    if (is.width != should.width || is.height != should.height)
        return {1, "sizes: " + std::to_string(is.width) + "x" + std::to_string(is.height) + " and " +
                       std::to_string(should.width) + "x" + std::to_string(should.height)};
    Difference found;
    for (std::size_t i = 0; i < is.pixels.size(); ++i)
        if (is.pixels[i] != should.pixels[i] && found.pixels++ == 0)
            found.first = "at " + std::to_string(static_cast<int>(i) % is.width) + "," +
                          std::to_string(static_cast<int>(i) / is.width);
    return found;
}

class InWindow : public ::testing::Test {
protected:
    static Screen screen(int width, int height, int depth, int scale)
    {
        return {{0, 0, static_cast<int16_t>(height), static_cast<int16_t>(width)}, depth, scale};
    }

    // What the display shows of the window once it has shown all.
    Picture shown(desktop::WindowSeat &seat)
    {
        seat.passTicks(6);
        const fs::path file = folder_ / "shown.png";
        display_.picture(file, seat.placeOnDisplay());
        return toolbox::readPng(file);
    }

    Picture headlessSettings(const Screen &first, const std::vector<Screen> &later = {})
    {
        toolbox::HeadlessMachine machine({first});
        Sitting sitting(machine, folder_ / "headless");
        Picture seen;
        sitting.inSettings([&] {
            if (!later.empty())
                sitting.user.setScreens(later);
            sitting.user.wait(1);
            sitting.user.then([&] { seen = toolbox::screenPicture(0); });
        });
        return seen;
    }

    static void inAnnotation(Sitting &sitting, const std::function<void()> &steps)
    {
        sitting.inSettings([&] {
            sitting.user.choose(kAnnotation, "Edit annotation...");
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

    // Lets the dialog take keys until its text is that, or for long.
    static void expectText(Sitting &sitting, const std::string &wanted, int patience = 200)
    {
        sitting.user.then([&sitting, wanted, patience] {
            if (patience == 0)
                EXPECT_EQ(textOf(kTextOfAnnotation), wanted);
            else if (textOf(kTextOfAnnotation) != wanted)
                sitting.user.insertNext([&] {
                    sitting.user.wait(2);
                    expectText(sitting, wanted, patience - 1);
                });
        });
    }

    // Until it is so, while the window goes on.
    static bool comesTrue(desktop::WindowSeat &seat, const std::function<bool()> &test)
    {
        const auto end = std::chrono::steady_clock::now() + patience;
        while (!test() && std::chrono::steady_clock::now() < end)
            seat.passTicks(1);
        return test();
    }

    desktop::Display display_{"1400x1000x24"};
    TemporaryFolder folder_;
    desktop::Hands hands_;
};

}  // namespace

TEST_F(InWindow, ShowsWhatTheHeadlessScreenShows)
{
    for (int scale : {1, 2})
        for (int depth : {32, 8, 1}) {
            const Screen there = screen(640, 480, depth, scale);
            desktop::WindowSeat seat({there});
            Sitting sitting(seat, folder_ / "window");
            Picture seen;
            sitting.inSettings([&] {
                sitting.user.wait(1);
                sitting.user.then([&] { seen = shown(seat); });
            });
            toolbox::stop();
            Difference difference = between(seen, headlessSettings(there));
            EXPECT_EQ(difference.pixels, 0) << difference.first << ", depth " << depth << ", scale " << scale;
        }
}

TEST_F(InWindow, NewSizeAndDepthAreShownWhileADialogIsOpen)
{
    const Screen first = screen(640, 480, 8, 1), second = screen(800, 600, 2, 1);
    desktop::WindowSeat seat({first});
    Sitting sitting(seat, folder_ / "window");
    Picture seen;
    sitting.inSettings([&] {
        sitting.user.wait(1);
        sitting.user.then([&] { seat.setScreens({second}); });
        sitting.user.wait(30);
        sitting.user.then([&] { seen = shown(seat); });
    });
    toolbox::stop();
    Difference difference = between(seen, headlessSettings(first, {second}));
    EXPECT_EQ(difference.pixels, 0) << difference.first;
}

TEST_F(InWindow, ClipboardGoesToOtherPrograms)
{
    desktop::WindowSeat seat({screen(640, 480, 8, 1)});
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
    desktop::WindowSeat seat({screen(640, 480, 8, 1)});
    Sitting sitting(seat, folder_ / "window");
    inAnnotation(sitting, [&] {
        sitting.user.putOnClipboard("Büro Ø π");
        sitting.user.key("v", cmdKey);
        expectText(sitting, "Büro Ø π");
    });
}

// Keys by their place: what they give is the layout's.
TEST_F(InWindow, LayoutAndDeadKeysGiveTheirCharacters)
{
    setenv("LC_ALL", "C.UTF-8", 1);
    ASSERT_EQ(std::system("setxkbmap de"), 0);
    desktop::WindowSeat seat({screen(640, 480, 8, 1)});
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
