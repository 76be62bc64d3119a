// The whole machine on SDL's own drivers, without a display.
#include "desktop/desktop_machine.h"

#include <cstdlib>
#include <limits>

#include "desktop_machine/sdl_events.h"
#include "toolbox/events.h"
#include "toolbox/host/session.h"

using namespace sdl;
using namespace toolbox;
using desktop::DesktopMachine;

namespace {

class DesktopMachineTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        setenv("SDL_AUDIODRIVER", "dummy", 1);
        unsetenv("RIDERS_SCALE");
        unsetenv("GDK_SCALE");
        open({});
    }
    void open(const DesktopOptions &options)
    {
        machine.reset();
        machine = std::make_unique<DesktopMachine>(options);
        taken();
    }
    void push(SDL_Event event) { ASSERT_EQ(SDL_PushEvent(&event), 1); }
    void pushWindowEvent(SDL_WindowEventID id)
    {
        SDL_Event event{};
        event.type = SDL_WINDOWEVENT;
        event.window.event = static_cast<std::uint8_t>(id);
        push(event);
    }
    // All that has arrived.
    std::string taken()
    {
        std::string all;
        while (auto input = machine->nextInput(0))
            all += (all.empty() ? "" : " ") + described(*input);
        return all;
    }
    // The next input; waits for it, up to 100 times 60 ticks.
    std::string awaited()
    {
        for (int i = 0; i < 100; ++i)
            if (auto input = machine->nextInput(60))
                return described(*input);
        return "nothing";
    }
    SDL_Window *window()
    {
        SDL_Window *found = nullptr;
        for (std::uint32_t id = 1; id < 1000 && !found; ++id)
            found = SDL_GetWindowFromID(id);
        return found;
    }
    std::uint32_t pixelAt(int x, int y)
    {
        SDL_Surface *surface = SDL_GetWindowSurface(window());
        const auto *row = static_cast<const std::uint8_t *>(surface->pixels) + y * surface->pitch;
        return reinterpret_cast<const std::uint32_t *>(row)[x] & 0xFFFFFF;
    }

    std::unique_ptr<DesktopMachine> machine;
};

Picture filled(int width, int height, std::uint32_t value)
{
    return {width, height, std::vector<std::uint32_t>(std::size_t(width) * height, value)};
}

TEST_F(DesktopMachineTest, OneDisplayOfTheSizeAskedFor)
{
    open({.width = 640, .height = 480, .depth = 8});
    const auto displays = machine->displays();
    ASSERT_EQ(displays.size(), 1u);
    EXPECT_EQ(displays[0].bounds.right, 640);
    EXPECT_EQ(displays[0].bounds.bottom, 480);
    EXPECT_EQ(displays[0].depth, 8);
    EXPECT_EQ(displays[0].scale, 1);
}

TEST_F(DesktopMachineTest, ScaleDividesTheWindowAndTheMouse)
{
    open({.width = 512, .height = 350, .scale = 2});
    EXPECT_EQ(machine->displays()[0].scale, 2);
    EXPECT_EQ(machine->displays()[0].bounds.right, 512);
    EXPECT_EQ(desktop::pixelsOf(window()).x, 1024);
    push(move(401, 301));
    EXPECT_EQ(taken(), "move(200,150)");
}

TEST_F(DesktopMachineTest, EnvironmentNamesTheScale)
{
    setenv("RIDERS_SCALE", "2", 1);
    open({.width = 512, .height = 350});
    unsetenv("RIDERS_SCALE");
    EXPECT_EQ(machine->displays()[0].scale, 2);
    EXPECT_EQ(machine->displays()[0].bounds.right, 512);
}

