// Whole sessions: each script of examples/sessions, played, leaves the trace
// that lies beside it. RIDERS_UPDATE_TRACES=1 rewrites the traces.
#include <cstdlib>

#include "support/kept_sessions.h"

namespace fs = std::filesystem;

using kept::difference;
using kept::Session;
using kept::sessions;

namespace {

bool updating()
{
    const char *update = std::getenv("RIDERS_UPDATE_TRACES");
    return update && *update == '1';
}

class Sessions : public ::testing::TestWithParam<std::string> {};

}  // namespace

TEST_P(Sessions, LeavesItsTrace)
{
    Session session;
    CommandResult result = session.play(GetParam());
    ASSERT_EQ(result.err, "");
    ASSERT_EQ(result.status, 0);
    EXPECT_EQ(session.trace().find(session.folder()), std::string::npos) << "a path of this machine in the trace";
    const fs::path trace = kept::traceOf(GetParam());
    if (updating())
        writeFile(trace, session.trace());
    ASSERT_TRUE(fs::exists(trace)) << "no trace is kept for this session";
    EXPECT_EQ(difference(session.trace(), contentsOf(trace)), "");
}

INSTANTIATE_TEST_SUITE_P(All, Sessions, ::testing::ValuesIn(kept::names()),
                         [](const auto &instance) { return instance.param; });

TEST(SessionFiles, FilmPositiveHoldsTheDotAndTheWordsAsTyped)
{
    Session session;
    ASSERT_EQ(session.play("film_positive").err, "");
    const std::string made = session.made("Film Positive");
    EXPECT_NE(made.find("{ abs exch abs 2 copy add 3 1 roll mul add 2 div 1 exch sub }"), std::string::npos);
    EXPECT_EQ(made.find("Plain dot"), std::string::npos) << "the dot that was replaced";
    EXPECT_NE(made.find("riderReadText Seidentr\x8Ager N\xBC 7 (Caf\x8E Z\x9Frich)%"), std::string::npos);
}

TEST(SessionFiles, CommasBecomePeriods)
{
    Session session;
    ASSERT_EQ(session.play("decimal_comma").err, "");
    const std::string made = session.made("Film Positive");
    EXPECT_NE(made.find("/riderFrequency 85.5 def"), std::string::npos);
    EXPECT_NE(made.find("/riderAngle 0.5 def"), std::string::npos);
    EXPECT_NE(made.find("0.2 setflat"), std::string::npos);
    EXPECT_EQ(made.find("85,5"), std::string::npos);
}

TEST(SessionFiles, NothingHalfMadeIsLeft)
{
    Session session;
    ASSERT_EQ(session.play("file_errors").err, "");
    EXPECT_FALSE(session.has("Old film")) << "removed at the end";
    for (const std::string &name : session.names())
        EXPECT_EQ(name.find("KTTemp"), std::string::npos) << name;
}

TEST(SessionFiles, CancellingLeavesTheFilesAlone)
{
    Session session;
    ASSERT_EQ(session.play("cancelled").err, "");
    EXPECT_EQ(session.made("Old film"), contentsOf(sessions / "files" / "Old film"));
    EXPECT_FALSE(session.has("Riders"));
}

TEST(SessionTraces, BelongToASession)
{
    for (const fs::directory_entry &entry : fs::directory_iterator(sessions))
        if (entry.path().extension() == ".trace") {
            EXPECT_TRUE(fs::exists(fs::path(entry.path()).replace_extension(".play"))) << entry.path();
        }
}

TEST(SessionTraces, DifferenceNamesTheFirstLine)
{
    EXPECT_EQ(difference("a\nb\n", "a\nb\n"), "");
    EXPECT_EQ(difference("a\nb\n", "a\nc\nd\n"), "line 2\n  is:     b\n  should: c");
    EXPECT_EQ(difference("a\n", "a\nb\n"), "line 2\n  is:     (the end)\n  should: b");
}
