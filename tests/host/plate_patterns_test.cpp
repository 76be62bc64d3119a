// What a proof says of the patterns between plates, and of a mesh.
#include "looking/facts/on_mesh.h"
#include "looking/facts/plate_patterns.h"
#include "looking/facts/warnings.h"
#include "looking/report/report.h"
#include "support/toolbox_test.h"

namespace {

namespace looking = riders::looking;

using looking::PlateFacts;
using looking::PlatePattern;
using Words = std::vector<std::string>;
using Places = std::vector<size_t>;

constexpr looking::Colour kCyan = {0, 158, 224}, kMagenta = {230, 0, 126}, kYellow = {255, 237, 0},
                          kBlack = {29, 29, 27};

// As asked for.
PlateFacts plate(const std::string &name, looking::Colour ink, double frequency, double angle)
{
    PlateFacts facts;
    facts.name = name;
    facts.ink = ink;
    facts.asked = {frequency, angle, "the job", true};
    facts.measured = {true, frequency, angle, 0.5, {1, 1, 1, 1}};
    return facts;
}

std::vector<PlateFacts> offset(double lpi)
{
    return {plate("Cyan", kCyan, lpi, 15), plate("Magenta", kMagenta, lpi, 75), plate("Yellow", kYellow, lpi, 0),
            plate("Black", kBlack, lpi, 45)};
}

Words sentences(const std::vector<PlateFacts> &plates)
{
    Words words;
    for (const PlatePattern &pattern : looking::patternsBetween(plates))
        words.push_back(sentenceFor(pattern, plates));
    return words;
}

Words warnings(const std::vector<PlateFacts> &plates, double mesh = 0)
{
    looking::PageFacts page;
    page.plates = plates;
    page.patterns = looking::patternsBetween(plates);
    page.mesh = mesh;
    return looking::warningsFor(page);
}

looking::PageFacts onMesh(const std::vector<PlateFacts> &plates, double mesh)
{
    looking::PageFacts page;
    page.plates = plates;
    page.mesh = mesh;
    return page;
}

Words factsOnMesh(const std::vector<PlateFacts> &plates, double mesh)
{
    return looking::factsOnMesh(onMesh(plates, mesh));
}

Words warningsOnMesh(const std::vector<PlateFacts> &plates, double mesh)
{
    return looking::warningsOnMesh(onMesh(plates, mesh));
}

// 133 lines per inch, 15 degrees apart: 25.4 mm / 133 / (2 sin 7.5°).
TEST(PlatePatterns, TheOffsetSetHasOnlyYellowsWhichIsNoWarning)
{
    EXPECT_EQ(sentences(offset(133)),
              (Words{"Cyan and Yellow make a pattern of 0.73 mm; Yellow is light, so it will hardly show.",
                     "Magenta and Yellow make a pattern of 0.73 mm; Yellow is light, so it will hardly show."}));
    EXPECT_EQ(warnings(offset(133)), Words{});
}

TEST(PlatePatterns, ADarkInkInYellowsPlaceIsWarnedOf)
{
    std::vector<PlateFacts> plates = offset(133);
    plates[2] = plate("Green", {0, 120, 60}, 133, 0);
    EXPECT_EQ(warnings(plates).size(), 2u);
    EXPECT_EQ(
        warnings({plates[0], plates[2]}),
        Words{"Cyan and Green make a pattern of 0.73 mm, where the rosette’s own is 0.37 mm: turn Cyan to 45°."});
}

TEST(PlatePatterns, ThePlatesAreNamedAndWhatToChange)
{
    std::vector<PlateFacts> plates = offset(133);
    plates[0] = plate("Cyan", kCyan, 133, 25);
    const Words found = warnings(plates);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0],
              "Cyan and Black make a pattern of 0.55 mm, where the rosette’s own is 0.37 mm: turn Cyan to 15°.");
    plates = offset(133);
    plates[3] = plate("Black", kBlack, 135, 45);
    EXPECT_EQ(warnings(plates),
              Words{"Cyan, Magenta and Black make a pattern of 12.7 mm, where the rosette’s own is "
                    "0.37 mm: make Black 133 lines per inch."});
}

