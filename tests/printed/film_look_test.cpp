// The page to look at of films: its pictures are the films' own dots, its figures what was measured on them.
#include <algorithm>

#include "host/proof_support.h"
#include "looking/look_folder.h"
#include "support/command.h"
#include "toolbox/host/picture.h"

namespace fs = std::filesystem;

namespace {

using riders::plates::BitPlate;
using Names = std::vector<std::string>;

// All four inks and a spot ink over each other, 2 by 1.5 inches; the second page has no ink.
constexpr const char *kLookedAtJob =
    "%!PS-Adobe-3.0\n%%Pages: 2\n%%EndComments\n%%Page: 1 1\n"
    "<< /PageSize [144 108] >> setpagedevice\n"
    ".5 .3 .2 .1 setcmykcolor 6 6 90 96 rectfill\n"
    "[/Separation (Gold Ink) /DeviceCMYK {dup .2 mul exch dup .4 mul exch .8 mul 0}]\n"
    "setcolorspace .4 setcolor 100 6 36 96 rectfill\n"
    "%%Page: 2 2\nshowpage showpage\n%%EOF\n";

bool has(const std::string &text, const std::string &part)
{
    return text.find(part) != std::string::npos;
}

// A film as what it prints: rows that are missing where pixels are not square are there twice.
BitPlate printed(const BitPlate &film, bool negativeAndMirrored, bool turned, int rowTimes)
{
    const int width = film.width, height = film.height;
    BitPlate plate(turned ? height : width, (turned ? width : height) * rowTimes);
    for (int y = 0; y < plate.height; ++y)
        for (int x = 0; x < plate.width; ++x) {
            const int row = y / rowTimes;
            const int filmX = turned ? row : x, filmY = turned ? height - 1 - x : row;
            if (film.at(negativeAndMirrored ? width - 1 - filmX : filmX, filmY) != negativeAndMirrored)
                plate.row(y)[x >> 3] |= static_cast<std::uint8_t>(0x80 >> (x & 7));
        }
    return plate;
}

bool isAt(const BitPlate &plate, const toolbox::Picture &picture, int left, int top)
{
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            const bool black = (picture.pixels[static_cast<size_t>(y * picture.width + x)] & 0xFFFFFF) == 0;
            if (plate.at(left + x, top + y) != black)
                return false;
        }
    return true;
}

// Whether the picture is a part of the plate, pixel by pixel.
bool isPartOf(const BitPlate &plate, const toolbox::Picture &picture)
{
    for (int top = 0; top + picture.height <= plate.height; ++top)
        for (int left = 0; left + picture.width <= plate.width; ++left)
            if (isAt(plate, picture, left, top))
                return true;
    return false;
}

class FilmLookTest : public ::testing::Test {
protected:
    FilmLookTest() { writeFile(folder / "job.ps", kLookedAtJob); }

    CommandResult riders(const Names &words) { return runRiders(words, "", folder.path()); }
    std::string page(const std::string &place = "out-look") const
    {
        return contentsOf(folder / place / "proof.html");
    }
    Names names() const
    {
        Names all;
        for (const fs::directory_entry &entry : fs::directory_iterator(folder.path()))
            all.push_back(entry.path().filename());
        std::sort(all.begin(), all.end());
        return all;
    }

    TemporaryFolder folder;
};

