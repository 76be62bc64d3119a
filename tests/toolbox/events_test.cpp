#include "toolbox/events.h"

#include "events/queue.h"
#include "events/tracking.h"
#include "quickdraw/port.h"
#include "support/toolbox_test.h"
#include "toolbox/host/quit.h"

using toolbox::Input;
using Kind = Input::Kind;
namespace events = toolbox::events;

class Events : public ToolboxTest {
protected:
    void SetUp() override
    {
        ToolboxTest::SetUp();
        events::nextWindowNeedingUpdate = nullptr;
    }
    void mouse(Kind kind, int h, int v, std::uint16_t modifiers = 0)
    {
        machine.push({.kind = kind, .where = {int16_t(v), int16_t(h)}, .modifiers = modifiers});
    }
    void typed(char character, Kind kind = Kind::keyDown, std::uint16_t modifiers = 0)
    {
        const auto byte = static_cast<std::uint8_t>(character);
        machine.push({.kind = kind, .character = byte, .keyCode = 0x24, .modifiers = modifiers});
    }
    EventRecord next(std::uint32_t sleep = 0, std::int16_t mask = everyEvent)
    {
        EventRecord event{};
        WaitNextEvent(mask, &event, sleep);
        return event;
    }
    std::uintptr_t windowNumber(const WindowRecord &window) { return reinterpret_cast<std::uintptr_t>(&window); }
    WindowRecord first{}, second{};
};

TEST_F(Events, ComeAsActivatesThenInputThenRepeatsThenUpdates)
{
    WindowPtr needing = &first.port;
    events::nextWindowNeedingUpdate = [&] { return needing; };
    typed('x', Kind::autoKey);
    mouse(Kind::mouseDown, 10, 20);
    typed('a');
    events::postActivate(&first.port, false);
    events::postActivate(&second.port, true);

    EventRecord event = next();
    EXPECT_EQ(event.what, activateEvt);
    EXPECT_EQ(event.message, windowNumber(first));
    EXPECT_EQ(event.modifiers & activeFlag, 0);
    event = next();
    EXPECT_EQ(event.what, activateEvt);
    EXPECT_EQ(event.message, windowNumber(second));
    EXPECT_EQ(event.modifiers & activeFlag, activeFlag);
    EXPECT_EQ(next().what, mouseDown);
    EXPECT_EQ(next().what, keyDown);
    EXPECT_EQ(next().what, autoKey);
    event = next();
    EXPECT_EQ(event.what, updateEvt);
    EXPECT_EQ(event.message, windowNumber(first));
    EXPECT_EQ(next().what, updateEvt) << "an update comes again until the window has drawn";
    needing = nullptr;
    EXPECT_EQ(next().what, nullEvent);
}

TEST_F(Events, CarryCharacterAndKeyCode)
{
    typed('\r', Kind::keyDown, cmdKey | shiftKey);
    EventRecord event = next();
    EXPECT_EQ(event.message & charCodeMask, 0x0Du);
    EXPECT_EQ(event.message & keyCodeMask, 0x2400u);
    EXPECT_EQ(event.modifiers, cmdKey | shiftKey | btnState);
}

TEST_F(Events, SayWhereTheMouseIsAndThatTheButtonIsUpInNullEvents)
{
    mouse(Kind::mouseMoved, 33, 44, optionKey);
    EventRecord event{};
    EXPECT_FALSE(WaitNextEvent(everyEvent, &event, 7));
    EXPECT_EQ(event.what, nullEvent);
    EXPECT_EQ(event.where.h, 33);
    EXPECT_EQ(event.where.v, 44);
    EXPECT_EQ(event.modifiers, optionKey | btnState);
    EXPECT_EQ(event.when, 7u);
}

TEST_F(Events, ClearTheButtonBitWhileItIsDown)
{
    mouse(Kind::mouseDown, 5, 6);
    mouse(Kind::mouseUp, 7, 8);
    EventRecord down = next(), up = next();
    EXPECT_EQ(down.modifiers & btnState, 0);
    EXPECT_EQ(down.where.h, 5);
    EXPECT_EQ(up.what, mouseUp);
    EXPECT_EQ(up.modifiers & btnState, btnState);
    EXPECT_EQ(up.where.h, 7);
}

