// Films as a user makes them, of jobs that Ghostscript runs: dot by dot those that the interpreter's separations
// have by the plain thresholds.
#include <tiffio.h>

#include <algorithm>
#include <memory>

#include "film/dot_shapes.h"
#include "host/proof_support.h"
#include "plates/files/plate_files.h"
#include "screening/thresholds.h"
#include "support/command.h"

namespace fs = std::filesystem;

namespace {

namespace screening = riders::screening;

using Names = std::vector<std::string>;

// Tints of all four inks and a spot ink, a ramp, a line; 2.2 by 1.6 inches, not a whole number of bytes.
constexpr const char *kJob = "%!PS-Adobe-3.0\n%%Pages: 2\n%%EndComments\n"
                             "<< /PageSize [158 115] >> setpagedevice\n"
                             "%%Page: 1 1\n"
                             "0.5 0.3 0.2 0.1 setcmykcolor 10 10 60 95 rectfill\n"
                             "0 1 50 {dup 50 div 0 0 0 4 -1 roll setcmykcolor 75 add 50 1 50 rectfill} for\n"
                             "[/Separation (Gold Ink) /DeviceCMYK {dup 0.2 mul exch dup 0.3 mul exch 0.9 mul 0}]\n"
                             "setcolorspace 0.4 setcolor 75 10 70 30 rectfill showpage\n"
                             "%%Page: 2 2\n"
                             "0 0 0 1 setcmykcolor 10 10 moveto 100 80 lineto stroke showpage\n"
                             "%%EOF\n";

struct Read {
    riders::plates::BitPlate bits;
    double across = 0, down = 0;
};

Read readTiff(const fs::path &file)
{
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen(file.c_str(), "r"), TIFFClose);
    if (!tiff)
        throw std::runtime_error(file.string() + " is no TIFF");
    std::uint32_t width = 0, height = 0;
    float across = 0, down = 0;
    TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height);
    TIFFGetField(tiff.get(), TIFFTAG_XRESOLUTION, &across);
    TIFFGetField(tiff.get(), TIFFTAG_YRESOLUTION, &down);
    Read read{riders::plates::BitPlate(static_cast<int>(width), static_cast<int>(height)), across, down};
    for (int y = 0; y < read.bits.height; ++y)
        if (TIFFReadScanline(tiff.get(), read.bits.row(y), static_cast<std::uint32_t>(y)) != 1)
            throw std::runtime_error(file.string() + " cannot be read");
    return read;
}

struct Asked {
    screening::Screen screen;
    std::string shape = "Round";
};

class FilmTest : public ::testing::Test {
protected:
    FilmTest() { writeFile(folder / "job.ps", kJob); }

    CommandResult film(std::vector<std::string> arguments, const std::string &job = "job.ps")
    {
        arguments.insert(arguments.begin(), {"film", job});
        return runRiders(arguments, "", folder.path());
    }

    Names names(const fs::path &of) const
    {
        Names found;
        for (const fs::directory_entry &entry : fs::directory_iterator(of))
            found.push_back(entry.path().filename());
        std::sort(found.begin(), found.end());
        return found;
    }

    // The interpreter's own separations, "s1(Cyan).tif" and so on.
    void separate(const std::string &resolution, const std::string &job = "job.ps")
    {
        const CommandResult result = runProgram({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=tiffsep",
                                                 "-r" + resolution, "-sOutputFile=s%d.tif", "-sCompression=none",
                                                 "-c", "<< /Install {{} settransfer} >> setpagedevice", "-f", job},
                                                "", folder.path());
        ASSERT_EQ(result.status, 0) << result.err;
    }

    // Slowly, pixel by pixel.
    void expectFilm(const fs::path &film, const std::string &separation, const Asked &asked) const
    {
        const Read read = readTiff(film);
        const riders::plates::TintPlate tones = riders::plates::readTints(folder / separation);
        ASSERT_EQ(read.bits.width, tones.width);
        ASSERT_EQ(read.bits.height, tones.height);
        const screening::Thresholds thresholds = riders::film::thresholdsOf(
            riders::film::dotShapeNamed(asked.shape), asked.screen, {read.across, read.down});
        int ink = 0;
        for (int y = 0; y < tones.height; ++y)
            for (int x = 0; x < tones.width; ++x) {
                const bool expected = tones.row(y)[x] >= thresholds.rowOf(y)[thresholds.placeIn(x, y)];
                ASSERT_EQ(read.bits.at(x, y), expected) << film << " at " << x << ", " << y;
                ink += expected;
            }
        EXPECT_GT(ink, 0);
    }

