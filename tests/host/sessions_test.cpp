// Whole sessions: each script of examples/sessions, played, leaves the trace
// that lies beside it. RIDERS_UPDATE_TRACES=1 rewrites the traces.
#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "support/command.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace
{

const fs::path sessions = fs::path(RIDERS_SOURCE_DIR) / "examples" / "sessions";

// The words behind "# options:" in the first line.
std::vector<std::string> optionsOf(const fs::path &script)
{
    std::istringstream in(contentsOf(script));
    std::string line;
    std::getline(in, line);
    const std::string mark = "# options:";
    std::vector<std::string> words;
    if (line.rfind(mark, 0) != 0)
        return words;
    std::istringstream rest(line.substr(mark.size()));
    for (std::string word; rest >> word;)
        words.push_back(word);
    return words;
}

// Played in a folder that holds nothing but a copy of examples/sessions/files.
class Session
{
public:
    CommandResult play(const std::string &name)
    {
        fs::path script = sessions / (name + ".play");
        fs::remove_all(work_ / "there");
        fs::copy(sessions / "files", work_ / "there", fs::copy_options::recursive);
        std::vector<std::string> arguments = {"play",    script,          "--preferences", work_ / "preferences",
                                              "--trace", work_ / "trace", "--pictures",    work_ / "pictures"};
        for (const std::string &option : optionsOf(script))
            arguments.push_back(option);
        return runRiders(arguments, {}, work_ / "there");
    }
    std::string trace() const { return contentsOf(work_ / "trace"); }
    std::string made(const std::string &name) const { return contentsOf(work_ / "there" / name); }
    bool has(const std::string &name) const { return fs::exists(work_ / "there" / name); }
    std::vector<std::string> names() const
    {
        std::vector<std::string> all;
        for (const fs::directory_entry &entry : fs::directory_iterator(work_ / "there"))
            all.push_back(entry.path().filename());
        return all;
    }
    std::string folder() const { return work_.path(); }

private:
    TemporaryFolder work_;
};

// Where the two part, in words; empty when they do not.
std::string difference(const std::string &is, const std::string &should)
{
    std::istringstream isLines(is), shouldLines(should);
    for (int number = 1;; ++number) {
        std::string isLine, shouldLine;
        bool more = static_cast<bool>(std::getline(isLines, isLine));
        bool moreWanted = static_cast<bool>(std::getline(shouldLines, shouldLine));
        if (!more && !moreWanted)
            return {};
        if (more != moreWanted || isLine != shouldLine)
            return "line " + std::to_string(number) + "\n  is:     " + (more ? isLine : "(the end)") +
                   "\n  should: " + (moreWanted ? shouldLine : "(the end)");
    }
}

bool updating()
{
    const char *update = std::getenv("RIDERS_UPDATE_TRACES");
    return update && *update == '1';
}

std::vector<std::string> names()
{
    std::vector<std::string> all;
    for (const fs::directory_entry &entry : fs::directory_iterator(sessions))
        if (entry.path().extension() == ".play")
            all.push_back(entry.path().stem());
    std::sort(all.begin(), all.end());
    return all;
}

class Sessions : public ::testing::TestWithParam<std::string>
{
};

} // namespace

TEST_P(Sessions, LeavesItsTrace)
{
    Session session;
    CommandResult result = session.play(GetParam());
    ASSERT_EQ(result.err, "");
    ASSERT_EQ(result.status, 0);
    EXPECT_EQ(session.trace().find(session.folder()), std::string::npos) << "a path of this machine in the trace";
    fs::path kept = sessions / (GetParam() + ".trace");
    if (updating())
        writeFile(kept, session.trace());
    ASSERT_TRUE(fs::exists(kept)) << "no trace is kept for this session";
    EXPECT_EQ(difference(session.trace(), contentsOf(kept)), "");
}

INSTANTIATE_TEST_SUITE_P(All, Sessions, ::testing::ValuesIn(names()),
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
