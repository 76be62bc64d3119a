// The words and numbers of a proof's page.
#include "looking/facts/warnings.h"
#include "looking/look_folder.h"
#include "looking/report/report.h"
#include "looking/report/template.h"
#include "make/plates_piece.h"
#include "support/riders_pieces.h"
#include "support/toolbox_test.h"

namespace {

namespace looking = riders::looking;
namespace plates = riders::plates;

using looking::PlateFacts;
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
    looking::PageFacts page;
    page.plates = plates;
    return looking::warningsFor(page);
}

TEST(ProofReport, TextFromAJobIsOnlyText)
{
    EXPECT_EQ(looking::escaped("<script>alert('x')</script> & \"y\""),
              "&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt; &amp; &quot;y&quot;");
    EXPECT_EQ(looking::escaped(std::string("a\0b\nc\x1B[1m", 9)), "a b c [1m");
    EXPECT_EQ(looking::escaped("gr\xC3\xBCn gr\xFCn"), "grÃ¼n grün");
    EXPECT_EQ(looking::escaped("gr\xC3\xBCn"), "grün");
}

TEST(ProofReport, TemplatesAreFilledOnce)
{
    using looking::filled;
    EXPECT_EQ(filled("<b>{{a}}, {{b}}, {{a}}</b>", {{"a", "{{b}}"}, {"b", "x"}}), "<b>{{b}}, x, {{b}}</b>");
    EXPECT_EQ(filled("{{a}}", {{"a", ""}}), "");
    EXPECT_THROW(filled("{{a}}", {{"b", ""}}), std::logic_error);
    EXPECT_THROW(looking::part("none of them"), std::logic_error);
}

// So that a template reads as the page does: a name alone on its line stands for whole lines.
TEST(ProofReport, ANameAloneOnItsLineLeavesNoEmptyOne)
{
    using looking::filled;
    EXPECT_EQ(filled("<p>\n{{a}}\n</p>\n", {{"a", "one\ntwo\n"}}), "<p>\none\ntwo\n</p>\n");
    EXPECT_EQ(filled("<p>\n{{a}}\n</p>\n", {{"a", ""}}), "<p>\n</p>\n");
    EXPECT_EQ(filled("<p>\n{{a}}\n</p>\n", {{"a", "one"}}), "<p>\none\n</p>\n");
    EXPECT_EQ(filled("<p>{{a}}\n</p>\n", {{"a", ""}}), "<p>\n</p>\n");
    EXPECT_EQ(filled("<p>{{a}}\n</p>\n", {{"a", "one\n"}}), "<p>one\n\n</p>\n");
}

TEST(ProofReport, ThePageEscapesAllThatComesFromTheJob)
{
    looking::LookFacts facts;
    facts.job = facts.riders = "<i>.ps";
    facts.said = {"<i>said"};
    looking::PageFacts page;
    page.number = 1;
    page.width = page.height = 2;
    page.rosette = "pictures/page-1-all.png";
    page.warnings = {"<i>warned"};
    page.plates = {plate("<i>ink", 60, 45)};
    facts.pages = {page};
    const std::string html = looking::reportOf(facts);
    size_t marks = 0;  // the loupe's own is <i style=...>
    for (size_t at = html.find("<i>"); at != std::string::npos; at = html.find("<i>", at + 1))
        ++marks;
    EXPECT_EQ(marks, 0u);
    for (const char *text : {"&lt;i&gt;.ps", "&lt;i&gt;said", "&lt;i&gt;warned", "&lt;i&gt;ink"})
        EXPECT_NE(html.find(text), std::string::npos) << text;
    EXPECT_EQ(html.find("http"), std::string::npos);  // nothing from outside
}

TEST(ProofReport, TheMarkIsFoundWhateverTheJobIsCalled)
{
    looking::LookFacts facts;
    facts.job = std::string(255, '&');
    TemporaryFolder folder;
    looking::writeReport(folder / looking::kPageName, facts);
    EXPECT_TRUE(looking::isLookFolder(folder.path()));
}

TEST(ProofReport, WarnsWhereTheScreenIsOff)
{
    EXPECT_EQ(warnings({plate("Cyan", 60.5, 45.4)}), Words{});
    EXPECT_EQ(warnings({plate("Cyan", 60.7, 45)}), Words{"Cyan: 60.7 lines per inch on the film, 60 asked for."});
    EXPECT_EQ(warnings({plate("Cyan", 59.3, 45)}), Words{"Cyan: 59.3 lines per inch on the film, 60 asked for."});
    EXPECT_EQ(warnings({plate("Cyan", 60, 44.4)}), Words{"Cyan: 44.4° on the film, 45° asked for."});
    PlateFacts own = plate("Cyan", 80, 20);
    own.asked.binding = false;  // nothing was asked for
    EXPECT_EQ(warnings({own}), Words{});
}

