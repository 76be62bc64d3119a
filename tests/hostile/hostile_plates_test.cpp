// Names and dot shapes of single plates of any text: they give dots, and do nothing else.
#include "hostile/hostile_texts.h"
#include "hostile/trials.h"
#include "hostile/watched_cases.h"
#include "make/plates_piece.h"
#include "support/riders_pieces.h"

namespace {

riders::make::PlatePiece hostilePlate(HostileTexts &texts)
{
    std::string name = texts.annotation().text.substr(0, 127);
    if (name.empty() || name == "*")
        name = "Cyan";
    return {name, 50, {}, texts.shape()};
}

TEST(HostilePlates, DoNothingButGiveDots)
{
    const Trials trials(25);
    HostileTexts texts(trials.seed);
    const std::string without = pieceBytes(16499) + pieceBytes(16500) + pieceBytes(16600);
    for (size_t done = 0; done < trials.count && !HasFailure();) {
        std::vector<riders::make::PlatePiece> plates;
        std::vector<WatchedCase> cases;
        for (; cases.size() < trials.atATime && done < trials.count; ++done) {
            plates.push_back(hostilePlate(texts));
            cases.push_back({riders::make::withPlates(without, {plates.back(), {"Black", {}, 15}}), {}, {}});
        }
        const WatchedCases watched(cases, WatchedScreen::replaced);
        for (const WatchedFinding &finding : watched.findings())
            ADD_FAILURE() << finding.words << "\nfor "
                          << (finding.number > 0
                                  ? plates[finding.number - 1].plate + "\n" + plates[finding.number - 1].spotBody
                                  : "all");
    }
}

}  // namespace
