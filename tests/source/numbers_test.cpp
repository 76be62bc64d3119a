// The headers of numbers agree with the resource sources.
#include "source/resource_names.h"

#include <gtest/gtest.h>

#include "source/reasons.h"
#include "source/resourceNumbers.h"

namespace {

bool has(const std::vector<NamedNumber> &numbers, const NamedNumber &wanted)
{
    for (const NamedNumber &each : numbers)
        if (each.type == wanted.type && each.number == wanted.number)
            return true;
    return false;
}

TEST(Numbers, AreReadFromAllPartsOfHeadersAndSources)
{
    for (const char *type : {"STR#", "STR ", "MENU", "DLOG", "ALRT", "dctb", "cctb", "TEXT", "snd "}) {
        auto of = [&](const std::vector<NamedNumber> &numbers) {
            return std::count_if(numbers.begin(), numbers.end(),
                                 [&](const auto &each) { return each.type == type; });
        };
        EXPECT_GT(of(namedResources()), 0) << type;
        EXPECT_GT(of(definedResources()), 0) << type;
    }
    EXPECT_TRUE(has(namedResources(), {"MENU", kFreqMenu, "", ""}));
    EXPECT_TRUE(has(namedReasons(), {"", kNoSetup, "", ""}));
    EXPECT_TRUE(has(namedReasons(), {"", 27, "", ""})) << "the last of the first seven dot shapes";
}

TEST(Numbers, EachNamedResourceIsThere)
{
    auto defined = definedResources();
    for (const NamedNumber &each : namedResources())
        EXPECT_TRUE(has(defined, each))
            << each.place << ": " << each.name << " stands for '" << each.type << "' " << each.number
            << ", which no file in resources/ defines. Define it there, "
            << "or take the name away.";
}

TEST(Numbers, EachResourceHasAName)
{
    auto named = namedResources();
    for (const NamedNumber &each : definedResources())
        EXPECT_TRUE(has(named, each)) << each.place << ": '" << each.type << "' " << each.number
                                      << " has no name. Give it one in source/resourceNumbers.h, in the part for '"
                                      << each.type << "' (a dot shape: a row in source/dotShapes.h).";
}

TEST(Numbers, NoResourceNumberIsTakenTwice)
{
    for (const std::string &sentence : numbersTaken(namedResources()))
        ADD_FAILURE() << sentence;
}

TEST(Numbers, NoReasonStandsForTwoSteps)
{
    for (const std::string &sentence : numbersTaken(namedReasons()))
        ADD_FAILURE() << sentence << " Where two steps share a number on purpose, write the other's name instead.";
}

}  // namespace
