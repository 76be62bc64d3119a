// Annotations and fonts of any bytes: what the plug-in makes of them prints as typed and does nothing else.
#include "hostile/hostile_riders.h"
#include "hostile/trials.h"
#include "hostile/watched_cases.h"

namespace {

// What is to be seen of a text: control characters and blanks leave nothing, and not every font has the apple.
std::string lettersOf(const std::string &roman)
{
    std::string letters;
    for (const char c : roman) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte > 32 && byte != 127 && byte != 0xCA && byte != 0xF0)
            letters += c;
    }
    return letters;
}

class HostileText : public HostileRiders {
protected:
    void tryOut(const std::vector<HostileAnnotation> &annotations)
    {
        std::vector<WatchedCase> cases;
        for (const HostileAnnotation &annotation : annotations) {
            const std::string font = annotation.font.substr(0, annotation.font.find(' '));
            cases.push_back({ridersOf(annotation), font, annotation.text});
        }
        const WatchedCases watched(cases);
        for (const WatchedFinding &finding : watched.findings())
            ADD_FAILURE() << finding.words << "\nfor "
                          << (finding.number > 0 ? shownOf(annotations[finding.number - 1]) : "all");
        for (size_t i = 0; i < annotations.size(); ++i)
            EXPECT_EQ(lettersOf(toolbox::romanFromUtf8Lossy(watched.letters(i + 1))),
                      lettersOf(annotations[i].text))
                << shownOf(annotations[i]);
    }
};

TEST_F(HostileText, PrintsAsTypedAndDoesNothing)
{
    const Trials trials(100);
    HostileTexts texts(trials.seed);
    for (size_t done = 0; done < trials.count && !HasFailure();) {
        std::vector<HostileAnnotation> annotations;
        for (; annotations.size() < trials.atATime && done < trials.count; ++done)
            annotations.push_back(texts.annotation());
        tryOut(annotations);
    }
}

}  // namespace
