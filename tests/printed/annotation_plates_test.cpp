// The annotation where colours are separated: on each plate, so that films can be told apart; black elsewhere.
#include "host/proof_support.h"
#include "plates/files/plate_files.h"
#include "printed/postscript_support.h"

namespace {

namespace plates = riders::plates;

const std::string kOrange = "[/Separation (Orange) /DeviceCMYK {dup 0.5 mul exch 0 exch 0}] setcolorspace\n"
                            "0.5 setcolor 100 100 40 40 rectfill\n";
std::string annotation()
{
    return composeRiders({.annotation = "Hugging"});
}

using AnnotationPlates = ProofTest;

TEST_F(AnnotationPlates, EachHasIt)
{
    for (const std::string overprint : {"", "true setoverprint "}) {
        const auto result = runGhostscript(folder, "%!PS\n" + annotation() + overprint + kOrange + "showpage\n",
                                           "%d.tif", "-sDEVICE=tiffsep1 -r72 -g200x200");
        ASSERT_EQ(result.exitCode, 0) << result.output << result.errors;
        const auto plates = plates::plateFiles(folder.path(), 1);
        ASSERT_EQ(plates.size(), 5u);
        for (const plates::PlateFile &plate : plates) {
            const plates::BitPlate dots = plates::readPlate(plate.file);
            int ink = 0;
            for (int y = 200 - 32; y < 200 - 14; ++y)
                for (int x = 16; x < 60; ++x)
                    ink += dots.at(x, y);
            EXPECT_GT(ink, 80) << plate.plate;
        }
    }
}

TEST_F(AnnotationPlates, ElsewhereItIsBlack)
{
    for (const char *device : {"pgmraw", "ppmraw"}) {
        runGhostscript(folder, "%!PS\n" + annotation() + "showpage\n", "page",
                       "-r72 -g200x200 -sDEVICE=" + std::string(device));
        const std::string page = contentsOf(folder / "page");
        const auto pixels = page.end() - 200 * 200 * (device[1] == 'p' ? 3 : 1);
        EXPECT_GT(std::count(pixels, page.end(), '\0'), 80) << device;
        EXPECT_EQ(std::count_if(pixels, page.end(), [](char byte) { return byte != '\0' && byte != '\xFF'; }), 0)
            << device;
    }
}

// It makes no films of inks that the job does not have.
TEST_F(AnnotationPlates, ProofHasThoseOfTheJob)
{
    writeFile(folder / "riders", annotation());
    auto wanted = request(smallJob({smallPage(".5 0 0 .5 setcmykcolor 30 50 60 60 rectfill")}));
    wanted.riders = folder / "riders";
    ASSERT_EQ(proofOf(wanted), "done");
    const auto made = files();
    std::vector<std::string> films;
    for (const std::string &file : made)
        if (file.starts_with("films/"))
            films.push_back(file);
    EXPECT_EQ(films, (std::vector<std::string>{"films/page-1-black.tif", "films/page-1-cyan.tif"}));
}

}  // namespace