TEST_F(DesktopMachineTest, NoWindowIsSmallerThanTheSmallestDisplay)
{
    open({.width = 100, .height = 100});
    EXPECT_EQ(machine->displays()[0].bounds.right, 512);
    EXPECT_EQ(machine->displays()[0].bounds.bottom, 342);
    SDL_SetWindowSize(window(), 300, 500);
    EXPECT_EQ(awaited(), "displays");
    EXPECT_EQ(machine->displays()[0].bounds.right, 512);
    EXPECT_EQ(machine->displays()[0].bounds.bottom, 500);
}

TEST_F(DesktopMachineTest, InputComesInOrder)
{
    push(move(1, 2));
    push(button(SDL_MOUSEBUTTONDOWN, 1, 2));
    push(pressed(SDL_SCANCODE_A, SDLK_a));
    push(text("a"));
    push(button(SDL_MOUSEBUTTONUP, 3, 4));
    EXPECT_TRUE(machine->inputWaiting());
    EXPECT_EQ(taken(), "move(1,2) press(1,2) down:a/00 release(3,4)");
    EXPECT_FALSE(machine->inputWaiting());
}

TEST_F(DesktopMachineTest, InputIsKeptWhileTimePasses)
{
    push(pressed(SDL_SCANCODE_RETURN, SDLK_RETURN));
    const std::uint32_t before = machine->ticks();
    machine->passTicks(2);
    EXPECT_GE(machine->ticks(), before + 2);
    EXPECT_EQ(taken(), "down:#0d/24");
}

TEST_F(DesktopMachineTest, WaitingLetsItsTicksPass)
{
    const std::uint32_t before = machine->ticks();
    EXPECT_FALSE(machine->nextInput(2).has_value());
    EXPECT_GE(machine->ticks(), before + 2);
}

TEST_F(DesktopMachineTest, LosingTheKeyboardLetsTheButtonGo)
{
    push(button(SDL_MOUSEBUTTONDOWN, 5, 6));
    pushWindowEvent(SDL_WINDOWEVENT_FOCUS_LOST);
    push(button(SDL_MOUSEBUTTONUP, 7, 8));
    EXPECT_EQ(taken(), "press(5,6) release(5,6)");
}

TEST_F(DesktopMachineTest, MiddleButtonIsTheButtonWithOption)
{
    push(button(SDL_MOUSEBUTTONDOWN, 3, 4, SDL_BUTTON_MIDDLE));
    push(button(SDL_MOUSEBUTTONUP, 3, 4, SDL_BUTTON_MIDDLE));
    EXPECT_EQ(taken(), "press(3,4)+o release(3,4)+o");
}

TEST_F(DesktopMachineTest, DroppedFileIsAnInput)
{
    SDL_Event event{};
    event.type = SDL_DROPFILE;
    event.drop.file = SDL_strdup("/home/me/job.ps");
    push(event);
    const auto input = machine->nextInput(0);
    ASSERT_TRUE(input);
    EXPECT_EQ(input->kind, Input::Kind::fileDropped);
    EXPECT_EQ(input->path, "/home/me/job.ps");
}

TEST_F(DesktopMachineTest, QuitIsAnInput)
{
    SDL_Event quit{};
    quit.type = SDL_QUIT;
    push(quit);
    push(quit);
    EXPECT_EQ(taken(), "quit");
}

TEST_F(DesktopMachineTest, SeveralSizesGiveOneNewDisplay)
{
    for (int width = 700; width <= 720; width += 10)
        SDL_SetWindowSize(window(), width, 500);
    EXPECT_EQ(awaited(), "displays");
    EXPECT_EQ(machine->displays()[0].bounds.right, 720);
    EXPECT_EQ(machine->displays()[0].bounds.bottom, 500);
    EXPECT_EQ(taken(), "");
}

