// Whole sessions at a real window: keys and mouse go through the window system,
// and the traces are those of the headless display.
#include "desktop/display.h"
#include "desktop/weston.h"
#include "support/kept_sessions.h"

namespace {

class SessionsInWindow : public ::testing::TestWithParam<std::string> {
protected:
    desktop::DisplayServer display_;
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

// The intro, the credits scrolling by after a press of the right button, the
// fall: as on the headless display, in real time.
TEST(AboutInWindow, LeavesTheTraceOfTheHeadlessDisplay)
{
    desktop::DisplayServer display;
    TemporaryFolder folder;
    auto played = [&](const char *program) {
        const std::string trace = folder / program;
        CommandResult result = runProgram({std::string(RIDERS_BINARY_DIR "/") + program, "play",
                                           RIDERS_SOURCE_DIR "/examples/about.play", "--preferences",
                                           folder / ("preferences of " + std::string(program)), "--pictures",
                                           folder / ("pictures of " + std::string(program)), "--trace", trace});
        EXPECT_EQ(result.status, 0) << result.err;
        return contentsOf(trace);
    };
    EXPECT_EQ(kept::difference(played("riders_in_window"), played("riders")), "");
    for (const char *film : {"about-intro.png", "about-fall.png"})
        EXPECT_TRUE(contentsOf(folder / "pictures of riders_in_window" / film) ==
                    contentsOf(folder / "pictures of riders" / film))
            << film << ": not the same steps were shown";
}

TEST(AboutInWindow, NeedsNoSoundCard)
{
    desktop::DisplayServer display;
    setenv("SDL_AUDIODRIVER", "none that there is", 1);
    TemporaryFolder folder;
    writeFile(folder / "about.play", "about\nwait 60\nkey return\n");
    CommandResult result = runProgram({RIDERS_BINARY_DIR "/riders_in_window", "play", folder / "about.play",
                                       "--preferences", folder / "preferences", "--trace", folder / "trace"});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(contentsOf(folder / "trace").find("dialog 16200 closed"), std::string::npos);
}

// The compositor's keyboard and mouse are those of the X display it runs on.
TEST(SessionsOnWayland, LeaveTheirTraces)
{
    desktop::DisplayServer display;
    for (const char *name : {"first_run", "cancelled"}) {
        desktop::Weston weston(640, 480);
        kept::Session session("riders_in_window");
        CommandResult result = session.play(name);
        ASSERT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(kept::difference(session.trace(), contentsOf(kept::traceOf(name))), "");
    }
}
