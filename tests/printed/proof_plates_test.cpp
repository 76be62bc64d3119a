// A proof's films are the plates that one plain run of the interpreter's device for separations gives.
#include <map>
#include <set>

#include "host/proof_support.h"
#include "io/interruption.h"
#include "make/plates_piece.h"
#include "plates/files/plate_files.h"
#include "plates/files/plate_names.h"
#include "plates/job/prepared_job.h"
#include "plates/rendering/spot_inks.h"
#include "printed/postscript_support.h"
#include "support/command.h"

namespace {

namespace plates = riders::plates;

using Names = std::vector<std::string>;

const std::string kGold = "/gold {[/Separation (Gold) /DeviceCMYK {0 exch dup 0.3 mul exch 0}] setcolorspace "
                          "setcolor} bind def\n";
const std::string kFourScreens =
    "/dot {dup mul exch dup mul add 1 exch sub} bind def\n"
    "60 15 {dot} 60 75 {dot} 60 0 {dot} 60 45 {dot} setcolorscreen\n" +
    kGold + ".3 .2 .4 .1 setcmykcolor 12.1 12.2 120 120 rectfill .5 gold 20 20 30.3 30.7 rectfill\n";

std::string page(const std::string &painting)
{
    return "<</PageSize [144 144]>> setpagedevice gsave " + kFourScreens + painting + "\ngrestore showpage\n";
}

class ProofPlatesTest : public ProofTest {
protected:
    using Bits = std::map<std::string, std::vector<std::uint8_t>>;

    // The names of films with ink, and their bits.
    Bits plain(const std::string &job, int pages)
    {
        const std::filesystem::path plates = folder / "plain";
        std::filesystem::create_directory(plates);
        writeFile(folder / "plain.ps", job);
        const CommandResult run = runProgram({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=tiffsep1",
                                              "-sCompression=none", "-r300", "-sOutputFile=plain/%d.tif", "-c",
                                              "<</Install {{} settransfer}>> setpagedevice", "-f", "plain.ps"},
                                             "", folder.path());
        EXPECT_EQ(run.status, 0) << run.out << run.err;
        Bits films;
        for (int page = 1; page <= pages; ++page) {
            std::set<std::string> taken;
            for (const plates::PlateFile &file : plates::plateFiles(plates, page))
                if (const plates::BitPlate plate = plates::readPlate(file.file); plate.hasInk())
                    films["page-" + std::to_string(page) + "-" +
                          plates::fileNameFor(plates::plateNameFrom(file.plate, 0), taken) + ".tif"] = plate.bits;
        }
        return films;
    }

    void expectPlain(const Names &pages)
    {
        const std::string job = smallJob(pages);
        ASSERT_EQ(proofOf(request(job)), "done");
        const Bits films = plain(job, static_cast<int>(pages.size()));
        EXPECT_EQ(files(out / "films").size(), films.size());
        EXPECT_GT(films.size(), 4 * pages.size());
        for (const auto &[name, bits] : films)
            EXPECT_EQ(readFilm(out / "films" / name).bits.bits, bits) << name;
    }