TEST(ProofReport, WarnsWhereTheDotsHaveAnotherShape)
{
    PlateFacts round = plate("Cyan", 60, 45);
    round.asked.shape = "Round";
    EXPECT_EQ(warnings({round}), Words{});  // not recognised
    round.measured.shape = "Round";
    EXPECT_EQ(warnings({round}), Words{});
    round.measured.shape = "Line";
    EXPECT_EQ(warnings({round}), Words{"Cyan: dots like Line on the film, Round asked for."});
    round.asked.shape = "";
    EXPECT_EQ(warnings({round}), Words{});
}

TEST(ProofReport, ADotTurnedByAQuarterIsTheSame)
{
    EXPECT_NEAR(looking::anglesApart(89.8, 0.1), 0.3, 1e-9);
    EXPECT_DOUBLE_EQ(looking::anglesApart(0, 180), 0);
    EXPECT_DOUBLE_EQ(looking::anglesApart(10, 55), 45);
    PlateFacts turned = plate("Cyan", 60, 0.2);
    turned.asked.angle = 90;
    EXPECT_EQ(warnings({turned}), Words{});
}

TEST(ProofReport, WarnsWherePlatesShareAnAngle)
{
    const Words shared = {
        "All plates share an angle, 45°: the slightest misregister will show as a shift of colour."};
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
    const plates::AskedFor riders = plates::askedByRiders(folder / "riders");
    EXPECT_FALSE(riders.frequency);
    EXPECT_EQ(riders.angle, 22.5);
    const plates::AskedFor both = plates::askedFor("Cyan", riders, {{"Cyan", {70, 15}}}, {{"Default", {133, 45}}});
    EXPECT_EQ(both.frequency, 70);
    EXPECT_EQ(both.angle, 22.5);
    const plates::AskedFor spot = plates::askedFor("Gold", {}, {{"Default", {50, 5}}}, {{"Default", {133, 45}}});
    EXPECT_EQ(spot.frequency, 50);
    EXPECT_EQ(spot.by, "the job");
    EXPECT_EQ(plates::askedFor("Gold", {}, {{"Black", {80, 45}}, {"Cyan", {70, 15}}}, {}).frequency, 80);
    EXPECT_FALSE(plates::askedFor("Magenta", {}, {{"Black", {80, 45}}}, {}).frequency);
    EXPECT_FALSE(plates::askedFor("Gold", {}, {{"Default", {133, 45}}}, {{"Default", {133, 45}}}).binding);
}

// Riders files with screens for single plates: those of the plate, or of the plate that the page is.
TEST(ProofReport, AsksForThePlatesOwnScreen)
{
    TemporaryFolder folder;
    const std::string all =
        pieceBytes(16499) + pieceBytes(16500) + "\n/riderFrequency 60 def\n" + pieceBytes(16600);
    const std::string fake = "\n<4379616E> 0 17 riderOnPlate\n/riderAngle 5 def\n/riderFont \n";
    writeFile(folder / "riders",
              riders::make::withPlates(all, {{"Cyan", {}, 15, fake}, {"Gold", 70.5, 30}, {"Cyan", {}, 22.5}}));
    const plates::AskedFor riders = plates::askedByRiders(folder / "riders");
    EXPECT_EQ(riders.frequency, 60);
    EXPECT_FALSE(riders.angle);
    EXPECT_FALSE(riders.annotated);
    const riders::plates::AskedScreens page = {{"Cyan", {60, 22.5}}, {"Default", {60, 45}}};
    const auto expect = [&](const std::string &plate, const riders::plates::AskedScreens &on, double frequency,
                            double angle) {
        const plates::AskedFor asked = plates::askedFor(plate, riders, on, {});
        EXPECT_EQ(asked.frequency, frequency) << plate;
        EXPECT_EQ(asked.angle, angle) << plate;
        EXPECT_EQ(asked.by, "the riders file");
    };
    expect("Cyan", page, 60, 22.5);
    expect("Gold", page, 70.5, 30);
    expect("Silver", page, 60, 45);
    expect("Black", {{"Default", {60, 45, {}, "Gold"}}}, 70.5, 30);
    expect("Black", {{"Cyan", {60, 22.5}}, {"Default", {60, 45, {}, "Cyan"}}}, 60, 22.5);
}