    TemporaryFolder folder;
};

TEST_F(FilmTest, EveryPlateHasTheDotsOfItsOwnScreen)
{
    const CommandResult result = film({"--dpi", "600", "--frequency", "50", "--plate", "Cyan:@15", "--plate",
                                       "Magenta:60@75,Ellipse", "--plate", "Gold Ink:45@22.5,Line", "-o", "out"});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(names(folder / "out"), (Names{"job_p01_Black.tif", "job_p01_Cyan.tif", "job_p01_Gold-Ink.tif",
                                            "job_p01_Magenta.tif", "job_p01_Yellow.tif", "job_p02_Black.tif"}));
    separate("600");
    expectFilm(folder / "out/job_p01_Cyan.tif", "s1(Cyan).tif", {{50, 15}});
    expectFilm(folder / "out/job_p01_Magenta.tif", "s1(Magenta).tif", {{60, 75}, "Ellipse"});
    expectFilm(folder / "out/job_p01_Yellow.tif", "s1(Yellow).tif", {{50, 0}});
    expectFilm(folder / "out/job_p01_Black.tif", "s1(Black).tif", {{50, 45}});
    expectFilm(folder / "out/job_p01_Gold-Ink.tif", "s1(Gold Ink).tif", {{45, 22.5}, "Line"});
    expectFilm(folder / "out/job_p02_Black.tif", "s2(Black).tif", {{50, 45}});
    EXPECT_NE(result.out.find("out/job_p01_Cyan.tif: page 1, Cyan: 50 lpi at 15°, Round; measured "),
              std::string::npos);
    EXPECT_NE(
        result.out.find("out/job_p02_Black.tif: page 2, Black: 50 lpi at 45°, Round; no tint to measure it on\n"),
        std::string::npos);
    EXPECT_NE(result.out.find("no film of plates without ink (page, plate): 2 Cyan, 2 Magenta, 2 Yellow\n"),
              std::string::npos);
}

TEST_F(FilmTest, PixelsNeedNotBeSquare)
{
    EXPECT_EQ(film({"--dpi", "720x360", "--frequency", "40", "--angle", "22.5", "-o", "out"}).err, "");
    separate("720x360");
    expectFilm(folder / "out/job_p01_Cyan.tif", "s1(Cyan).tif", {{40, 22.5}});
    expectFilm(folder / "out/job_p01_Gold-Ink.tif", "s1(Gold Ink).tif", {{40, 22.5}});
}

// The sides of the film, by turning the plain one.
TEST_F(FilmTest, AFilmIsNegativeMirroredAndTurned)
{
    writeFile(folder / "tint.ps", "%!PS\n<< /PageSize [158 115] >> setpagedevice .7 setgray 10 10 60 95 rectfill "
                                  "0 setgray 100 80 30 30 rectfill showpage\n");
    const Names plain = {"--dpi", "150", "--frequency", "15", "--angle", "0", "--quiet"};
    const auto with = [&](Names more) {
        more.insert(more.begin(), plain.begin(), plain.end());
        const CommandResult result = film(more, "tint.ps");
        EXPECT_EQ(result.out + result.err, "");
    };
    with({"-o", "plain"});
    with({"-o", "negative", "--negative"});
    with({"-o", "down", "--emulsion", "down"});
    with({"-o", "mirrored", "--mirror"});
    with({"-o", "turned", "--rotate", "180"});
    const auto bits = [&](const std::string &of) { return readTiff(folder / of / "tint_p01_Black.tif").bits; };
    const riders::plates::BitPlate upright = bits("plain"), negative = bits("negative"), down = bits("down"),
                                   turned = bits("turned");
    const int width = upright.width, height = upright.height;
    ASSERT_EQ(turned.width, width);
    int ink = 0, turnedInk = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            ASSERT_NE(negative.at(x, y), upright.at(x, y));
            ASSERT_EQ(down.at(x, y), upright.at(width - 1 - x, y));
            ink += upright.at(x, y);
            turnedInk += turned.at(x, y);
        }
    EXPECT_EQ(bits("mirrored").bits, down.bits);
    EXPECT_NEAR(turnedInk, ink, ink * 0.02);
    // The black square, at the right near the top.
    const int right = 115 * 150 / 72, top = 20 * 150 / 72;
    EXPECT_TRUE(upright.at(right, top));
    EXPECT_FALSE(upright.at(width - right, height - top));
    EXPECT_TRUE(turned.at(width - right, height - top));
    const Read quarter = [&] {
        with({"-o", "quarter", "--rotate", "90"});
        return readTiff(folder / "quarter/tint_p01_Black.tif");
    }();
    EXPECT_EQ(quarter.bits.width, height);
    EXPECT_EQ(quarter.bits.height, width);
    EXPECT_TRUE(quarter.bits.at(top, width - right));
}

