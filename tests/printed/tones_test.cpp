// Pages in continuous tone are what the interpreter's own device for separations makes of them.
#include "host/proof_support.h"
#include "printed/tones_support.h"
#include "support/command.h"

namespace {

namespace plates = riders::plates;

const std::string kGold = "/gold {[/Separation (Gold) /DeviceCMYK {0 exch dup 0.3 mul exch 0}] setcolorspace "
                          "setcolor} bind def\n";

std::string page(const std::string &painting, const std::string &size = "144 144")
{
    return "<</PageSize [" + size + "]>> setpagedevice gsave " + painting + "\ngrestore showpage\n";
}

// Each way a colour is set, text, lines, pictures, overprint.
const std::vector<std::string> kPlain = {
    page(".2 .3 .4 setrgbcolor 30 30 10 10 rectfill .5 setgray 40.3 40 4 20 rectfill .7 .5 .4 sethsbcolor "
         "25 25 5 5 rectfill .25 .5 .75 .1 setcmykcolor 60 20 20 20 rectfill true setoverprint 0 0 .5 0 "
         "setcmykcolor "
         "70 30 30 30 rectfill"),
    page("/Times-Roman findfont 20 scalefont setfont 15 90 moveto (Some text) show .3 .6 0 0 setcmykcolor 1.3 "
         "setlinewidth 10 10 moveto 200 140 lineto stroke",
         "216 144.7"),
    page("gsave 20 20 translate 100 100 scale 4 4 8 [4 0 0 4 0 0] {<00112233445566778899aabbccddeeff>} false 4 "
         "colorimage grestore [/Separation /All /DeviceCMYK {dup dup dup}] setcolorspace .4 setcolor 130 0 5 144 "
         "rectfill << /ShadingType 2 /ColorSpace /DeviceCMYK /Coords [0 0 144 0] /Function << /FunctionType 2 "
         "/Domain [0 1] /C0 [0 0 0 0] /C1 [1 .5 .2 .7] /N 1 >> >> shfill"),
};

const std::vector<std::string> kInks = {
    page(kGold + ".5 gold 20 20 100 100 rectfill .2 .3 .5 0 setcmykcolor 70 70 30 30 rectfill true setoverprint "
                 ".3 .1 0 0 setcmykcolor 10 10 50 50 rectfill .9 gold 5 5 30 30 rectfill"),
    page("[/DeviceN [/Gold /Cyan (Gr\\374n 1%)] /DeviceCMYK {pop pop pop 0 0 0 0}] setcolorspace .3 .6 .2 "
         "setcolor 60 "
         "20 20 20 rectfill"),
    page("0 1 0 0 setcmykcolor 10 10 50 50 rectfill", "288 100"),
};

TEST_F(TonesTest, AreThoseOfPlainSeparations)
{
    writeFile(folder / "job.ps", smallJob(kPlain));
    expectPlain(folder / "job.ps");
    expectPlain(folder / "job.ps", {.across = 360, .down = 180});
}

// Thin lines show where a page is rendered in bands.
TEST_F(TonesTest, AreRenderedInThePlainBands)
{
    const std::string lines =
        "0 1 30 {/i exch def i 17 mul 7 add 288 mod 3.3 add i 29 mul 288 mod moveto i 53 mul 288 "
        "mod i 31 mul 11 add 288 mod lineto i 5 mod .37 mul .2 add setlinewidth stroke} for\n";
    writeFile(folder / "job.ps", smallJob({page(".3 .6 0 0 setcmykcolor " + lines, "288 288"),
                                           page(kGold + ".3 gold " + lines, "288 288")}));
    expectPlain(folder / "job.ps", {.across = 400, .down = 480});
}

TEST_F(TonesTest, AreThoseOfPlainSeparationsWhereThereAreSpotInks)
{
    writeFile(folder / "job.ps", smallJob({kPlain[0], kInks[0], kInks[1], kInks[2]}));
    expectPlain(folder / "job.ps");
    expectPlain(folder / "job.ps", {.across = 180, .down = 360});
}

TEST_F(TonesTest, HaveAPlateForEachOfManyInks)
{
    std::string painting;
    for (int i = 0; i < 30; ++i)
        painting += "[/Separation (Ink " + std::to_string(i) +
                    ") cvn /DeviceCMYK {0 exch 0 exch 0}] setcolorspace ." + std::to_string(10 + i) +
                    " setcolor " + std::to_string(4 * i) + " 12 9 9 rectfill\n";
    writeFile(folder / "job.ps", smallJob({page(painting)}));
    expectPlain(folder / "job.ps", {.plainInks = 30});
}

// Compared with the share of dots in a tint, made by a device that screens.
TEST_F(TonesTest, KeepTheInterpretersOwnToneWhereAsked)
{
    writeFile(folder / "job.ps", smallJob({page("0 0 0 .5 setcmykcolor 0 0 144 144 rectfill")}));
    for (const int dpi : {300, 600, 1000}) {
        const CommandResult run =
            runProgram({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=tiffsep1", "-sCompression=none",
                        "-r" + std::to_string(dpi), "-sOutputFile=dots.tif", "job.ps"},
                       "", folder.path());
        ASSERT_EQ(run.status, 0) << run.err;
        const double dots = 1 - readFilm(folder / "dots(Black).tif").ink();
        const TonesAsked asked{.across = dpi * 1., .down = dpi * 1., .interpreterTone = true};
        EXPECT_NEAR(streamed(folder / "job.ps", asked)[0].plates["Black"].row(9)[9] / 255., dots, .02) << dpi;
    }
}

TEST_F(TonesTest, LieTurnedOnTheFilmAsAsked)
{
    writeFile(folder / "job.ps", smallJob({page("1 0 0 0 setcmykcolor 0 0 36 18 rectfill", "144 72"),
                                           page(kGold + "1 gold 0 0 36 18 rectfill", "144 72")}));
    struct Corner {
        int rotation;
        std::size_t columns, rows;
        int x, y;  // where the corner is inked
    };
    for (const Corner &corner : {Corner{0, 200, 200, 0, 199}, Corner{90, 100, 400, 99, 399},
                                 Corner{180, 200, 200, 199, 0}, Corner{270, 100, 400, 0, 0}}) {
        const TonesAsked asked{.across = 100, .down = 200, .rotation = corner.rotation};
        const std::vector<TonesOfPage> pages = streamed(folder / "job.ps", asked);
        ASSERT_EQ(pages.size(), 2u) << refused;
        if (corner.rotation != 180)
            expectAlike(pages, plain(folder / "job.ps", asked));
        for (const TonesOfPage &found : pages) {
            EXPECT_EQ(found.page.columns, corner.columns) << corner.rotation;
            EXPECT_EQ(found.page.rows, corner.rows) << corner.rotation;
            EXPECT_EQ(found.page.width, found.page.columns / 100.);
            EXPECT_EQ(found.page.height, found.page.rows / 200.);
            const plates::TintPlate &ink = found.plates.at(found.page.number == 1 ? "Cyan" : "Gold");
            EXPECT_EQ(ink.row(corner.y)[corner.x], 255) << corner.rotation;
            EXPECT_EQ(ink.row(199 * 0 + (corner.y == 0 ? ink.height - 1 : 0))[corner.x == 0 ? ink.width - 1 : 0],
                      0);
        }
    }
}

TEST_F(TonesTest, ComeOfThePagesAskedFor)
{
    writeFile(folder / "job.ps", smallJob({kPlain[0], kPlain[1], kInks[0], kPlain[2]}));
    expectPlain(folder / "job.ps", {.pages = {2, 4}});
    expectPlain(folder / "job.ps", {.pages = {2, 3}});
}

TEST_F(TonesTest, ComeOnceHoweverManyCopiesTheJobAsksFor)
{
    writeFile(folder / "job.ps", "%!PS\n/#copies 3 def\n" + kPlain[0] + kPlain[1]);
    EXPECT_EQ(streamed(folder / "job.ps").size(), 2u) << refused;
}

TEST_F(TonesTest, ComeOfAJobWithItsOwnEndOfPage)
{
    writeFile(folder / "job.ps",
              "%!PS\n" + kPlain[0] + "<</EndPage {exch pop 2 ne}>> setpagedevice\n" + kPlain[1] + kPlain[2]);
    expectPlain(folder / "job.ps");
}

TEST_F(TonesTest, TellWhichPlatesTheSurveyFoundInked)
{
    writeFile(folder / "job.ps",
              smallJob({page("0 1 0 0 setcmykcolor 10 10 50 50 rectfill " + kGold + "0 gold"), kInks[0]}));
    const std::vector<TonesOfPage> pages = streamed(folder / "job.ps");
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_EQ(pages[0].page.plates, (std::vector<std::string>{"Cyan", "Magenta", "Yellow", "Black", "Gold"}));
    EXPECT_EQ(pages[0].page.ink, (std::vector<bool>{false, true, false, false, false}));
    EXPECT_EQ(pages[1].page.ink, (std::vector<bool>{true, true, true, false, true}));
}

TEST_F(TonesTest, StopAtThePageThatFails)
{
    for (const std::string &first : {kPlain[0], kInks[0]}) {
        writeFile(folder / "good.ps", smallJob({first, kPlain[1], kPlain[1]}));
        writeFile(folder / "job.ps", smallJob({first, ".5 setgray 0 0 9 9 rectfill nonsense", kPlain[1]}));
        const std::vector<TonesOfPage> pages = streamed(folder / "job.ps", folder / "good.ps", {});
        EXPECT_EQ(refused,
                  (folder / "job.ps").string() + ": page 2: the interpreter said: /undefined in nonsense");
        ASSERT_EQ(pages.size(), 1u);
        EXPECT_TRUE(pages[0].whole);
        expectAlike(pages, {plain(folder / "good.ps")[0]});
    }
}

}  // namespace