TEST_F(FilmLookTest, TheDotsAreThoseOfTheFilms)
{
    struct {
        Names words;
        bool negativeAndMirrored, turned;
        int rowTimes;
    } const all[] = {{{"--dpi", "400x200"}, false, false, 2},
                     {{"--dpi", "301", "--rotate", "90", "--negative", "--emulsion", "down"}, true, true, 1},
                     {{"--dpi", "300", "--marks"}, false, false, 1}};
    for (const auto &one : all) {
        Names words = {"film", "job.ps", "-o", "out", "--look", "--frequency", "30", "--pages", "1", "--quiet"};
        words.insert(words.end(), one.words.begin(), one.words.end());
        const CommandResult made = riders(words);
        ASSERT_EQ(made.out + made.err, "");
        for (const std::string plate : {"Cyan", "Magenta", "Yellow", "Black", "Gold-Ink"}) {
            const BitPlate film = readFilm(folder / "out" / ("job_p01_" + plate + ".tif")).bits;
            std::string file = "page-1-" + plate + ".png";
            std::transform(file.begin(), file.end(), file.begin(), [](char c) { return std::tolower(c); });
            const toolbox::Picture shown = toolbox::readPng(folder / "out-look/pictures" / file);
            ASSERT_GT(shown.width, 200) << plate;
            EXPECT_TRUE(isPartOf(printed(film, one.negativeAndMirrored, one.turned, one.rowTimes), shown))
                << plate << " at " << one.words[1];
        }
        fs::remove_all(folder / "out");
    }
}

TEST_F(FilmLookTest, ThePageSaysWhatWasMeasuredAndLinksTheFilms)
{
    const CommandResult made = riders(
        {"film", "job.ps", "-o", "my films%", "--look", "--mesh", "110", "--dpi", "600", "--frequency", "30"});
    EXPECT_EQ(made.err, "");
    EXPECT_TRUE(made.out.ends_with("to look at: my films%-look/proof.html\n")) << made.out;
    const std::string html = page("my films%-look");
    for (const char *said :
         {"2 pages at 600 dpi, as it is, on films screened by riders",
          "href=\"../my%20films%25/job_p01_Gold-Ink.tif\">TIFF</a>", "by you", "30&nbsp;lpi, 15°",
          "On a mesh of 110 threads per inch", "This page has no ink.", "256"})
        EXPECT_TRUE(has(html, said)) << said;
    EXPECT_FALSE(has(html, "Printed by Ghostscript")) << "films are not lightened";
    EXPECT_FALSE(has(html, "interpreter’s own"));
    // As the command line has it, to the digit.
    const std::string before = "Cyan: 30 lpi at 15°, Round; measured ";
    const size_t at = made.out.find(before) + before.size();
    ASSERT_GE(at, before.size()) << made.out;
    const std::string measured = made.out.substr(at, made.out.find(" lpi at", at) - at);
    EXPECT_TRUE(has(html, "<span class=\"values\">" + measured + "&nbsp;lpi")) << measured;
    // The ink looks as in a proof, which asks another device for it.
    const std::string gold = html.substr(html.find("Gold Ink") - 40, 40);
    EXPECT_EQ(riders({"proof", "job.ps", "--dpi", "300", "-o", "proof"}).status, 0);
    EXPECT_TRUE(has(page("proof"), gold)) << gold;
}

TEST_F(FilmLookTest, JsonNamesThePage)
{
    const CommandResult made = riders({"film", "job.ps", "-o", "out.pdf", "--look", "--dpi", "150", "--json"});
    EXPECT_TRUE(has(made.out, "\"look\": \"out-look/proof.html\"")) << made.out;
    EXPECT_TRUE(has(page(), "href=\"../out.pdf\">PDF</a>"));
    EXPECT_EQ(riders({"film", "job.ps", "-o", "out.pdf", "--dpi", "150", "--json"}).out.find("\"look\""),
              std::string::npos);
    EXPECT_EQ(names(), (Names{"job.ps", "out-look", "out.pdf"}));
}