TEST_F(FilmTest, TheScreenIsTheRidersFilesOrTheJobs)
{
    ASSERT_EQ(runRiders({"make", "-o", "film.riders", "--frequency", "35", "--angle", "30", "--spot", "line"}, "",
                        folder.path())
                  .status,
              0);
    const CommandResult riders = film({"--dpi", "300", "--pages", "1", "--riders", "film.riders", "-o", "out"});
    EXPECT_EQ(riders.err, "");
    EXPECT_NE(riders.out.find("out/job_p01_Magenta.tif: page 1, Magenta: 35 lpi at 30°, Line; measured 35"),
              std::string::npos)
        << riders.out;
    // What is chosen besides wins.
    const CommandResult chosen = film(
        {"--dpi", "300", "--pages", "1", "--riders", "film.riders", "--plate", "Cyan:@15", "-o", "out", "--json"});
    EXPECT_NE(chosen.out.find(R"("plate": "Cyan", "asked": {"frequency": 35, "angle": 15, "shape": "Line", )"
                              R"("by": "you"})"),
              std::string::npos)
        << chosen.out;
    EXPECT_NE(
        chosen.out.find(R"("asked": {"frequency": 35, "angle": 30, "shape": "Line", "by": "the riders file"})"),
        std::string::npos);
    writeFile(folder / "own.ps", smallJob({smallPage(".5 setgray 10 10 120 120 rectfill", 40, 20)}));
    EXPECT_EQ(film({"--dpi", "300", "-o", "own"}, "own.ps").out.substr(0, 78),
              "own/own_p01_Black.tif: page 1, Black: 40 lpi at 20°, Round; measured 40 lpi a");
    writeFile(folder / "none.ps", "%!PS\n.5 setgray 10 10 120 120 rectfill showpage\n");
    EXPECT_EQ(film({"--dpi", "300", "-o", "none"}, "none.ps").out.substr(0, 61),
              "none/none_p01_Black.tif: page 1, Black: 60 lpi at 45°, Round");
}