TEST_F(Events, OfOtherKindsStayQueued)
{
    typed('a');
    mouse(Kind::mouseDown, 1, 1);
    EXPECT_EQ(next(0, 1 << mouseDown).what, mouseDown);
    EXPECT_EQ(next().what, keyDown);
}

TEST_F(Events, AreNotMadeOfKeysGoingUp)
{
    typed('a', Kind::autoKey);
    typed('a', Kind::keyUp);
    EXPECT_EQ(next().what, nullEvent);
}

TEST_F(Events, AreLookedAtWithoutBeingTaken)
{
    typed('a');
    EventRecord event{};
    EXPECT_TRUE(EventAvail(everyEvent, &event));
    EXPECT_EQ(event.what, keyDown);
    EXPECT_TRUE(GetNextEvent(everyEvent, &event));
    EXPECT_EQ(event.what, keyDown);
    EXPECT_FALSE(EventAvail(everyEvent, &event));
}

TEST_F(Events, AreFlushedUpToTheStop)
{
    typed('a');
    mouse(Kind::mouseDown, 1, 1);
    mouse(Kind::mouseUp, 1, 1);
    typed('b');
    FlushEvents(1 << keyDown | 1 << mouseDown, 1 << mouseUp);
    EXPECT_EQ(next().what, mouseUp);
    EXPECT_EQ(next().what, keyDown);
    typed('c');
    mouse(Kind::mouseDown, 1, 1);
    FlushEvents(everyEvent, 0);
    EXPECT_EQ(next().what, nullEvent);
}

TEST_F(Events, FlushingLeavesActivatesAndWhatTheUserHasYetToDo)
{
    bool done = false;
    machine.setSource([&]() -> std::optional<Input> {
        if (std::exchange(done, true))
            return std::nullopt;
        return Input{.kind = Kind::keyDown, .character = 'z'};
    });
    events::postActivate(&first.port, true);
    FlushEvents(everyEvent, 0);
    EXPECT_EQ(next().what, activateEvt);
    EXPECT_EQ(next().what, keyDown);
}

TEST_F(Events, OfAWindowThatIsGoneAreForgotten)
{
    events::postActivate(&first.port, true);
    events::postActivate(&second.port, true);
    events::forgetWindow(&first.port);
    EXPECT_EQ(next().message, windowNumber(second));
}

TEST_F(Events, WaitingAsksTheUserOnlyAfterUpdates)
{
    bool asked = false;
    machine.setSource([&]() -> std::optional<Input> {
        asked = true;
        return std::nullopt;
    });
    events::nextWindowNeedingUpdate = [&] { return &first.port; };
    EXPECT_EQ(next(10).what, updateEvt);
    EXPECT_FALSE(asked);
    events::nextWindowNeedingUpdate = nullptr;
    EXPECT_EQ(next(10).what, nullEvent);
    EXPECT_TRUE(asked);
}

TEST_F(Events, TimeIsVirtual)
{
    uint32_t finalTicks = 0;
    Delay(3600 * 60, &finalTicks);
    EXPECT_EQ(finalTicks, 3600u * 60);
    EXPECT_EQ(TickCount(), finalTicks);
    Delay(1, nullptr);
    EXPECT_EQ(TickCount(), finalTicks + 1);
    next(600);
    EXPECT_EQ(TickCount(), finalTicks + 601);
}

TEST_F(Events, LoopsAroundGetNextEventComeToAnEnd)
{
    EventRecord event{};
    int turns = 0;
    while (TickCount() < 30)
        EXPECT_FALSE((++turns, GetNextEvent(everyEvent, &event)));
    EXPECT_EQ(turns, 30);
}

TEST_F(Events, MouseIsReturnedInThePortsCoordinates)
{
    GrafPort port{};
    toolbox::quickdraw::openPort(&port);
    toolbox::quickdraw::placePort(&port, {30, 50}, 100, 100);
    SetPort(&port);
    mouse(Kind::mouseMoved, 70, 80);
    next();
    Point where{};
    GetMouse(&where);
    EXPECT_EQ(where.h, 20);
    EXPECT_EQ(where.v, 50);
    toolbox::quickdraw::closePort(&port);
}

