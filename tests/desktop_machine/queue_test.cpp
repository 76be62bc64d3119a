// The queue of inputs, and the mouse that fills it.
#include "desktop/input_queue.h"
#include "desktop/mouse.h"
#include "desktop_machine/sdl_events.h"
#include "toolbox/events.h"

using namespace sdl;
using toolbox::Input;
using toolbox::desktop::InputQueue;
using toolbox::desktop::Mouse;

namespace {

TEST(InputQueueTest, MovesThatFollowEachOtherBecomeOne)
{
    InputQueue queue;
    Mouse mouse(queue);
    for (int x = 1; x <= 50; ++x)
        mouse.take(move(x, 7), 0);
    mouse.take(button(SDL_MOUSEBUTTONDOWN, 50, 7), 0);
    mouse.take(move(51, 8), 0);
    mouse.take(move(52, 9), 0);
    mouse.take(button(SDL_MOUSEBUTTONUP, 52, 9), 0);
    EXPECT_EQ(described(queue), "move(50,7) press(50,7) move(52,9) release(52,9)");
}

TEST(InputQueueTest, MovesWithOtherModifiersStayApart)
{
    InputQueue queue;
    Mouse mouse(queue);
    mouse.take(move(1, 1), 0);
    mouse.take(move(2, 2), shiftKey);
    EXPECT_EQ(described(queue), "move(1,1) move(2,2)+s");
}

TEST(InputQueueTest, NewsIsQueuedOnceUntilItIsTaken)
{
    InputQueue queue;
    for (int i = 0; i < 2; ++i)
        for (auto kind : {Input::Kind::displaysChanged, Input::Kind::clipboardChanged, Input::Kind::quit})
            queue.push({.kind = kind});
    EXPECT_TRUE(queue.holds(Input::Kind::quit));
    EXPECT_EQ(described(queue), "displays clipboard quit");
    EXPECT_FALSE(queue.holds(Input::Kind::quit));
    queue.push({.kind = Input::Kind::quit});
    EXPECT_EQ(described(queue), "quit");
}

TEST(InputQueueTest, KeysAreNeverLost)
{
    InputQueue queue;
    for (char character : {'a', 'a', 'b'})
        queue.push({.kind = Input::Kind::keyDown, .character = static_cast<std::uint8_t>(character)});
    EXPECT_EQ(described(queue), "down:a/00 down:a/00 down:b/00");
    EXPECT_TRUE(queue.empty());
}

TEST(MouseTest, PositionsAreQuickDrawsPixels)
{
    InputQueue queue;
    Mouse mouse(queue);
    mouse.setRatio(0.5);   // scale 2 on a display without points of its own
    mouse.take(button(SDL_MOUSEBUTTONDOWN, 101, 7), cmdKey);
    EXPECT_EQ(described(queue), "press(50,3)+c");
    mouse.setRatio(2.0 / 3);   // two pixels per point, shown at scale 3
    mouse.take(move(100, 50), 0);
    EXPECT_EQ(described(queue), "move(66,33)");
}

TEST(MouseTest, DragsGoOnOutsideTheWindow)
{
    InputQueue queue;
    Mouse mouse(queue);
    mouse.setRatio(0.5);
    mouse.take(button(SDL_MOUSEBUTTONDOWN, 10, 10), 0);
    mouse.take(move(-1, -3), 0);
    mouse.take(button(SDL_MOUSEBUTTONUP, 100000, -100000), 0);
    EXPECT_EQ(described(queue), "press(5,5) move(-1,-2) release(32767,-32768)");
}

TEST(MouseTest, RightButtonIsTheOneWithControl)
{
    InputQueue queue;
    Mouse mouse(queue);
    mouse.take(button(SDL_MOUSEBUTTONDOWN, 1, 2, SDL_BUTTON_RIGHT), shiftKey);
    mouse.take(button(SDL_MOUSEBUTTONDOWN, 3, 4), 0);
    mouse.take(button(SDL_MOUSEBUTTONUP, 3, 4), 0);
    mouse.take(button(SDL_MOUSEBUTTONUP, 5, 6, SDL_BUTTON_RIGHT), 0);
    EXPECT_EQ(described(queue), "press(1,2)+s^ release(5,6)+^");
}

TEST(MouseTest, OtherButtonsAndStrayReleasesAreNothing)
{
    InputQueue queue;
    Mouse mouse(queue);
    mouse.take(button(SDL_MOUSEBUTTONDOWN, 1, 1, SDL_BUTTON_X1), 0);
    mouse.take(button(SDL_MOUSEBUTTONUP, 1, 1, SDL_BUTTON_X1), 0);
    mouse.take(button(SDL_MOUSEBUTTONUP, 1, 1), 0);
    EXPECT_EQ(described(queue), "");
}

TEST(MouseTest, ReleasedButtonIsUpUntilItIsPressedAgain)
{
    InputQueue queue;
    Mouse mouse(queue);
    mouse.take(button(SDL_MOUSEBUTTONDOWN, 3, 4), 0);
    mouse.release(0);
    mouse.release(0);
    mouse.take(button(SDL_MOUSEBUTTONUP, 9, 9), 0);
    mouse.take(button(SDL_MOUSEBUTTONDOWN, 5, 6), 0);
    EXPECT_EQ(described(queue), "press(3,4) release(3,4) press(5,6)");
}

}  // namespace