TEST_F(FilmTest, AUsersSpotFunctionIsRunInTheInterpreter)
{
    writeFile(folder / "mine.spot", "%!KT1_Spot\rabs exch abs add 1 exch sub");
    const CommandResult result = film({"--dpi", "300", "--pages", "1", "--spot", "./mine.spot", "--frequency",
                                       "40", "--angle", "10", "-o", "out"});
    EXPECT_EQ(result.err, "");
    separate("300");
    expectFilm(folder / "out/job_p01_Cyan.tif", "s1(Cyan).tif", {{40, 10}, folder / "mine.spot"});
    writeFile(folder / "wrong.spot", "%!KT1_Spot\r(x) deletefile 0");
    const CommandResult wrong = film({"--spot", "./wrong.spot", "-o", "wrong"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_EQ(wrong.err.substr(0, 47), "riders film: page 1, Cyan: the dot shape wrong.");
    EXPECT_FALSE(fs::exists(folder / "wrong"));
}

TEST_F(FilmTest, WhatIsNotOursIsNotReplaced)
{
    const Names options = {"--dpi", "100", "--frequency", "10", "-o", "out", "--pages", "2", "--quiet"};
    EXPECT_EQ(film(options).status, 0);
    EXPECT_EQ(film(options).status, 0);  // our own are
    writeFile(folder / "out/job_p02_Black.tif", "somebody's");
    const CommandResult refused = film(options);
    EXPECT_EQ(refused.err,
              "riders film: out/job_p02_Black.tif: exists and was not made by riders; name another place "
              "with -o, or replace it with --force\n");
    EXPECT_EQ(contentsOf(folder / "out/job_p02_Black.tif"), "somebody's");
    Names forced = options;
    forced.emplace_back("--force");
    EXPECT_EQ(film(forced).status, 0);
    EXPECT_NE(contentsOf(folder / "out/job_p02_Black.tif"), "somebody's");
    writeFile(folder / "file", "");
    EXPECT_EQ(film({"-o", "file"}).err, "riders film: file: exists and is not a folder; name another with -o\n");
}

TEST_F(FilmTest, WhatWasMadeBeforeAFailureIsWhole)
{
    std::string job = kJob;
    job.replace(job.find("0 0 0 1 setcmykcolor 10 10 moveto"), 0, "undefinedword ");
    writeFile(folder / "fails.ps", job);
    const CommandResult result = film({"--dpi", "100", "--frequency", "10", "-o", "out"}, "fails.ps");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "riders film: fails.ps: page 2: the interpreter said: /undefined in undefinedword\n");
    EXPECT_FALSE(fs::exists(folder / "out"));  // the survey has met it
}

TEST_F(FilmTest, FilmsThatAreMadeStayWhereTheNextCannotBe)
{
    writeFile(folder / "two.ps", smallJob({smallPage(".5 setgray 9 9 90 90 rectfill"),
                                           "40 20 {mul sin} setscreen .5 setgray 9 9 90 90 rectfill showpage\n"}));
    const CommandResult loose = film({"--dpi", "300", "-o", "loose"}, "two.ps");
    EXPECT_EQ(loose.status, 0);
    EXPECT_EQ(loose.err,
              "riders film: page 2, Black: the job has a dot shape of its own; the dots are Round instead: "
              "name one with --spot\n");
    const CommandResult strict = film({"--dpi", "300", "-o", "out", "--strict"}, "two.ps");
    EXPECT_EQ(strict.status, 1);
    EXPECT_EQ(strict.err,
              "riders film: page 2, Black: the job has a dot shape of its own; the dots are Round instead: "
              "name one with --spot; the film made before is whole\n");
    EXPECT_EQ(strict.out.substr(0, 21), "out/two_p01_Black.tif");
    EXPECT_EQ(names(folder / "out"), Names{"two_p01_Black.tif"});
    EXPECT_EQ(readTiff(folder / "out/two_p01_Black.tif").bits.width, 600);
}

TEST_F(FilmTest, CtrlCLeavesNothingUnfinished)
{
    std::string job = "%!PS\n<< /PageSize [36 36] >> setpagedevice\n";
    for (int page = 0; page < 40; ++page)
        job += ".5 setgray 4 4 28 28 rectfill showpage\n";
    writeFile(folder / "long.ps", job + "{} loop\n");
    const CommandResult result =
        runProgram({"bash", "-c",
                    "timeout -s INT 2 " RIDERS_BINARY_DIR "/riders film long.ps --dpi 300 -o out; echo $?; ls -A"},
                   "", folder.path());
    EXPECT_EQ(result.out.substr(0, 4), "124\n");
    EXPECT_EQ(names(folder.path()), (Names{"job.ps", "long.ps"}));
}

TEST_F(FilmTest, MarksAreOnAllPlatesInTheSamePlace)
{
    EXPECT_EQ(
        film({"--dpi", "300", "--pages", "1", "--frequency", "30", "--marks", "--sheet", "a5", "-o", "out"}).err,
        "");
    std::size_t same = 0;
    const Read cyan = readTiff(folder / "out/job_p01_Cyan.tif"),
               black = readTiff(folder / "out/job_p01_Black.tif");
    EXPECT_EQ(cyan.bits.width, black.bits.width);
    EXPECT_NEAR(std::max(cyan.bits.width, cyan.bits.height) / 300.0, 210 / 25.4, 0.01);
    EXPECT_NEAR(std::min(cyan.bits.width, cyan.bits.height) / 300.0, 148 / 25.4, 0.01);
    EXPECT_EQ(film({"--dpi", "300", "--pages", "1", "--frequency", "30", "--marks", "-o", "near"}).err, "");
    const Read one = readTiff(folder / "near/job_p01_Cyan.tif"),
               other = readTiff(folder / "near/job_p01_Black.tif");
    // Above the page there are crop and register marks only.
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < one.bits.width; ++x) {
            EXPECT_EQ(one.bits.at(x, y), other.bits.at(x, y)) << x << ", " << y;
            same += one.bits.at(x, y);
        }
    EXPECT_GT(same, 0U);
    const CommandResult small = film({"--dpi", "300", "--marks", "--sheet", "50x50mm", "-o", "small"});
    EXPECT_EQ(small.status, 1);
    EXPECT_NE(small.err, "");
    EXPECT_FALSE(fs::exists(folder / "small"));
}

