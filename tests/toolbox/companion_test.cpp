// Windows that are hidden with another, and texts that are read while they are drawn.
#include "toolbox/host/companion.h"

#include "support/toolbox_test.h"
#include "toolbox/host/drawn_text.h"

namespace {

class Companion : public ToolboxTest {
protected:
    void SetUp() override
    {
        ToolboxTest::SetUp();
        first = windowAt(50);
        second = windowAt(300);
        toolbox::setCompanion(first, second);
    }
    static WindowPtr windowAt(int16_t left)
    {
        const Rect bounds{50, left, 150, static_cast<int16_t>(left + 100)};
        return NewWindow(nullptr, &bounds, P(""), true, noGrowDocProc, nullptr, false, 0);
    }
    static bool isSeen(WindowPtr window) { return reinterpret_cast<WindowPeek>(window)->visible; }

    WindowPtr first = nullptr, second = nullptr;
};

TEST_F(Companion, IsHiddenWithItsWindowAndShownByNobody)
{
    HideWindow(first);
    EXPECT_FALSE(isSeen(second));
    ShowWindow(first);
    EXPECT_FALSE(isSeen(second));
    DisposeWindow(second);
    DisposeWindow(first);
}

TEST_F(Companion, IsHiddenWhenItsWindowCloses)
{
    DisposeWindow(first);
    EXPECT_FALSE(isSeen(second));
    DisposeWindow(second);
}

TEST_F(Companion, ThatIsClosedIsForgotten)
{
    DisposeWindow(second);
    WindowPtr other = windowAt(300);  // perhaps where the other was in memory
    HideWindow(first);
    EXPECT_TRUE(isSeen(other));
    DisposeWindow(other);
    DisposeWindow(first);
}

TEST_F(Companion, IsNotHiddenOnceThereIsNone)
{
    toolbox::setCompanion(first, nullptr);
    HideWindow(first);
    EXPECT_TRUE(isSeen(second));
    toolbox::setCompanion(nullptr, second);
    DisposeWindow(second);
    DisposeWindow(first);
}

TEST_F(Companion, TextsAreReadWithTheirPlaceEvenWhereTheyAreCovered)
{
    std::vector<std::string> read;
    toolbox::setDrawnTextProc([&](GrafPtr port, Point pen, const std::string &text) {
        read.push_back(std::string(port == first ? "first " : "other ") + std::to_string(pen.h) + "," +
                       std::to_string(pen.v) + " " + text);
    });
    SetPort(first);
    MoveTo(10, 20);
    DrawString(P("45 lpi"));
    MoveTo(-500, -20);
    DrawText("22.5", 0, 4);
    SetPort(second);
    MoveTo(1, 2);
    DrawChar('x');
    toolbox::setDrawnTextProc({});
    DrawChar('y');
    EXPECT_EQ(read, (std::vector<std::string>{"first 10,20 45 lpi", "first -500,-20 22.5", "other 1,2 x"}));
    DisposeWindow(second);
    DisposeWindow(first);
}

}  // namespace
