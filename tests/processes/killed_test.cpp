// Each command, killed at its changes to files: it leaves the old or the new, and the next run works and clears
// up.
#include <unistd.h>

#include <cstdio>
#include <random>
#include <set>

#include "processes/commands.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

class Killed : public ::testing::TestWithParam<ChangingCommand> {
protected:
    void SetUp() override
    {
        folder.reset(command);
        old = states();
        known = setOf(folder.names());
        const FollowedRun whole = follow({folder.program(command), command.ofChildren});
        ASSERT_EQ(whole.status, 0);
        changes = static_cast<int>(whole.changes.size());
        now = states();
        ASSERT_EQ(runNext(), "");
        afterNext = states();
        known.merge(setOf(folder.names()));
    }

    // What went wrong; "" for nothing.
    std::string runNext() const
    {
        if (command.instead && command.next.empty())
            return follow({folder.program(command)}).status == 0 ? "" : "it fails";
        const CommandResult result = folder.run(command.next.empty() ? command.words : command.next);
        return result.status == 0 ? result.err : "it fails: " + result.err;
    }
    std::vector<std::string> states() const
    {
        std::vector<std::string> list;
        for (const std::string &part : command.parts)
            list.push_back(folder.state(part));
        return list;
    }

    static std::set<std::string> setOf(const std::vector<std::string> &names)
    {
        return {names.begin(), names.end()};
    }

    // At which changes to kill it: a few, or all.
    std::set<int> chosen() const
    {
        const auto all = static_cast<unsigned>(changes),
                   wanted = getenv("RIDERS_EVERY_KILL") ? all : std::min(all, 2u);
        std::mt19937 random(all);
        std::set<int> numbers;
        for (unsigned next = random(); numbers.size() < wanted; next = wanted == all ? next + 1 : random())
            numbers.insert(static_cast<int>(next % all) + 1);
        return numbers;
    }

    // Programs of other tests make folders there, too, and any of them may be busy with removing it.
    static bool staysThere(const fs::path &path)
    {
        for (int tries = 0; tries < 500 && fs::exists(path); ++tries)
            usleep(10000);
        return fs::exists(path);
    }

    // False when it ended before that.
    bool killAt(int number)
    {
        folder.reset(command);
        const FollowedRun run = follow({folder.program(command), command.ofChildren, number});
        if (!run.killed)
            return false;
        const std::string at = "killed at change " + std::to_string(number) + ", " + run.changes.back().call +
                               " " + run.changes.back().path.string() + ": ";
        const std::vector<std::string> left = states();
        for (std::size_t i = 0; i < left.size(); ++i)
            if (left[i] != old[i] && left[i] != now[i])
                failures.push_back(at + command.parts[i] + " is neither old nor new");
        if (const std::string wrong = runNext(); !wrong.empty())
            failures.push_back(at + "of the next run, " + wrong);
        else if (states() != afterNext)
            failures.push_back(at + "the next run's outcome is another");
        for (const std::string &name : folder.names())
            if (!known.contains(name))
                failures.push_back(at + "the next run leaves " + name);
        for (const FileChange &change : run.changes)
            if (change.call == "mkdir" && change.path.native().starts_with("/dev/shm/") && staysThere(change.path))
                failures.push_back(at + "the next run leaves " + change.path.string());
        return true;
    }

    TemporaryFolder place;
    CommandsFolder folder = CommandsFolder(place / "folder");
    ChangingCommand command = GetParam();
    int changes = 0;
    std::vector<std::string> old, now, afterNext, failures;
    std::set<std::string> known;  // names that are there in any case
};

std::string nameOf(const ::testing::TestParamInfo<ChangingCommand> &info)
{
    return info.param.name;
}

}  // namespace

// At a few changes, the same each time; with RIDERS_EVERY_KILL in the environment at every one, until there are no
// more.
TEST_P(Killed, LeavesOldOrNewAndNoHarmForTheNext)
{
    EXPECT_NE(old, now);
    int kills = 0;
    for (const int number : chosen())
        kills += killAt(number);
    if (getenv("RIDERS_EVERY_KILL"))
        while (killAt(kills + 1))
            ++kills;
    std::printf("%s: %d changes, killed at %d, %zu failures\n", command.name.c_str(), changes, kills,
                failures.size());
    EXPECT_EQ(failures, std::vector<std::string>());
    EXPECT_GT(kills, 0);
}

// It would tell of the file that is gone.
TEST(KilledBetween, NoNewFileHasTheCompanionOfAnEarlierOne)
{
    TemporaryFolder place;
    CommandsFolder folder(place / "folder");
    const ChangingCommand command = {
        .name = {}, .before = {"touch ._film"}, .words = "make -o film --spot one.spot", .parts = {}};
    folder.reset(command);
    const std::vector<FileChange> changes = follow({folder.program(command)}).changes;
    const auto names = [](const char *name) {
        return [name](const FileChange &change) {
            return change.path.filename() == name || change.named.filename() == name;
        };
    };
    const auto gone = std::find_if(changes.begin(), changes.end(), names("._film"));
    const auto there = std::find_if(changes.begin(), changes.end(), names("film"));
    ASSERT_NE(there, changes.end());
    EXPECT_LT(gone - changes.begin(), there - changes.begin());
}

INSTANTIATE_TEST_SUITE_P(Commands, Killed, ::testing::ValuesIn(changingCommands()), nameOf);