// A dot shape and an annotation may look like the lines that say what is asked for.
TEST(ProofReport, WhatUsersWroteInARidersFileIsNotTakenForWhatItAsks)
{
    TemporaryFolder folder;
    const std::string lines = "\n/riderFrequency 17 def\n/riderAngle 5 def\n/riderFont riderReadText x\n";
    const std::string shape = "riderReadSpot {" + lines + "}\n%end-of-dot-shape%\n";
    const std::string annotation = "\n/riderFont riderReadText Courier\n/riderText riderReadText " + lines;
    const auto asked = [&](const std::string &riders) {
        writeFile(folder / "riders", "/riderReadSpot {\n" + riders);
        return plates::askedByRiders(folder / "riders");
    };
    EXPECT_FALSE(asked(shape).frequency);
    EXPECT_FALSE(asked(shape).annotated);
    EXPECT_FALSE(asked(annotation).angle);
    EXPECT_TRUE(asked(annotation).annotated);
    const plates::AskedFor all = asked(shape + "/riderFrequency 60 def\n/riderAngle 45 def" + annotation);
    EXPECT_EQ(all.frequency, 60);
    EXPECT_EQ(all.angle, 45);
    EXPECT_TRUE(all.annotated);
    EXPECT_TRUE(asked("\n/riderFont (Courier) def").annotated) << "as earlier files have it";
}

// Ghostscript's own way below 800 dpi, which the films are without.
TEST(ProofReport, SaysWhatAJobPrintedWithoutRidersLosesOfItsTints)
{
    looking::PageFacts page;
    page.plates = {plate("Cyan", 60, 45), plate("Black", 60, 75)};
    page.plates[1].asked.binding = false;
    page.plates[0].levels = page.plates[1].levels = 256;
    const auto at = [&](double dpi, plates::TintRange tints) {
        page.dpi = dpi;
        page.plates[0].tints = tints;
        page.plates[1].tints = {true, false, 0, 0};
        return looking::warningsFor(page);
    };
    const auto words = [](const std::string &dpi, const std::string &what) {
        return Words{"Printed by Ghostscript at " + dpi + " dpi, tints become lighter: " + what +
                     ". On these films they are as the job has them."};
    };
    EXPECT_EQ(at(600, {false, true, 0.1, 0.9}), words("600", "67.2 % becomes 59 %"));
    EXPECT_EQ(at(600, {false, true, 0.5, 0.5}), words("600", "50 % becomes 42.6 %"));
    EXPECT_EQ(at(799, {false, true, 0.1, 0.2}), words("799", "20 % becomes 16.3 %"));
    EXPECT_EQ(at(150, {false, true, 0.9, 0.9}), words("150", "90 % becomes 84.2 %"));
    for (const double dpi : {149.0, 800.0, 1200.0})
        EXPECT_EQ(at(dpi, {false, true, 0.1, 0.9}), Words{});
    EXPECT_EQ(at(600, {true, false, 0, 0}), Words{});
}

TEST(ProofReport, WarnsWhereCellsHaveFewGreyLevels)
{
    looking::PageFacts page;
    page.dpi = 600;
    page.plates = {plate("Cyan", 150, 45), plate("Black", 150, 75), plate("Gold", 60, 15)};
    for (PlateFacts &each : page.plates)
        each.asked.binding = false;
    EXPECT_EQ(looking::levelsOfCell(150, 600), 17);
    const auto fewLevels = [&] {
        Words few;
        for (const std::string &warning : looking::warningsFor(page))
            if (warning.find("grey levels") != std::string::npos)
                few.push_back(warning);
        return few;
    };
    EXPECT_EQ(
        fewLevels(),
        Words{"Cyan and Black: 600 dpi leaves cells of 17 grey levels at 150 lines per inch: smooth tints will "
              "show steps. At 1200 dpi there are more than 64."});
    page.plates[0].levels = page.plates[1].levels = 256;  // screened by the program
    EXPECT_EQ(fewLevels(), Words{});
    page.plates = {plate("Cyan", 120, 45)};  // 26 levels
    EXPECT_EQ(fewLevels(), Words{});
}

std::size_t timesIn(const std::string &text, const std::string &what)
{
    std::size_t times = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++times;
    return times;
}

