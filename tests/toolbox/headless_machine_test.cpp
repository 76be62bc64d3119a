#include "toolbox/host/headless.h"

#include <gtest/gtest.h>

using toolbox::HeadlessMachine;
using toolbox::Input;
using Kind = Input::Kind;

TEST(HeadlessMachine, StandsStillUntilTimeIsPassed)
{
    HeadlessMachine machine;
    EXPECT_EQ(machine.ticks(), 0u);
    machine.passTicks(90);
    EXPECT_EQ(machine.ticks(), 90u);
    EXPECT_FALSE(machine.nextInput(30));
    EXPECT_EQ(machine.ticks(), 120u);
}

TEST(HeadlessMachine, GivesWhatWasPushedInOrderWithoutWaiting)
{
    HeadlessMachine machine;
    machine.push({.kind = Kind::keyDown, .character = 'a'});
    machine.push({.kind = Kind::keyDown, .character = 'b'});
    EXPECT_TRUE(machine.inputWaiting());
    EXPECT_EQ(machine.nextInput(100)->character, 'a');
    EXPECT_EQ(machine.nextInput(100)->character, 'b');
    EXPECT_FALSE(machine.inputWaiting());
    EXPECT_EQ(machine.ticks(), 0u);
}

TEST(HeadlessMachine, AsksItsSourceOnlyWhenWaitedFor)
{
    HeadlessMachine machine;
    int asked = 0;
    machine.setSource([&]() -> std::optional<Input> {
        ++asked;
        return asked == 1 ? std::optional<Input>({.kind = Kind::quit}) : std::nullopt;
    });
    machine.push({.kind = Kind::mouseMoved});
    EXPECT_TRUE(machine.inputWaiting());
    EXPECT_EQ(machine.nextInput(5)->kind, Kind::mouseMoved);
    EXPECT_FALSE(machine.inputWaiting());
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(machine.nextInput(5)->kind, Kind::quit);
    EXPECT_FALSE(machine.nextInput(5));
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(machine.ticks(), 5u);
}

TEST(HeadlessMachine, LetsItsSourceEndTheSession)
{
    HeadlessMachine machine;
    machine.setSource([]() -> std::optional<Input> { throw std::runtime_error("enough"); });
    EXPECT_THROW(machine.nextInput(1), std::runtime_error);
}

TEST(HeadlessMachine, AnnouncesChangedDisplays)
{
    HeadlessMachine machine;
    machine.setDisplays({{{0, 0, 100, 200}, 1}, {{0, 200, 100, 400}, 32}});
    EXPECT_EQ(machine.displays().size(), 2u);
    EXPECT_EQ(machine.nextInput(0)->kind, Kind::displaysChanged);
    EXPECT_EQ(machine.lastPicture(1).width, 0);
    EXPECT_THROW(machine.setDisplays({}), std::invalid_argument);
    EXPECT_THROW(machine.lastPicture(2), std::out_of_range);
}

TEST(HeadlessMachine, ChangesTheClipboardSerialOnlyForOtherPrograms)
{
    HeadlessMachine machine;
    machine.setClipboardText("mine");
    EXPECT_EQ(machine.clipboardSerial(), 0u);
    machine.putOnClipboard("yours");
    EXPECT_EQ(machine.clipboardSerial(), 1u);
    EXPECT_EQ(machine.clipboardText(), "yours");
}

TEST(HeadlessMachine, PlaysSoundsInVirtualTime)
{
    HeadlessMachine machine;
    machine.beep();
    machine.playSound(std::vector<std::uint8_t>(22050), 11025);
    EXPECT_EQ(machine.beeps(), 1);
    EXPECT_EQ(machine.soundsPlayed(), 1);
    EXPECT_EQ(machine.ticks(), 120u);
}