// Where what was asked for is right, other screens would not help.
TEST(PlatePatterns, WhereTheDeviceMissedWhatWasAskedForThatIsSaid)
{
    std::vector<PlateFacts> plates = offset(133);
    plates[3].measured.frequency = 134;
    EXPECT_EQ(warnings(plates),
              Words{"Cyan, Magenta and Black make a pattern of 25.4 mm, where the rosette’s own is "
                    "0.37 mm: the screens that were asked for would not make it."});
    plates[3].asked = {};  // by nobody
    EXPECT_EQ(warnings(plates),
              Words{"Cyan, Magenta and Black make a pattern of 25.4 mm, where the rosette’s own is "
                    "0.37 mm: make Black 133 lines per inch."});
}

// A pattern of two is not repeated with each third plate.
TEST(PlatePatterns, ThreesAreLeftOutWhereTwoOfThemMakeAPattern)
{
    std::vector<PlateFacts> plates = offset(133);
    plates[1] = plate("Magenta", kMagenta, 135, 18);
    for (const PlatePattern &pattern : looking::patternsBetween(plates))
        EXPECT_FALSE(pattern.plates.size() == 3 && pattern.plates[0] == 0 && pattern.plates[1] == 1);
    EXPECT_EQ(looking::patternsBetween(plates)[0].plates, (Places{0, 1}));
}

TEST(PlatePatterns, PlatesWithOneScreenShiftTheColour)
{
    std::vector<PlateFacts> plates = offset(60);
    plates[1] = plate("Magenta", kMagenta, 60, 45);
    const Words found = warnings(plates);
    EXPECT_EQ(found,
              Words{"Magenta and Black have one screen, 60 lines per inch at 45°: the slightest misregister "
                    "will show as a shift of colour."});
    EXPECT_EQ(warnings({plates[1], plates[3]}).size(), 1u) << "that all share the angle is said once";
}

// Two plates whose screens are read in a corner of 0.1 inch may well have the same frequency.
TEST(PlatePatterns, ASmallTintTellsLess)
{
    std::vector<PlateFacts> plates = {plate("Cyan", kCyan, 60, 45), plate("Black", kBlack, 60.5, 45)};
    EXPECT_FALSE(looking::patternsBetween(plates)[0].shared);
    plates[0].measured.where = {1, 1, 0.1, 2};
    EXPECT_TRUE(looking::patternsBetween(plates)[0].shared);
    plates[0].measured.found = false;
    EXPECT_TRUE(looking::patternsBetween(plates).empty());
}

TEST(PlatePatterns, LinesRunAtTheirAngle)
{
    std::vector<PlateFacts> plates = {plate("Cyan", kCyan, 60, 10), plate("Black", kBlack, 60, 100)};
    plates[0].measured.lines = plates[1].measured.lines = true;
    EXPECT_TRUE(looking::patternsBetween(plates).empty()) << "across each other";
    plates[1].measured.angle = 12;
    plates[1].asked = {};
    ASSERT_EQ(looking::patternsBetween(plates).size(), 1u);
    EXPECT_NEAR(looking::patternsBetween(plates)[0].millimetres, 25.4 / 60 / 0.034905, 0.001);
}

TEST(PlatePatterns, AMeshIsJudgedForEachPlate)
{
    const std::vector<PlateFacts> plates = {plate("Black", kBlack, 45, 22.5)};
    EXPECT_EQ(factsOnMesh(plates, 110),
              Words{"Black: 2.44 threads a line; the coarsest pattern of the two is 2.12 mm."});
    EXPECT_EQ(factsOnMesh(plates, 120),
              Words{"Black: 2.67 threads a line, few threads; the usual advice is 3.75 a "
                    "line; the coarsest pattern of the two is 1.22 mm."});
    EXPECT_EQ(warnings(plates), Words{});
    EXPECT_EQ(warnings(plates, 225), Words{});
    EXPECT_EQ(warnings(plates, 120), Words{});
    EXPECT_EQ(warnings(plates, 110),
              Words{"Black on a mesh of 110 threads per inch: too few threads; 2.5 a line at the least."});
    const std::vector<PlateFacts> straight = {plate("Black", kBlack, 45, 0)};
    EXPECT_EQ(warnings(straight, 225).size(), 1u) << "along the threads";
}

