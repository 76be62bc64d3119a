// Dot shapes of any text: one that is refused, and one that is not, leaves the job and the interpreter as they
// were.
#include "hostile/hostile_texts.h"
#include "hostile/trials.h"
#include "hostile/watched_cases.h"
#include "source/ktSpot.h"
#include "source/making.h"
#include "toolbox/memory.h"

namespace {

class HostileShape : public Making {
protected:
    std::string ridersOf(const std::string &body)
    {
        importSpot(body);
        choose(&PrefsRec::freqItem, 2);
        std::filesystem::remove(file());
        trace.clear();
        EXPECT_EQ(make(), 1);
        DisposeHandle(gSpotHandle);
        gSpotHandle = nullptr;
        return contentsOf(file());
    }
};

TEST_F(HostileShape, DoesNothingButGiveDots)
{
    const Trials trials(40);
    HostileTexts texts(trials.seed);
    for (size_t done = 0; done < trials.count && !HasFailure();) {
        std::vector<std::string> bodies;
        std::vector<WatchedCase> cases;
        for (; cases.size() < trials.atATime && done < trials.count; ++done) {
            bodies.push_back(texts.shape());
            cases.push_back({ridersOf(bodies.back()), {}, {}});
        }
        const WatchedCases watched(cases, WatchedScreen::replaced);
        for (const WatchedFinding &finding : watched.findings())
            ADD_FAILURE() << finding.words << "\nfor "
                          << (finding.number > 0
                                  ? toolbox::trace::quoted(toolbox::utf8FromRoman(bodies[finding.number - 1]))
                                  : "all");
    }
}

}  // namespace
