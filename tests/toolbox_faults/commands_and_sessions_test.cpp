// Every call of the Toolbox that can fail does so: the first, the second, the third, until a run meets no fault;
// each command of the program, and each session in examples/sessions. Whatever fails, the program ends, says why
// in one line, and loses nothing, and the next run works.
//
// RIDERS_FAULTS=all tries every fault, which takes an hour; RIDERS_FAULTS='write 3 -> -34, once' that one, and
// prints the trace; otherwise a few are chosen at random, and RIDERS_SEED=N chooses others.
#include <algorithm>
#include <iostream>
#include <random>
#include <set>

#include "toolbox_faults/judge.h"
#include "toolbox_faults/scenarios.h"
#include "support/kept_sessions.h"

namespace toolbox_faults {
namespace {

std::string wantedFaults()
{
    const char *faults = std::getenv("RIDERS_FAULTS");
    return faults ? faults : "";
}

unsigned seed()
{
    const char *given = std::getenv("RIDERS_SEED");
    return given ? static_cast<unsigned>(std::stoul(given)) : 3;
}

// A person who has chosen a dot of their own.
Files settingsBefore()
{
    static const Files made = [] {
        const Place place(filesBefore(), {});
        place.restore();
        for (const Scenario &scenario : everyScenario())
            if (scenario.name == "make_with_spot_saving")
                return place.run(scenario).settings;
        return Files();
    }();
    return made;
}

bool isKeptSession(const Scenario &scenario)
{
    const std::vector<std::string> sessions = kept::names();
    return std::find(sessions.begin(), sessions.end(), scenario.name) != sessions.end();
}

std::size_t hashOf(const std::vector<Files> &folders)
{
    std::string all;
    for (const Files &files : folders) {
        for (const auto &[name, bytes] : files)
            all += name + '/' + std::to_string(bytes.size()) + '/' + bytes;
        all += '/';
    }
    return std::hash<std::string>()(all);
}

class Trial {
public:
    explicit Trial(const Scenario &scenario)
        : scenario_(scenario), usual_{filesBefore(), isKeptSession(scenario) ? Files() : settingsBefore(), {}},
          place_(usual_.filesBefore, usual_.settingsBefore)
    {
        place_.restore();
        usual_.after = place_.run(scenario_);
        for (const Files &settings : {usual_.settingsBefore, usual_.after.settings})
            seen_.insert(hashOf({usual_.after.files, settings}));
    }

    const Outcome &usually() const { return usual_.after; }

    void tryAll()
    {
        for (const Fault &fault : everyFault())
            for (int nth = 1; attempt(fault, nth); ++nth)
                ;
    }
    void tryOne(const std::string &wanted)
    {
        const int nth = std::stoi(wanted.substr(wanted.find(' ')));
        for (const Fault &fault : everyFault())
            if (described(fault, nth) == wanted)
                attempt(fault, nth);
        for (const std::string &line : last_.trace)
            std::cout << line << '\n';
    }
    void trySome(int some)
    {
        std::mt19937 random(seed());
        std::vector<Fault> possible = everyFault();
        std::erase_if(possible, [&](const Fault &fault) { return usual_.after.calls.at(kindOf(fault)) == 0; });
        for (int i = 0; i < some; ++i) {
            const bool isAllocation = i % 2 == 1;
            Fault fault = possible[random() % possible.size()];
            if (isAllocation)
                fault = {{}, memFullErr, false, random() % 2 == 1};
            attempt(fault,
                    1 + static_cast<int>(random() % static_cast<unsigned>(usual_.after.calls[kindOf(fault)])));
        }
    }

    int tried() const { return tried_; }
    int failed() const { return failed_; }

private:
    // False when there was no nth call.
    bool attempt(const Fault &fault, int nth)
    {
        place_.restore();
        const Outcome is = last_ = place_.run(scenario_, fault, nth);
        const bool met = is.calls.empty() || is.calls[kindOf(fault)] >= nth;
        if (!met)
            return false;
        ++tried_;
        std::vector<std::string> wrong = wrongIn(is, usual_, scenario_, fault);
        tryNextRuns(is, wrong);
        if (!wrong.empty())
            report(described(fault, nth), is, wrong);
        return true;
    }

    // Where what was left has not been seen yet.
    void tryNextRuns(const Outcome &is, std::vector<std::string> &wrong)
    {
        if (!seen_.insert(hashOf({is.files, is.settings})).second)
            return;
        for (const Scenario &next : nextRuns())
            if (const Outcome outcome = place_.run(next); outcome.status != 0)
                wrong.push_back(next.name + " fails: " + outcome.how + outcome.err);
    }

    void report(const std::string &fault, const Outcome &is, const std::vector<std::string> &wrong)
    {
        constexpr int shown = 20;
        std::string words = scenario_.name + ": " + fault + '\n';
        for (const std::string &sentence : wrong)
            words += "  " + sentence + '\n';
        words += "  it said: " + is.err;
        if (++failed_ <= shown)
            ADD_FAILURE() << words;
        else
            std::cout << words << std::endl;
    }

    const Scenario &scenario_;
    Usual usual_;
    Place place_;
    Outcome last_;
    std::set<std::size_t> seen_;
    int tried_ = 0, failed_ = 0;
};

class ToolboxFaults : public ::testing::TestWithParam<Scenario> {};

}  // namespace

TEST_P(ToolboxFaults, EndInWordsAndLoseNothing)
{
    Trial trial(GetParam());
    ASSERT_EQ(trial.usually().status, 0) << trial.usually().err << trial.usually().how;
    if (wantedFaults() == "all") {
        trial.tryAll();
    } else if (!wantedFaults().empty()) {
        trial.tryOne(wantedFaults());
    } else {
        constexpr int some = 4;
        std::cout << "RIDERS_SEED=" << seed() << ", " << std::flush;
        trial.trySome(some);
    }
    std::cout << GetParam().name << ": " << trial.tried() << " faults tried, " << trial.failed() << " failures"
              << std::endl;
}

INSTANTIATE_TEST_SUITE_P(Each, ToolboxFaults, ::testing::ValuesIn(everyScenario()),
                         [](const auto &instance) { return instance.param.name; });

}  // namespace toolbox_faults
