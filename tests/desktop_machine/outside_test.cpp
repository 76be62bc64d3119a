// What leaves the machine: sound as SDL's driver for files takes it down, frames as its driver without a display
// keeps them.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "desktop/desktop_machine.h"
#include "desktop_machine/sdl_events.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

using toolbox::desktop::DesktopMachine;
using toolbox::desktop::Sound;
using Samples = std::vector<std::uint8_t>;

class Outside : public ::testing::Test {
protected:
    void SetUp() override
    {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", (folder / "sound").c_str(), 1);
    }
    void TearDown() override
    {
        setenv("SDL_AUDIODRIVER", "dummy", 1);
        unsetenv("SDL_DISKAUDIOFILE");
    }

    // What was played, without the silence around it.
    Samples played() const
    {
        const std::string all = contentsOf(folder / "sound");
        Samples samples(all.begin(), all.end());
        const auto loud = [](std::uint8_t sample) { return sample != 0x80; };
        samples.erase(std::find_if(samples.rbegin(), samples.rend(), loud).base(), samples.end());
        samples.erase(samples.begin(), std::find_if(samples.begin(), samples.end(), loud));
        return samples;
    }

    TemporaryFolder folder;
};

// The farthest from silence in a part of the samples.
int loudness(const Samples &samples, double from, double to)
{
    int most = 0;
    const auto count = static_cast<double>(samples.size());
    for (auto i = static_cast<std::size_t>(count * from); i < static_cast<std::size_t>(count * to); ++i)
        most = std::max(most, std::abs(samples[i] - 0x80));
    return most;
}

TEST_F(Outside, ABeepSwellsAndFades)
{
    {
        Sound sound;
        sound.startBeep();
        std::this_thread::sleep_until(*sound.restsAt() - std::chrono::milliseconds(700));
    }
    const Samples beep = played();
    EXPECT_NEAR(static_cast<double>(beep.size()), 0.15 * 22050, 60);
    EXPECT_EQ(loudness(beep, 0.4, 0.6), 24);
    EXPECT_LE(loudness(beep, 0, 0.05), 5);
    EXPECT_LE(loudness(beep, 0.95, 1), 5);
    EXPECT_NEAR(loudness(beep, 0.24, 0.26), 17, 1);
    int waves = 0;
    for (std::size_t i = 1; i < beep.size(); ++i)
        waves += beep[i - 1] < 0x80 && beep[i] >= 0x80;
    EXPECT_NEAR(waves, 0.15 * 660, 3);
}

TEST_F(Outside, TheCardRestsASecondAfterTheSound)
{
    Sound sound;
    EXPECT_FALSE(sound.restsAt());
    const auto over = sound.start(Samples(2205, 0x90), 22050);
    ASSERT_TRUE(over && sound.restsAt());
    EXPECT_EQ(*sound.restsAt() - *over, std::chrono::seconds(1));
    sound.rest();
    EXPECT_FALSE(sound.restsAt());
}

TEST_F(Outside, QuittingSilencesALongSound)
{
    auto machine = std::make_unique<DesktopMachine>(toolbox::DesktopOptions{});
    SDL_Event quit{};
    quit.type = SDL_QUIT;
    ASSERT_EQ(SDL_PushEvent(&quit), 1);
    machine->playSound(Samples(1 << 20, 0xF0), 22050);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    machine.reset();
    const std::string all = contentsOf(folder / "sound");
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(static_cast<std::uint8_t>(all.back()), 0x80);
}

TEST_F(Outside, AChangedPartIsShownAndNothingBesideTheWindow)
{
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    setenv("SDL_VIDEO_DUMMY_SAVE_FRAMES", "1", 1);
    const auto frames = [&] {
        return std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator());
    };
    {
        DesktopMachine machine({});
        const toolbox::Picture picture{800, 600, std::vector<std::uint32_t>(std::size_t{800} * 600, 0x112233)};
        machine.present(0, picture, {0, 0, 600, 800});
        machine.passTicks(1);
        const auto shown = frames();
        EXPECT_GT(shown, 0);
        machine.present(0, picture, {10, 20, 30, 40});
        machine.passTicks(1);
        EXPECT_EQ(frames(), shown + 1);
    }
    unsetenv("SDL_VIDEO_DUMMY_SAVE_FRAMES");
    fs::current_path(before);
}

TEST_F(Outside, NothingOfTheVideoStaysOpen)
{
    {
        const DesktopMachine machine({});
        EXPECT_NE(SDL_WasInit(SDL_INIT_VIDEO), 0U);
    }
    EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0U);
}

}  // namespace