    // Pages whose inks are rendered apart.
    std::set<size_t> apart(const Names &pages)
    {
        const riders::proof::ProofRequest asked = request(smallJob(pages));
        const std::filesystem::path work = folder / "work";
        std::filesystem::create_directories(work);
        riders::io::Interruption interruption;
        const plates::PreparedJob prepared = plates::prepareJob(asked.job, {}, work);
        riders::io::Workers workers(2);
        const plates::Survey survey = plates::surveyJob(
            {prepared, {}, asked.limits, work, [] {}, [](const plates::PageInTints &) {}}, workers);
        return plates::lookAtSpotInks({prepared, survey, asked.limits}, asked.dpi, work, workers).apart;
    }
};

const Names kSimple = {
    // Each way a colour is set, over and under the spot ink.
    page(".2 .3 .4 setrgbcolor 30 30 10 10 rectfill .5 setgray 40.3 40 4 20 rectfill .7 .5 .4 sethsbcolor "
         "25 25 5 5 rectfill /DeviceRGB setcolorspace .1 .2 .3 setcolor 25 25 10 10 rectfill 0 .5 0 0 "
         "setcmykcolor 60 20 20 20 rectfill .3 gold 65 25 40 10 rectfill"),
    page("/Times-Roman findfont 20 scalefont setfont .8 gold 15 90 moveto (Gold text) show 0 setgray 1.3 "
         "setlinewidth 10 10 moveto 130 140 lineto stroke .6 gold 130 10 moveto 10 140 lineto stroke"),
    // Other spot inks, and process inks by name.
    page("[/Separation (Gr\\374n 1%) cvn /DeviceRGB {0 0}] setcolorspace .5 setcolor 60 20 20 20 rectfill .4 gold "
         "65 25 40 10 rectfill [/Separation /Cyan /DeviceRGB {0 0}] setcolorspace .5 setcolor 80 20 20 20 "
         "rectfill"),
    // Pictures in grey, in the spot ink, and in steps of it.
    page("gsave 80 80 translate 40 40 scale 2 2 8 [2 0 0 2 0 0] {<0055aaff>} image grestore "
         ".5 gold gsave 30 90 translate 40 40 scale "
         "<</ImageType 1 /Width 2 /Height 2 /BitsPerComponent 8 /Decode [0 1] /ImageMatrix [2 0 0 2 0 0] "
         "/DataSource {<1155aaee>}>> image grestore "
         "[/Indexed [/Separation /Gold /DeviceCMYK {0 exch dup 0.3 mul exch 0}] 3 <004080ff>] setcolorspace "
         "30 60 translate 40 20 scale <</ImageType 1 /Width 8 /Height 2 /BitsPerComponent 2 /Decode [0 3] "
         "/ImageMatrix [8 0 0 2 0 0] /DataSource {<1b1b1b1b>}>> image"),
    // The ink has a screen of its own.
    page("/one {/f exch def /a exch def <</HalftoneType 1 /Frequency f /Angle a /SpotFunction {dup mul exch dup "
         "mul add "
         "1 exch sub}>>} def <</HalftoneType 5 /Default 45 60 one /Black 75 40 one /Gold 22 50 one>> sethalftone "
         ".5 setgray 12 70 60 60 rectfill .5 gold 80 70 60 60 rectfill"),
};

// What paints in several inks at a time, or bypasses what separates them.
const Names kOther = {
    page("gsave 80 80 translate 40 40 scale 2 2 8 [2 0 0 2 0 0] {<00112233445566778899aabbccddeeff>} false 4 "
         "colorimage grestore"),
    page("[/DeviceN [/Gold /Cyan] /DeviceCMYK {0 0}] setcolorspace .3 .6 setcolor 60 20 20 20 rectfill"),
    page("[/Separation /Gold /DeviceCMYK {0 exch dup 0.3 mul exch 0}] systemdict /setcolorspace get exec "
         ".5 setcolor 60 20 20 20 rectfill"),
    page("grestore <</BeginPage {pop}>> setpagedevice gsave .1 setgray 5 5 50 50 rectfill .5 gold 20 20 60 60 "
         "rectfill "
         ".2 .3 .5 0 setcmykcolor 70 70 30 30 rectfill"),
    page("true setoverprint .5 gold 60 60 60 60 rectfill 0 0 .5 0 setcmykcolor 70 70 20 20 rectfill"),
};

// Rendered the quick way, in which each spot ink is painted as black: with its own screen.
TEST_F(ProofPlatesTest, HaveTheScreensThatARidersFileGivesThem)
{
    const std::string riders =
        riders::make::withPlates(composeRiders({.frequency = "60", .angle = "45", .spotBody = pieceBytes(16128)}),
                                 {{"Cyan", {}, 15}, {"Gold", 50, 30}});
    const Names pages = {riders + page(""), page(".8 gold 60 60 40 40 rectfill")};
    EXPECT_EQ(apart(pages), (std::set<size_t>{0, 1}));
    expectPlain(pages);
}

TEST_F(ProofPlatesTest, InksRenderedApartAreThePlainOnesBitForBit)
{
    expectPlain(kSimple);
    EXPECT_EQ(apart(kSimple), (std::set<size_t>{0, 1, 2, 3, 4}));
}

TEST_F(ProofPlatesTest, WhatCannotBeSeparatedIsThePlainAsWell)
{
    expectPlain(kOther);
    const std::set<size_t> found = apart(kOther);
    EXPECT_EQ(found.count(0), 0u);
    EXPECT_EQ(found.count(2), 0u);
}

// A job that paints in so many spot inks, a page of each twelve; the others it only names.
std::string jobOfInks(int painted, int named = 0)
{
    const auto ink = [](int number) {
        return "[/Separation (Ink " + std::to_string(number) +
               ") cvn /DeviceCMYK {0 exch 0 exch 0}] setcolorspace .5 setcolor ";
    };
    std::string painting;
    for (int i = 0; i < painted; ++i)
        painting += ink(i) + std::to_string(i % 12 * 12) + " " + std::to_string(i / 12 * 12) + " 9 9 rectfill\n";
    for (int i = painted; i < painted + named; ++i)
        painting += ink(i);
    return smallJob({smallPage(painting)});
}

TEST_F(ProofPlatesTest, TwentySevenSpotInksHaveAPlateEach)
{
    ASSERT_EQ(proofOf(request(jobOfInks(27))), "done");
    EXPECT_EQ(files(out / "films").size(), 27u);
    for (int i = 0; i < 27; ++i)
        EXPECT_NEAR(readFilm(out / ("films/page-1-ink-" + std::to_string(i) + ".tif")).ink(),
                    .5 * 81 / (144. * 144), .0005)
            << i;
    EXPECT_FALSE(std::filesystem::exists(out / "films/page-1-yellow.tif"));
}

TEST_F(ProofPlatesTest, MoreSpotInksAreRefusedByName)
{
    const std::string start = (folder / "job.ps").string();
    EXPECT_EQ(proofOf(request(jobOfInks(28))),
              start + ": page 1: has 28 spot inks, Ink 0, Ink 1, Ink 10, Ink 11, Ink 12 and others; plates can be "
                      "made of 27");
    EXPECT_EQ(proofOf(request(jobOfInks(1, 27))),
              start + ": names more than 27 spot inks, of which plates can be made");
    EXPECT_EQ(proofOf(request(jobOfInks(1, 60))),
              start + ": names more than 60 spot inks; plates can be made of 27");
    EXPECT_EQ(left(), Names{"job.ps"});
}

TEST_F(ProofPlatesTest, SpotInksNamedAsProcessInksInOtherLettersKeepTheirNames)
{
    std::string painting;
    for (const char *ink : {"cyan", "CYAN", "black"})
        painting +=
            "[/Separation (" + std::string(ink) +
            ") cvn /DeviceCMYK {0 exch 0 exch 0}] setcolorspace .5 setcolor 12 0 translate 0 12 9 9 rectfill\n";
    const std::string page = pageOf(smallJob({smallPage(painting)}));
    EXPECT_EQ(files(out / "films"), (Names{"page-1-black-2.tif", "page-1-cyan-2.tif", "page-1-cyan-3.tif"}));
    for (const char *name : {"</span>cyan<", "</span>CYAN<", "</span>black<"})
        EXPECT_NE(page.find(name), std::string::npos) << name;
}

TEST_F(ProofPlatesTest, NumberAtTheEndOfSuchANameIsKept)
{
    const std::string page = pageOf(smallJob({smallPage("[/Separation /CYAN1 /DeviceCMYK {0 exch 0 exch 0}] "
                                                        "setcolorspace .5 setcolor 12 12 9 9 rectfill\n")}));
    EXPECT_NE(page.find("</span>CYAN1<"), std::string::npos);
}

}  // namespace