TEST(PlatePatterns, WhatAMeshMeansForSeveralPlatesIsSaidOnce)
{
    std::vector<PlateFacts> plates = {plate("Cyan", kCyan, 45, 22.5), plate("Magenta", kMagenta, 45, 2),
                                      plate("Gold", kYellow, 45, 22.5), plate("Black", kBlack, 45, 67.5)};
    const std::string few = " on a mesh of 110 threads per inch: too few threads; 2.5 a line at the least";
    EXPECT_EQ(warningsOnMesh(plates, 110),
              (Words{"Cyan, Gold and Black" + few + ".",
                     "Magenta" + few + "; the rows lie 2° from the threads; better at 7.5°."}));
    ASSERT_EQ(factsOnMesh(plates, 110).size(), 2u);
    EXPECT_EQ(factsOnMesh(plates, 110)[0],
              "Cyan, Gold and Black: 2.44 threads a line; the coarsest pattern of the two is 2.12 mm.");
    plates[0].measured.found = false;
    EXPECT_EQ(factsOnMesh(plates, 110)[1].rfind("Gold and Black: ", 0), 0u);
    EXPECT_EQ(factsOnMesh(plates, 0), Words{});
    EXPECT_EQ(warningsOnMesh(plates, 0), Words{});
}

// As measured on films of the set for screen printing in process colours.
TEST(PlatePatterns, AScreenOnAMeshMayBeAsFarOffAsFilmsAre)
{
    EXPECT_EQ(
        warningsOnMesh({plate("Magenta", kMagenta, 45.02, 82.51), plate("Yellow", kYellow, 45.02, 7.49)}, 112.5),
        Words{});
    EXPECT_EQ(warningsOnMesh({plate("Yellow", kYellow, 45, 7.1)}, 225).size(), 1u);
    EXPECT_EQ(warningsOnMesh({plate("Yellow", kYellow, 45.2, 22.5)}, 112.5).size(), 1u);
}

TEST(PlatePatterns, ThePageShowsPatternsAndMesh)
{
    looking::LookFacts facts;
    looking::PageFacts page;
    page.plates = offset(133);
    page.plates[0] = plate("<i>Cyan", kCyan, 133, 25);
    page.patterns = looking::patternsBetween(page.plates);
    page.patterns.resize(2);  // Magenta and Yellow, Cyan and Black
    page.patterns[1].picture = "pictures/page-1-pattern-1.png";
    page.patterns[1].shown = 7.63;
    page.mesh = 228.6;
    facts.pages = {page};
    std::string html = looking::reportOf(facts);
    const auto has = [&html](const std::string &part) { return html.find(part) != std::string::npos; };
    EXPECT_TRUE(has("<figure class=\"pattern\"><a href=\"pictures/page-1-pattern-1.png\">")) << html;
    EXPECT_TRUE(has("&lt;i&gt;Cyan and Black over each other, 7.6 mm of the page: a pattern of 0.55 mm."));
    EXPECT_TRUE(has("<p class=\"soft\">Magenta and Yellow make a pattern of 0.73 mm; Yellow is light"));
    EXPECT_TRUE(has("<h3>On a mesh of 228.6 threads per inch</h3>"));
    EXPECT_TRUE(has("<li>Magenta: 1.72 threads a line; the coarsest pattern"));
    facts.pages[0].patterns[1].afar = true;
    html = looking::reportOf(facts);
    EXPECT_TRUE(has("<figure class=\"pattern afar\">"));
    EXPECT_TRUE(has("7.6 mm of the page, without their dots, as seen from afar: a pattern"));
    facts.pages[0].patterns.clear();
    facts.pages[0].mesh = 0;
    html = looking::reportOf(facts);
    EXPECT_FALSE(has("Patterns between plates"));
    EXPECT_FALSE(has("On a mesh"));
}

}  // namespace
