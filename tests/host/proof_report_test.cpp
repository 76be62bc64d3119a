// The words and numbers of a proof's page.
#include <sstream>

#include "host/proof_support.h"
#include "meter/meter.h"
#include "proof/facts.h"
#include "proof/output_folder.h"
#include "proof/plate_names.h"
#include "proof/report.h"

namespace {

using riders::proof::PlateFacts;
using Words = std::vector<std::string>;

PlateFacts plate(const std::string &name, double frequency, double angle)
{
    PlateFacts facts;
    facts.name = name;
    facts.film = "films/page-1-x.tif";
    facts.picture = "pictures/page-1-x.png";
    facts.tints = {false, true, 0.1, 0.8};
    facts.asked = {60, 45, "the job", true};
    facts.measured = {true, frequency, angle, 0.3, {}};
    return facts;
}

Words warnings(const std::vector<PlateFacts> &plates)
{
    riders::proof::PageFacts page;
    page.plates = plates;
    return riders::proof::warningsFor(page);
}

TEST(ProofReport, TextFromAJobIsOnlyText)
{
    EXPECT_EQ(riders::proof::escaped("<script>alert('x')</script> & \"y\""),
              "&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt; &amp; &quot;y&quot;");
    EXPECT_EQ(riders::proof::escaped(std::string("a\0b\nc\x1B[1m", 9)), "a b c [1m");
    EXPECT_EQ(riders::proof::escaped("gr\xC3\xBCn gr\xFCn"), "grÃ¼n grün");
    EXPECT_EQ(riders::proof::escaped("gr\xC3\xBCn"), "grün");
}

TEST(ProofReport, ThePageEscapesAllThatIsTheJobs)
{
    riders::proof::ProofFacts facts;
    facts.job = facts.riders = "<i>.ps";
    facts.said = {"<i>said"};
    riders::proof::PageFacts page;
    page.number = 1;
    page.width = page.height = 2;
    page.rosette = "pictures/page-1-all.png";
    page.warnings = {"<i>warned"};
    page.plates = {plate("<i>ink", 60, 45)};
    facts.pages = {page};
    const std::string html = riders::proof::reportOf(facts);
    size_t marks = 0;   // the loupe's own is <i style=...>
    for (size_t at = html.find("<i>"); at != std::string::npos; at = html.find("<i>", at + 1))
        ++marks;
    EXPECT_EQ(marks, 0u);
    for (const char *text : {"&lt;i&gt;.ps", "&lt;i&gt;said", "&lt;i&gt;warned", "&lt;i&gt;ink"})
        EXPECT_NE(html.find(text), std::string::npos) << text;
    EXPECT_EQ(html.find("http"), std::string::npos);   // nothing from outside
}

TEST(ProofReport, TheMarkIsFoundWhateverTheJobIsCalled)
{
    riders::proof::ProofFacts facts;
    facts.job = std::string(255, '&');
    TemporaryFolder folder;
    riders::proof::writeReport(folder / riders::proof::kPageName, facts);
    EXPECT_TRUE(riders::proof::isProofFolder(folder.path()));
}

TEST(ProofReport, WarnsWhereTheScreenIsOff)
{
    EXPECT_EQ(warnings({plate("Cyan", 60.5, 45.4)}), Words{});
    EXPECT_EQ(warnings({plate("Cyan", 60.7, 45)}), Words{"Cyan: 60.7 lines an inch on the film, 60 asked for."});
    EXPECT_EQ(warnings({plate("Cyan", 59.3, 45)}), Words{"Cyan: 59.3 lines an inch on the film, 60 asked for."});
    EXPECT_EQ(warnings({plate("Cyan", 60, 44.4)}), Words{"Cyan: 44.4° on the film, 45° asked for."});
    PlateFacts own = plate("Cyan", 80, 20);
    own.asked.binding = false;   // nobody asked
    EXPECT_EQ(warnings({own}), Words{});
}

TEST(ProofReport, WarnsWhereTheDotsHaveAnotherShape)
{
    PlateFacts round = plate("Cyan", 60, 45);
    round.asked.shape = "Round";
    EXPECT_EQ(warnings({round}), Words{});  // not told
    round.measured.shape = "Round";
    EXPECT_EQ(warnings({round}), Words{});
    round.measured.shape = "Line";
    EXPECT_EQ(warnings({round}), Words{"Cyan: dots like Line on the film, Round asked for."});
    round.asked.shape = "";
    EXPECT_EQ(warnings({round}), Words{});
}

// The order of a spot function's values is what counts, and a job may write anything.
TEST(ProofReport, ShapesAreToldFromTheirValues)
{
    const auto shapeOf = [](double (*spot)(double, double)) {
        std::ostringstream line;
        line << "%%ProofShape";
        for (int i = 0; i < 49; ++i)
            line << ' ' << spot((i % 7 - 3) / 3.3, (i / 7 - 3) / 3.5);
        line << " Cyan";
        riders::proof::InterpreterWords words;
        words.take("%%ProofPage");
        words.take(line.str());
        words.take("%%ProofPage");
        return words.report().pages[0].at("Cyan").shape;
    };
    for (const riders::meter::NamedSpot &spot : riders::meter::namedSpots())
        EXPECT_EQ(shapeOf(spot.value), spot.name);
    EXPECT_EQ(shapeOf([](double x, double y) { return -5 * (x * x + y * y); }), "Round");
    EXPECT_EQ(shapeOf([](double x, double y) { return x * y; }), "");
    riders::proof::InterpreterWords words;
    for (const char *line : {"%%ProofShape ", "%%ProofShape 1 2 3 Cyan", "%%ProofShape x"})
        EXPECT_FALSE(words.take(line));
    EXPECT_TRUE(words.report().said.empty());
}

TEST(ProofReport, ADotTurnedByAQuarterIsTheSame)
{
    EXPECT_NEAR(riders::proof::anglesApart(89.8, 0.1), 0.3, 1e-9);
    EXPECT_DOUBLE_EQ(riders::proof::anglesApart(0, 180), 0);
    EXPECT_DOUBLE_EQ(riders::proof::anglesApart(10, 55), 45);
    PlateFacts turned = plate("Cyan", 60, 0.2);
    turned.asked.angle = 90;
    EXPECT_EQ(warnings({turned}), Words{});
}

TEST(ProofReport, WarnsWherePlatesShareAnAngle)
{
    const Words shared = {"All plates share an angle, 45°: the slightest misregister will show as a shift of colour."};
    EXPECT_EQ(warnings({plate("Cyan", 60, 45), plate("Black", 60, 45.3)}), shared);
    EXPECT_EQ(warnings({plate("Cyan", 60, 45)}), Words{});
    PlateFacts other = plate("Black", 60, 75);
    other.asked.angle = 75;
    EXPECT_EQ(warnings({plate("Cyan", 60, 45), other}), Words{});
}

TEST(ProofReport, WarnsOfTintsThatWillNotHold)
{
    PlateFacts facts = plate("Cyan", 60, 45);
    facts.tints = {true, true, 0.02, 0.98};
    EXPECT_EQ(warnings({facts}), (Words{"Cyan: a tint of 2 %, below 3 %: its dots may not hold.",
                                        "Cyan: a tint of 98 %, above 97 %: its holes may fill in."}));
    facts.tints = {true, true, 0.03, 0.97};
    EXPECT_EQ(warnings({facts}), Words{});
}

TEST(ProofReport, WhatARidersFileAsksForComesFirst)
{
    TemporaryFolder folder;
    writeFile(folder / "riders", "/riderFrequency null def /riderAngle null def\n/riderAngle 22.5 def\n");
    const riders::proof::AskedFor riders = riders::proof::askedByRiders(folder / "riders");
    EXPECT_FALSE(riders.frequency);
    EXPECT_EQ(riders.angle, 22.5);
    const riders::proof::AskedFor both = riders::proof::askedFor("Cyan", riders, {{"Cyan", {70, 15}}}, {{"Default", {133, 45}}});
    EXPECT_EQ(both.frequency, 70);
    EXPECT_EQ(both.angle, 22.5);
    const riders::proof::AskedFor spot = riders::proof::askedFor("Gold", {}, {{"Default", {50, 5}}}, {{"Default", {133, 45}}});
    EXPECT_EQ(spot.frequency, 50);
    EXPECT_EQ(spot.by, "the job");
    EXPECT_EQ(riders::proof::askedFor("Gold", {}, {{"Black", {80, 45}}, {"Cyan", {70, 15}}}, {}).frequency, 80);
    EXPECT_FALSE(riders::proof::askedFor("Magenta", {}, {{"Black", {80, 45}}}, {}).frequency);
    EXPECT_FALSE(riders::proof::askedFor("Gold", {}, {{"Default", {133, 45}}}, {{"Default", {133, 45}}}).binding);
}

TEST(ProofReport, FilesAreNamedPlainly)
{
    std::set<std::string> taken = {"all"};
    EXPECT_EQ(riders::proof::fileNameFor("PANTONE 185 C", taken), "pantone-185-c");
    EXPECT_EQ(riders::proof::fileNameFor("Pantone-185-C", taken), "pantone-185-c-2");
    EXPECT_EQ(riders::proof::fileNameFor("All", taken), "all-2");
    EXPECT_EQ(riders::proof::fileNameFor("../..", taken), "ink");
    EXPECT_EQ(riders::proof::fileNameFor("", taken), "ink-2");
    EXPECT_EQ(riders::proof::fileNameFor(std::string(300, 'x'), taken).size(), 40u);
    EXPECT_EQ(riders::proof::plateNameFrom("a%2Fb%25 %zz%4"), "a/b% %zz%4");
}

}  // namespace