TEST_F(FilmTest, PdfAndEpsMakeFilms)
{
    ASSERT_EQ(runProgram({"gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pdfwrite", "-o", "job.pdf", "job.ps"}, "",
                         folder.path())
                  .status,
              0);
    EXPECT_EQ(film({"--dpi", "300", "--frequency", "30", "--pages", "1", "-o", "out"}, "job.pdf").err, "");
    separate("300", "job.pdf");
    expectFilm(folder / "out/job_p01_Cyan.tif", "s1(Cyan).tif", {{30, 15}});
    expectFilm(folder / "out/job_p01_Gold-Ink.tif", "s1(Gold Ink).tif", {{30, 45}});
    writeFile(folder / "small.eps", "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 10 10 110 60\n%%EndComments\n"
                                    "0.5 0 0 0 setcmykcolor 20 20 80 30 rectfill\n%%EOF\n");
    EXPECT_EQ(film({"--dpi", "300", "--frequency", "30", "-o", "eps"}, "small.eps").err, "");
    const Read eps = readTiff(folder / "eps/small_p01_Cyan.tif");
    EXPECT_NEAR(eps.bits.width, 100 / 72.0 * 300, 2);
    EXPECT_NEAR(eps.bits.height, 50 / 72.0 * 300, 2);
}

// The interpreter adds numbers to such names, and the job's own may end in the same.
TEST_F(FilmTest, InksNamedAsProcessInksInOtherLettersAreKeptApart)
{
    const auto square = [](const std::string &ink, int left) {
        return "[/Separation (" + ink + ") cvn /DeviceCMYK {0 exch 0 exch 0}] setcolorspace .5 setcolor " +
               std::to_string(left) + " 12 29 29 rectfill\n";
    };
    for (const char *second : {"CYAN", "CYAN1"}) {
        SCOPED_TRACE(second);
        writeFile(folder / "job.ps", "%!PS\n<< /PageSize [72 72] >> setpagedevice\n" + square("cyan", 1) +
                                         square(second, 31) + "showpage\n");
        const CommandResult result = film({"--dpi", "100", "--frequency", "10", "--force", "-o", "out"});
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(names(folder / "out"), (Names{"job_p01_CYAN-2.tif", "job_p01_cyan-3.tif"}));
        const Read left = readTiff(folder / "out/job_p01_cyan-3.tif"),
                   right = readTiff(folder / "out/job_p01_CYAN-2.tif");
        int leftInk = 0, rightInk = 0, wrong = 0;
        for (int y = 0; y < left.bits.height; ++y)
            for (int x = 0; x < left.bits.width; ++x) {
                leftInk += left.bits.at(x, y);
                rightInk += right.bits.at(x, y);
                wrong += x < 42 ? right.bits.at(x, y) : left.bits.at(x, y);
            }
        EXPECT_GT(leftInk, 500);
        EXPECT_GT(rightInk, 500);
        EXPECT_EQ(wrong, 0);
    }
}

TEST_F(FilmTest, WrongWordsAreWrongUsage)
{
    for (const Names &wrong :
         {Names{"--dpi", "12"}, Names{"--dpi", "720x"}, Names{"--rotate", "45"}, Names{"--emulsion", "left"},
          Names{"--mirror", "--emulsion", "up"}, Names{"--compression", "lzw"}, Names{"--spot", ""}})
        EXPECT_EQ(film(wrong).status, 2) << wrong[0];
    for (const auto &[option, value, said] :
         {std::tuple("--frequency", "abc",
                     "expected a frequency from 1 to 999 lines per inch with --frequency, not "
                     "\"abc\""),
          std::tuple("--plate", "Cyan",
                     "--plate \"Cyan\": expected a colon after the plate's name, as in "
                     "NAME:LPI@ANGLE,SHAPE"),
          std::tuple("--spot", "roundish",
                     "there is no dot shape and no file \"roundish\"; riders shapes lists the shapes"),
          std::tuple("--frequency", "700", "page 1, Cyan: 700 lines per inch need 1400 dpi or more, not 1200"),
          std::tuple("--sheet", "a99", ""),
          std::tuple("--pages", "7",
                     "job.ps: there is no page 7; the job has 2 "
                     "pages")}) {
        const CommandResult result = film({option, value});
        EXPECT_EQ(result.status, 1) << option;
        if (*said != 0) {
            EXPECT_EQ(result.err, "riders film: " + std::string(said) + "\n");
        }
        EXPECT_EQ(names(folder.path()), Names{"job.ps"}) << option;
    }
}

}  // namespace