TEST_F(Events, ALoopOnStillDownSeesEachMoveAndEndsAtTheRelease)
{
    mouse(Kind::mouseDown, 1, 1);
    mouse(Kind::mouseMoved, 2, 1);
    mouse(Kind::mouseMoved, 3, 1);
    mouse(Kind::mouseUp, 4, 1);
    EXPECT_EQ(next().what, mouseDown);
    std::vector<int> seen;
    while (StillDown()) {
        Point where{};
        GetMouse(&where);
        seen.push_back(where.h);
    }
    EXPECT_EQ(seen, (std::vector<int>{2, 3}));
    EXPECT_FALSE(StillDown());
    EventRecord up = next();
    EXPECT_EQ(up.what, mouseUp);
    EXPECT_EQ(up.where.h, 4);
}

TEST_F(Events, ALoopOnStillDownLetsTimePassUntilTheUserLetsGo)
{
    mouse(Kind::mouseDown, 1, 1);
    machine.setSource([&]() -> std::optional<Input> {
        return machine.ticks() < 25 ? std::nullopt : std::optional<Input>({.kind = Kind::mouseUp});
    });
    next();
    while (StillDown()) {
    }
    EXPECT_EQ(TickCount(), 25u);
}

TEST_F(Events, ButtonTakesTheReleaseAndKeepsKeysTypedMeanwhile)
{
    mouse(Kind::mouseDown, 1, 1);
    typed('k');
    mouse(Kind::mouseUp, 1, 1);
    EXPECT_TRUE(Button());
    EXPECT_TRUE(Button());
    EXPECT_FALSE(Button());
    EXPECT_EQ(next().what, mouseDown);
    EXPECT_EQ(next().what, keyDown);
    EXPECT_EQ(next().what, mouseUp);
}

TEST_F(Events, TrackingTakesMouseInputAndLeavesKeys)
{
    mouse(Kind::mouseDown, 1, 1);
    next();
    mouse(Kind::mouseMoved, 2, 2);
    typed('k');
    mouse(Kind::mouseUp, 3, 3);
    EXPECT_EQ(events::nextTrackingInput()->where.h, 2);
    std::optional<Input> last = events::nextTrackingInput();
    ASSERT_TRUE(last);
    EXPECT_EQ(last->kind, Kind::mouseUp);
    EXPECT_FALSE(events::nextTrackingInput()) << "the button is up";
    EXPECT_EQ(next().what, keyDown);
    EXPECT_EQ(next().what, nullEvent) << "no event is made of tracked input";
}

TEST_F(Events, TrackingFindsAReleaseThatWasAlreadyQueued)
{
    mouse(Kind::mouseDown, 1, 1);
    next();
    mouse(Kind::mouseUp, 9, 9);
    EXPECT_FALSE(StillDown());
    std::optional<Input> release = events::nextTrackingInput();
    ASSERT_TRUE(release);
    EXPECT_EQ(release->kind, Kind::mouseUp);
    EXPECT_EQ(release->where.h, 9);
    EXPECT_EQ(next().what, nullEvent);
}

TEST_F(Events, TrackingGivesUpWhenTheButtonIsNeverReleased)
{
    mouse(Kind::mouseDown, 1, 1);
    next();
    EXPECT_FALSE(events::nextTrackingInput());
    EXPECT_EQ(TickCount(), 3600u * 60);
}

TEST_F(Events, AskingToQuitEndsTrackingAndIsRemembered)
{
    EXPECT_FALSE(toolbox::quitAsked());
    mouse(Kind::mouseDown, 1, 1);
    next();
    machine.push({.kind = Kind::quit});
    EXPECT_FALSE(events::nextTrackingInput());
    EXPECT_TRUE(toolbox::quitAsked());
    EXPECT_EQ(TickCount(), 0u);
}

TEST_F(Events, AnExceptionOfTheMachinePassesThrough)
{
    machine.setSource([]() -> std::optional<Input> { throw std::runtime_error("enough"); });
    EventRecord event{};
    EXPECT_THROW(WaitNextEvent(everyEvent, &event, 5), std::runtime_error);
}

TEST_F(Events, WhatWasDrawnIsShownBeforeTheWait)
{
    const Rect spot{200, 300, 201, 301};
    next();
    PaintRect(&spot);
    next();
    EXPECT_EQ(machine.lastPicture(0).pixels[200 * 640 + 300], 0u);
    EraseRect(&spot);
    Delay(1, nullptr);
    EXPECT_EQ(machine.lastPicture(0).pixels[200 * 640 + 300], 0xFFFFFFu);
}
