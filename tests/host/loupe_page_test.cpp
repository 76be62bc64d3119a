// The page that zooms: what it says of sheets, and what it takes from a job.
#include "looking/look_folder.h"
#include "looking/loupe/loupe_page.h"
#include "looking/report/report.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

namespace looking = riders::looking;

const looking::LoupeLinks kNone{"loupe/", "proof.html"};

looking::LookFacts zoomed()
{
    looking::PlateFacts plate;
    plate.name = "</script><i>Gold";
    plate.ink = {200, 150, 0};
    plate.asked.frequency = 60;
    plate.asked.angle = 22.5;
    plate.gridAt = {0.5, 0.25};
    plate.tiles = {"page-1-gold", 700, 400, {{2, 1, {true, false}}, {1, 1, {true}}}};
    looking::PageFacts page;
    page.number = 1;
    page.dpi = 1200;
    page.loupe = {0.1, 0.2, 0.3, 0.4};
    page.plates = {plate};
    looking::LookFacts facts;
    facts.job = "<b>.ps";
    facts.loupe = looking::kLoupeName;
    facts.pages = {page};
    return facts;
}

std::string sheetsIn(const std::string &html)
{
    const std::string start = "id=\"sheets\">", end = "</script>";
    const size_t at = html.find(start) + start.size();
    return html.substr(at, html.find(end, at) - at);
}

TEST(LoupePage, SaysWhereEachTileIsAndTheGrid)
{
    EXPECT_EQ(
        sheetsIn(looking::loupeOf(zoomed(), kNone)),
        R"({"tile": 512, "tiles": "loupe/", "pages": [{"number": 1, "width": 700, "height": 400, "dpi": 1200, )"
        R"("place": [120, 240, 360, 480], "plates": [{"name": "\u003c/script>\u003ci>Gold", "colour": "#c89600", )"
        R"("folder": "page-1-gold", "grid": {"frequency": 60, "angle": 22.5, "x": 600, "y": 300, "lines": false, )"
        R"("words": "60 lpi, 22.5°"}, "levels": [{"across": 2, "down": 1, "inked": "gA=="}, )"
        R"({"across": 1, "down": 1, "inked": "gA=="}]}]}]})");
}

TEST(LoupePage, IsOnlyTextOfTheJobAndAllThatItNeeds)
{
    const std::string html = looking::loupeOf(zoomed(), kNone);
    EXPECT_NE(html.find("<h1>&lt;b&gt;.ps</h1>"), std::string::npos);
    EXPECT_EQ(html.find("<b>"), std::string::npos);
    EXPECT_EQ(html.find("<i>Gold"), std::string::npos);
    for (const char *outside : {" src=", "@import", "<link"})
        EXPECT_EQ(html.find(outside), std::string::npos) << outside;
    EXPECT_NE(html.find("Redistribution and use in source and binary forms"), std::string::npos);
    // A script that ended too soon would be text.
    size_t ends = 0;
    for (size_t at = html.find("</script"); at != std::string::npos; at = html.find("</script", at + 1))
        ++ends;
    EXPECT_EQ(ends, 3u);
}

TEST(LoupePage, AGridIsOfLinesWhereThePlateIs)
{
    looking::LookFacts facts = zoomed();
    facts.pages[0].plates[0].asked.shape = "LineX";
    EXPECT_NE(sheetsIn(looking::loupeOf(facts, kNone)).find("\"lines\": true"), std::string::npos);
    facts.pages[0].plates[0].asked.angle.reset();
    EXPECT_NE(sheetsIn(looking::loupeOf(facts, kNone)).find("\"grid\": null"), std::string::npos);
}

TEST(LoupePage, TheProofsPageLeadsToIt)
{
    looking::LookFacts facts = zoomed();
    const std::string html = looking::reportOf(facts);
    EXPECT_NE(html.find("<a href=\"loupe.html#page-1\"><img"), std::string::npos);
    EXPECT_NE(html.find("<a href=\"loupe.html#page-1-dots\">"), std::string::npos);
    facts.loupe.clear();
    EXPECT_EQ(looking::reportOf(facts).find("loupe.html"), std::string::npos);
    facts = zoomed();
    facts.pages[0].plates[0].tiles = {};
    EXPECT_EQ(looking::reportOf(facts).find("loupe.html"), std::string::npos);
}

// A folder of a proof with a loupe, in which something else lies at `name`.
bool isProofWith(const std::string &name, bool replacing = false)
{
    const TemporaryFolder folder;
    fs::create_directories(folder / "proof/loupe/page-1-gold/0");
    for (const char *tile : {"0/0-0.png", "0/1-0.png"})
        writeFile(folder / "proof/loupe/page-1-gold" / tile, "a picture");
    looking::LookFacts facts = zoomed();
    riders::looking::writeLoupe(folder / "proof/loupe.html", facts, kNone);
    riders::looking::writeReport(folder / "proof/proof.html", facts);
    if (!name.empty()) {
        fs::create_directories((folder / "proof" / name).parent_path());
        writeFile(folder / "proof" / name, "precious");
        if (replacing)
            fs::last_write_time(folder / "proof" / name,
                                fs::last_write_time(folder / "proof/proof.html") + std::chrono::seconds(1));
    }
    return looking::isLookFolder(folder / "proof");
}

TEST(LoupePage, ItsFolderIsKnownAgainAndNothingElseInIt)
{
    EXPECT_TRUE(isProofWith(""));
    for (const char *name :
         {"loupe/mine.png", "loupe/page-2-gold/0/0-0.png", "loupe/page-1-gold/0/mine.png",
          "loupe/page-1-gold/mine/0-0.png", "loupe/page-1-gold/0/0-0.tif", "loupe/page-1-gold/0/1/2-2.png"})
        EXPECT_FALSE(isProofWith(name)) << name;
    EXPECT_FALSE(isProofWith("loupe/page-1-gold/0/0-0.png", true));
    EXPECT_FALSE(isProofWith("loupe.html", true));
}

}  // namespace
