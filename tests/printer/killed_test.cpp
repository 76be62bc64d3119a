// The printer, killed at its changes to files, and at those of the programs that it starts: a job that was
// accepted is made by the next, once and whole, and nothing else is left.
#include <cstdio>
#include <cstdlib>
#include <random>
#include <set>

#include "printer/troubled_run.h"
#include "support/file_changes.h"

namespace printer_tests {
namespace {

struct Victim {
    const char *name;
    bool ofChildren;
    unsigned some;  // changes that are tried by the suite
};

class PrinterKilledTest : public ::testing::TestWithParam<Victim> {
protected:
    // At no change where that is 0. What it was killed at.
    FollowedRun run(TroubledRun &trouble, int killAt) const
    {
        FollowedRun followed;
        trouble.with([&] {
            followed = follow({command(trouble.command(), trouble.folder()), GetParam().ofChildren, killAt});
        });
        return followed;
    }

    // The same ones each time; with RIDERS_EVERY_KILL all.
    static std::set<int> chosen(unsigned all)
    {
        std::set<int> numbers;
        const bool every = std::getenv("RIDERS_EVERY_KILL") != nullptr;
        const unsigned wanted = every ? all : std::min(all, GetParam().some);
        std::mt19937 random(17);
        for (unsigned next = every ? 0 : random(); numbers.size() < wanted; next = every ? next + 1 : random())
            numbers.insert(static_cast<int>(next % all) + 1);
        return numbers;
    }
};

TEST_P(PrinterKilledTest, LosesNoJob)
{
    TroubledRun quiet;
    const FollowedRun whole = run(quiet, 0);
    ASSERT_TRUE(quiet.accepted());
    ASSERT_EQ(whole.status, 0);
    ASSERT_EQ(quiet.wrongs(false), std::vector<std::string>());
    int killed = 0, accepted = 0;
    for (const int number : chosen(static_cast<unsigned>(whole.changes.size()))) {
        TroubledRun trouble;
        const FollowedRun followed = run(trouble, number);
        killed += followed.killed ? 1 : 0;
        accepted += trouble.accepted() ? 1 : 0;
        const std::string at = followed.changes.empty()
                                   ? ""
                                   : followed.changes.back().call + " " + followed.changes.back().path.string();
        EXPECT_EQ(trouble.wrongs(false), std::vector<std::string>())
            << "killed at change " << number << ", " << at;
    }
    std::printf("%s: %zu changes, killed at %d, of these after the job was accepted: %d\n", GetParam().name,
                whole.changes.size(), killed, accepted);
    EXPECT_GT(killed, 0);
}

INSTANTIATE_TEST_SUITE_P(Of, PrinterKilledTest,
                         ::testing::Values(Victim{"Printer", false, 2}, Victim{"ItsPrograms", true, 1}),
                         [](const auto &victim) { return victim.param.name; });

}  // namespace
}  // namespace printer_tests
