// Whole sessions at a real window: keys and mouse go through the window system,
// and the traces are those of the headless screen.
#include "desktop/display.h"
#include "desktop/weston.h"
#include "support/kept_sessions.h"

namespace {

class SessionsInWindow : public ::testing::TestWithParam<std::string> {
protected:
    desktop::Display display_;
};

}  // namespace

TEST_P(SessionsInWindow, LeavesItsTrace)
{
    kept::Session session("riders_in_window");
    CommandResult result = session.play(GetParam());
    ASSERT_EQ(result.err, "");
    ASSERT_EQ(result.status, 0);
    EXPECT_EQ(kept::difference(session.trace(), contentsOf(kept::traceOf(GetParam()))), "");
}

INSTANTIATE_TEST_SUITE_P(All, SessionsInWindow, ::testing::ValuesIn(kept::names()),
                         [](const auto &instance) { return instance.param; });

// The compositor's keyboard and mouse are those of the X display it stands on.
TEST(SessionsOnWayland, LeaveTheirTraces)
{
    desktop::Display display;
    for (const char *name : {"first_run", "cancelled"}) {
        desktop::Weston weston(640, 480);
        kept::Session session("riders_in_window");
        CommandResult result = session.play(name);
        ASSERT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(kept::difference(session.trace(), contentsOf(kept::traceOf(name))), "");
    }
}