TEST_F(FilmLookTest, AProofOfFilmsMakesNoFilms)
{
    const CommandResult made =
        riders({"proof", "--film", "job.ps", "--plate", "Cyan:25@30,Line", "--dpi", "600x300", "--pages", "1"});
    EXPECT_EQ(made.out, "job-proof/proof.html\n") << made.err;
    EXPECT_EQ(names(), (Names{"job-proof", "job.ps"}));
    const std::string html = page("job-proof");
    for (const char *said : {"1 page at 600x300 dpi", "25&nbsp;lpi, 30°", "Line", "the usual"})
        EXPECT_TRUE(has(html, said)) << said;
    EXPECT_FALSE(has(html, ".tif"));
    EXPECT_FALSE(fs::exists(folder / "job-proof/films"));
    // It is a proof like any other.
    EXPECT_EQ(riders({"proof", "job.ps", "--dpi", "150"}).status, 0);
    EXPECT_TRUE(fs::exists(folder / "job-proof/films"));
    EXPECT_EQ(riders({"proof", "--film", "job.ps", "--dpi", "150"}).status, 0);
    EXPECT_TRUE(riders::looking::isLookFolder(folder / "job-proof"));
}

// The tints' own screens, a pattern of 25.4 mm / 40 / (2 sin 5°).
TEST_F(FilmLookTest, PatternsBetweenFilmsAreShown)
{
    EXPECT_EQ(riders({"proof", "--film", "job.ps", "--plate", "Cyan:40@35", "--plate", "Magenta:40@45", "--plate",
                      "Black:40@5", "--dpi", "600", "--pages", "1"})
                  .status,
              0);
    const std::string html = page("job-proof");
    EXPECT_TRUE(has(html, "Cyan and Magenta make a pattern of 3.64 mm, where the rosette’s own is 1.")) << html;
    EXPECT_TRUE(has(html, "<a href=\"pictures/page-1-pattern-1.png\">"));
    const toolbox::Picture shown = toolbox::readPng(folder / "job-proof/pictures/page-1-pattern-1.png");
    ASSERT_GT(shown.width, 200);
    EXPECT_NE(std::count(shown.pixels.begin(), shown.pixels.end(), shown.pixels[0]),
              static_cast<long>(shown.pixels.size()));
}

TEST_F(FilmLookTest, WhatIsNotAPageToLookAtStays)
{
    fs::create_directory(folder / "out-look");
    writeFile(folder / "out-look/mine.txt", "mine");
    const CommandResult refused = riders({"film", "job.ps", "-o", "out", "--look", "--dpi", "150"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(has(refused.err, "out-look: exists and holds files that are not an earlier proof's"))
        << refused.err;
    EXPECT_EQ(contentsOf(folder / "out-look/mine.txt"), "mine");
    EXPECT_EQ(names(), (Names{"job.ps", "out-look"})) << "and no films were made";
}

TEST_F(FilmLookTest, AJobThatFailsMakesNoPageToLookAt)
{
    writeFile(folder / "bad.ps",
              std::string(kLookedAtJob).substr(0, std::string(kLookedAtJob).find("%%EOF")) + "1 0 div\n");
    EXPECT_EQ(riders({"film", "bad.ps", "-o", "out", "--look", "--dpi", "150"}).status, 1);
    EXPECT_EQ(riders({"proof", "--film", "bad.ps", "--dpi", "150"}).status, 1);
    EXPECT_EQ(names(), (Names{"bad.ps", "job.ps"}));
}

TEST_F(FilmLookTest, WrongWordsAreWrongUsage)
{
    for (const auto &[words, said] :
         {std::pair<Names, std::string>{{"proof", "job.ps", "--frequency", "30"}, "--frequency requires --film"},
          {{"proof", "job.ps", "--plate", "Cyan:30"}, "--plate requires --film"},
          {{"film", "job.ps", "--mesh", "110"}, "--mesh requires --look"},
          {{"proof", "job.ps", "--dpi", "71"}, "as in 1200 or 1440x720"}}) {
        const CommandResult refused = riders(words);
        EXPECT_EQ(refused.status, 2);
        EXPECT_TRUE(has(refused.err, said)) << refused.err;
    }
    const CommandResult refused = riders({"proof", "job.ps", "--dpi", "600x300"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(has(refused.err, "--dpi 600x300 is for --film only")) << refused.err;
    EXPECT_EQ(names(), Names{"job.ps"});
}

}  // namespace