TEST_F(DesktopMachineTest, FullScreenKeysGoNoFurther)
{
    for (auto [place, key, modifiers] : {std::tuple(SDL_SCANCODE_F11, SDLK_F11, 0),
                                         std::tuple(SDL_SCANCODE_RETURN, SDLK_RETURN, int(KMOD_LALT)),
                                         std::tuple(SDL_SCANCODE_RETURN, SDLK_RETURN, int(KMOD_LGUI))}) {
        const bool before = machine->fullScreen();
        push(pressed(place, key, modifiers));
        push(pressed(place, key, modifiers, true));
        push(released(place, key, modifiers));
        EXPECT_FALSE(machine->nextInput(0).has_value());
        EXPECT_NE(machine->fullScreen(), before);
    }
}

TEST_F(DesktopMachineTest, DepthIsAnnouncedWhenItChanges)
{
    machine->setDepth(32);
    EXPECT_EQ(taken(), "");
    machine->setDepth(4);
    EXPECT_EQ(taken(), "displays");
    EXPECT_EQ(machine->displays()[0].depth, 4);
    EXPECT_THROW(machine->setDepth(16), std::invalid_argument);
}

TEST_F(DesktopMachineTest, PicturesAreSeenPartByPart)
{
    Picture picture = filled(800, 600, 0x112233);
    machine->present(0, picture, {0, 0, 600, 800});
    machine->passTicks(1);
    EXPECT_EQ(pixelAt(0, 0), 0x112233u);
    EXPECT_EQ(pixelAt(799, 599), 0x112233u);
    picture = filled(800, 600, 0x445566);
    machine->present(0, picture, {10, 20, 30, 40});
    machine->passTicks(1);
    EXPECT_EQ(pixelAt(20, 10), 0x445566u);
    EXPECT_EQ(pixelAt(39, 29), 0x445566u);
    EXPECT_EQ(pixelAt(19, 10), 0x112233u);
    EXPECT_EQ(pixelAt(40, 29), 0x112233u);
    EXPECT_EQ(pixelAt(20, 30), 0x112233u);
}

TEST_F(DesktopMachineTest, PictureOfAnotherSizeThanTheWindowIsShownWithWhite)
{
    machine->present(0, filled(600, 700, 0x112233), {0, 0, 700, 600});
    machine->passTicks(1);
    EXPECT_EQ(pixelAt(599, 599), 0x112233u);
    EXPECT_EQ(pixelAt(600, 0), 0xFFFFFFu);
}

TEST_F(DesktopMachineTest, PictureIsThereAgainAfterTheWindowGrew)
{
    machine->present(0, filled(800, 600, 0x112233), {0, 0, 600, 800});
    SDL_SetWindowSize(window(), 900, 650);
    EXPECT_EQ(awaited(), "displays");
    EXPECT_EQ(pixelAt(799, 599), 0x112233u);
    EXPECT_EQ(pixelAt(899, 649), 0xFFFFFFu);
}

TEST_F(DesktopMachineTest, ClipboardSerialChangesForOthersOnly)
{
    machine->setClipboardText("mine");
    const std::uint32_t serial = machine->clipboardSerial();
    EXPECT_EQ(machine->clipboardText(), "mine");
    EXPECT_EQ(machine->clipboardSerial(), serial);
    SDL_SetClipboardText("another's");
    EXPECT_NE(machine->clipboardSerial(), serial);
    EXPECT_EQ(machine->clipboardText(), "another's");
    machine->setClipboardText("");
    EXPECT_EQ(machine->clipboardText(), "");
}

TEST_F(DesktopMachineTest, ClipboardNewsComesOnceAndOnlyFromOthers)
{
    SDL_Event update{};
    update.type = SDL_CLIPBOARDUPDATE;
    machine->setClipboardText("mine");
    taken();
    push(update);
    EXPECT_EQ(taken(), "");
    SDL_SetClipboardText("another's");
    push(update);
    EXPECT_EQ(taken(), "clipboard");
    push(update);
    EXPECT_EQ(taken(), "");
}