TEST(ProofReport, WhatAllPagesAreWarnedOfIsSaidOnce)
{
    looking::LookFacts facts;
    for (int number = 1; number <= 10; ++number) {
        looking::PageFacts &page = facts.pages.emplace_back();
        page.number = number;
        page.warnings = {"All of them.", "And this."};
    }
    facts.pages[3].warnings.emplace_back("Only here.");
    const std::string html = looking::reportOf(facts);
    EXPECT_EQ(timesIn(html, "<li>All of them.</li>"), 1u);
    EXPECT_EQ(timesIn(html, "<li>And this.</li>"), 1u);
    EXPECT_EQ(timesIn(html, "<li>Only here.</li>"), 1u);
    EXPECT_NE(html.find("2 warnings for all pages:"), std::string::npos);
    EXPECT_NE(html.find("1 warning: <a href=\"#page-4\">"), std::string::npos);
    facts.pages[0].warnings.pop_back();
    EXPECT_EQ(timesIn(looking::reportOf(facts), "<li>And this.</li>"), 9u);
    facts.pages.resize(1);
    EXPECT_EQ(looking::reportOf(facts).find("for all pages"), std::string::npos);
}

TEST(ProofReport, APageWithoutDotsShowsWhatIsKnown)
{
    looking::LookFacts facts;
    looking::PageFacts &page = facts.pages.emplace_back();
    page.number = 1;
    page.leftOut = "it took too long";
    page.plates = {plate("Cyan", 60, 45), PlateFacts{}};
    page.plates[0].picture = "";
    page.warnings = looking::warningsFor(page);
    EXPECT_EQ(page.warnings[0], "Its dots are not shown: it took too long.");
    const std::string html = looking::reportOf(facts);
    EXPECT_NE(html.find("10&nbsp;% to 80&nbsp;%"), std::string::npos);
    EXPECT_EQ(timesIn(html, "no ink"), 1u);
}

TEST(ProofReport, SaysWhyAShapeIsNotKnown)
{
    const auto note = [](double dpi, double ink) {
        looking::LookFacts facts;
        looking::PageFacts &page = facts.pages.emplace_back();
        page.dpi = dpi;
        page.plates = {plate("Cyan", 60, 45)};
        page.plates[0].measured.ink = ink;
        return looking::reportOf(facts);
    };
    EXPECT_NE(note(300, 0.5).find("cells too small to show the dots’ shape"), std::string::npos);
    EXPECT_NE(note(1200, 0.05).find("a tint too light to show the dots’ shape"), std::string::npos);
    EXPECT_NE(note(1200, 0.95).find("a tint too dark to show the dots’ shape"), std::string::npos);
    EXPECT_NE(note(1200, 0.5).find("dots like no shape that has a name"), std::string::npos);
}

TEST(ProofReport, ARefusedDotShapeIsWarnedOf)
{
    TemporaryFolder folder;
    writeFile(folder / "riders", "/riderReadSpot {\nriderReadSpot x\n%end-of-dot-shape%\n");
    const plates::AskedFor riders = plates::askedByRiders(folder / "riders");
    EXPECT_TRUE(riders.shaped);
    const plates::AskedScreens own = {{"Default", {133, 45}}};
    EXPECT_TRUE(plates::askedFor("Cyan", riders, own, own).refused);
    const plates::AskedFor taken = plates::askedFor("Cyan", riders, {{"Default", {133, 45, "Line"}}}, own);
    EXPECT_FALSE(taken.refused);
    EXPECT_EQ(taken.by, "the riders file");
    EXPECT_EQ(plates::refusedOfRiders({"x", "%%[ riders: the dot shape fails; the job keeps its own ]%%"}),
              "the dot shape fails; the job keeps its own");
    EXPECT_EQ(plates::refusedOfRiders({"%%[ riders: done ]%%"}), "");
    looking::LookFacts facts;
    looking::PageFacts &page = facts.pages.emplace_back();
    page.refused = "it keeps its own";
    page.plates = {plate("Cyan", 60, 45)};
    page.plates[0].asked = plates::askedFor("Cyan", riders, own, own);
    EXPECT_EQ(looking::warningsFor(page)[0], "Of the riders file: it keeps its own.");
    EXPECT_NE(looking::reportOf(facts).find("a dot shape<small>by the riders file, refused"), std::string::npos);
}

// The page follows the desktop; paper stays white.
TEST(ProofReport, ThePageIsDarkWhereTheDesktopIs)
{
    const std::string html = looking::reportOf({});
    const std::size_t dark = html.find("@media screen and (prefers-color-scheme: dark)");
    ASSERT_NE(dark, std::string::npos);
    for (const char *colour :
         {"--ink", "--soft", "--line", "--warn", "--ground", "--sheet", "--ring", "--warned", "--link"})
        EXPECT_LT(html.find(std::string(colour) + ": ", dark), html.find("}\n}", dark)) << colour;
    EXPECT_NE(html.find(".sheet, figure img { background: #fff; }"), std::string::npos);
}

}  // namespace