TEST(ClipboardTextTest, LineEndsAndLengthAreTheToolboxs)
{
    EXPECT_EQ(desktop::tidied("a\r\nb\rc\nd\r"), "a\nb\nc\nd\n");
    EXPECT_EQ(desktop::tidied(""), "");
    EXPECT_EQ(desktop::tidied("\xff\xfe\r\n"), "\xff\xfe\n");
    std::string tooLong((1 << 20) - 1, 'x');
    EXPECT_EQ(desktop::tidied(tooLong + "é" + tooLong), tooLong);
    EXPECT_LE(desktop::tidied(std::string(5 << 20, '\x80')).size(), std::size_t(1 << 20));
}

TEST_F(DesktopMachineTest, CursorShapesAndBeepsDoNoHarm)
{
    for (auto shape : {Machine::CursorShape::text, Machine::CursorShape::busy, Machine::CursorShape::arrow})
        machine->setCursor(shape);
    machine->beep();
    machine->beep();
    machine->setTitle("Ünïcode");
    EXPECT_STREQ(SDL_GetWindowTitle(window()), "Ünïcode");
}

TEST_F(DesktopMachineTest, SoundTakesItsTime)
{
    const std::uint32_t before = machine->ticks();
    machine->playSound(std::vector<std::uint8_t>(1100, 0x80), 11000);
    EXPECT_GE(machine->ticks(), before + 5);
}

TEST_F(DesktopMachineTest, QuitEndsALongSound)
{
    SDL_Event quit{};
    quit.type = SDL_QUIT;
    push(quit);
    machine->playSound(std::vector<std::uint8_t>(1 << 20, 0x80), 1000);
    EXPECT_EQ(taken(), "quit");
}

TEST_F(DesktopMachineTest, SoundsThatCannotBePlayedAreSilent)
{
    machine->playSound({}, 11025);
    for (double rate : {0.0, -1.0, 1e-9, 1e12, std::numeric_limits<double>::quiet_NaN()})
        machine->playSound(std::vector<std::uint8_t>(1 << 20, 0x80), rate);
    setenv("SDL_AUDIODRIVER", "there is none", 1);
    desktop::Sound sound;
    EXPECT_FALSE(sound.start(std::vector<std::uint8_t>(100, 0x80), 11025).has_value());
    sound.startBeep();
    EXPECT_FALSE(sound.restsAt().has_value());
}

TEST_F(DesktopMachineTest, TheToolboxRunsOnIt)
{
    start({}, *machine);
    push(pressed(SDL_SCANCODE_RETURN, SDLK_RETURN));
    EventRecord event;
    EXPECT_TRUE(WaitNextEvent(1 << ::keyDown, &event, 60));
    EXPECT_EQ(event.message & charCodeMask, 0x0Du);
    machine->passTicks(1);
    EXPECT_EQ(pixelAt(400, 5), 0xFFFFFFu);    // the menu bar
    EXPECT_EQ(pixelAt(400, 19), 0u);          // and its line
    stop();
}

TEST(OpenDesktopTest, OptionsOutOfRangeAreRefused)
{
    EXPECT_THROW(openDesktop({.depth = 16}), std::invalid_argument);
    EXPECT_THROW(openDesktop({.scale = 4}), std::invalid_argument);
    EXPECT_THROW(openDesktop({.width = 0}), std::invalid_argument);
}

TEST(OpenDesktopTest, NoDisplayIsSaidInOneLine)
{
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER"})
        unsetenv(name);
    try {
        openDesktop();
        FAIL() << "a window without a display";
    } catch (const DesktopError &error) {
        EXPECT_STREQ(error.what(), "no display: neither DISPLAY nor WAYLAND_DISPLAY is set");
    }
}

TEST(OpenDesktopTest, DisplayThatDoesNotRespondIsNamed)
{
    setenv("SDL_VIDEODRIVER", "there is none", 1);
    try {
        DesktopMachine machine({});
        FAIL() << "a window without a display";
    } catch (const DesktopError &error) {
        EXPECT_NE(std::string(error.what()).find("SDL_VIDEODRIVER=there is none"), std::string::npos) << error.what();
    }
}

}  // namespace
