// Proofs of small jobs, from the job to the folder.
#include <tiffio.h>

#include "host/proof_support.h"

namespace {

namespace proof = riders::proof;

using Names = std::vector<std::string>;

const std::string kBlackTint = ".7 setgray 12 12 120 120 rectfill";
const std::string kFourTints = ".3 .2 .4 .1 setcmykcolor 12 12 120 120 rectfill";

TEST_F(ProofTest, EachPlateWithInkIsAFilm)
{
    ASSERT_EQ(proofOf(request(smallJob({smallPage(kBlackTint), smallPage(kFourTints)}))), "done");
    EXPECT_EQ(files(),
              (Names{"films/page-1-black.tif", "films/page-2-black.tif", "films/page-2-cyan.tif",
                     "films/page-2-magenta.tif", "films/page-2-yellow.tif", "pictures/page-1-all.png",
                     "pictures/page-1-black.png", "pictures/page-1.png", "pictures/page-2-all.png",
                     "pictures/page-2-black.png", "pictures/page-2-cyan.png", "pictures/page-2-magenta.png",
                     "pictures/page-2-yellow.png", "pictures/page-2.png", "proof.html"}));
    EXPECT_EQ(left(), (Names{"job.ps", "out"}));
}

TEST_F(ProofTest, AFilmIsReadyForARecorder)
{
    ASSERT_EQ(proofOf(request(smallJob({smallPage(kBlackTint)}))), "done");
    const Film film = readFilm(out / "films/page-1-black.tif");
    EXPECT_EQ(film.bits.width, 600);
    EXPECT_EQ(film.bits.height, 600);
    EXPECT_EQ(film.dpi, 300);
    EXPECT_EQ(film.compression, COMPRESSION_CCITTFAX4);
    EXPECT_EQ(film.photometric, PHOTOMETRIC_MINISWHITE);
    // Not lightened, as Ghostscript would below 800 dpi: 30 % stay 30 %.
    EXPECT_NEAR(film.ink(), 0.3 * 120 * 120 / (144 * 144), 0.005);
    EXPECT_FALSE(film.bits.at(0, 0));
}

// The quick device for process inks and the slow one for spot inks give the same dots.
TEST_F(ProofTest, SpotInksDoNotChangeTheProcessPlates)
{
    ASSERT_EQ(proofOf(request(smallJob({smallPage(kFourTints)}))), "done");
    std::vector<riders::plates::BitPlate> plain;
    const Names plates = {"cyan", "magenta", "yellow", "black"};
    for (const std::string &plate : plates)
        plain.push_back(readFilm(out / ("films/page-1-" + plate + ".tif")).bits);
    const std::string spot = " [/Separation (Warm Red) /DeviceCMYK {0 exch dup 0}] setcolorspace 1 setcolor "
                             "0 0 6 6 rectfill";
    ASSERT_EQ(proofOf(request(smallJob({smallPage(kFourTints + spot)}))), "done");
    for (size_t i = 0; i < plates.size(); ++i)
        EXPECT_EQ(readFilm(out / ("films/page-1-" + plates[i] + ".tif")).bits.bits, plain[i].bits) << plates[i];
    EXPECT_GT(readFilm(out / "films/page-1-warm-red.tif").ink(), 0.001);
    // Magenta and yellow over each other.
    EXPECT_NE(contentsOf(out / "proof.html").find("background:#e60000\"></span>Warm Red"), std::string::npos);
}

TEST_F(ProofTest, SpotPlatesHaveTheirNames)
{
    const auto spot = [](const std::string &name, int x) {
        return "[/Separation (" + name + ") cvn /DeviceCMYK {dup 0 exch 0}] setcolorspace .5 setcolor " +
               std::to_string(x) + " 20 20 80 rectfill ";
    };
    const std::string names = spot("<b>Gold & 1%</b>", 10) + spot("../up", 40) + spot("Gr\\374n", 70);
    const std::string page = pageOf(smallJob({smallPage("true setoverprint " + names)}));
    EXPECT_NE(page.find("&lt;b&gt;Gold &amp; 1%&lt;/b&gt;"), std::string::npos);
    EXPECT_EQ(page.find("<b>"), std::string::npos);
    EXPECT_NE(page.find("../up"), std::string::npos);
    EXPECT_NE(page.find("Grün"), std::string::npos);
    const Names made = files();
    for (const char *name : {"films/page-1-b-gold-1-b.tif", "films/page-1-up.tif", "films/page-1-gr-n.tif"})
        EXPECT_TRUE(std::count(made.begin(), made.end(), name)) << name;
}

TEST_F(ProofTest, OnlyThePagesAskedFor)
{
    proof::ProofRequest some = request(smallJob({smallPage(kBlackTint), smallPage(kFourTints), smallPage("")}));
    some.pages = "2-3";
    ASSERT_EQ(proofOf(some), "done");
    const std::string page = contentsOf(out / "proof.html");
    EXPECT_EQ(page.find("Page 1"), std::string::npos);
    EXPECT_NE(page.find("Page 2"), std::string::npos);
    EXPECT_NE(page.find("This page has no ink."), std::string::npos);
    some.pages = "2,4";
    EXPECT_EQ(proofOf(some), some.job.string() + ": there is no page 4; the job has 3 pages");
    EXPECT_EQ(contentsOf(out / "proof.html"), page);
}

TEST_F(ProofTest, TheJobsOwnScreenIsReportedForEachPage)
{
    proof::ProofRequest all = request(smallJob({smallPage(kBlackTint, 50, 30), smallPage(kBlackTint, 60, 75)}));
    all.cores = 2;
    ASSERT_EQ(proofOf(all), "done");
    const std::string page = contentsOf(out / "proof.html");
    const size_t first = page.find("50&nbsp;lpi, 30°</span>, Round<small>by the job");
    EXPECT_NE(first, std::string::npos);
    EXPECT_NE(page.find("60&nbsp;lpi, 75°</span>, Round<small>by the job", first), std::string::npos);
}

// Asked for, and measured where cells are large enough.
TEST_F(ProofTest, TheShapeOfTheDotsIsReported)
{
    const auto shaped = [](const std::string &shape, int lpi) {
        return "<</PageSize [144 144]>> setpagedevice " + std::to_string(lpi) + " 30 {" + shape +
               "} setscreen .6 setgray 12 12 120 120 rectfill showpage\n";
    };
    const std::string page =
        pageOf(smallJob({shaped("exch pop abs neg", 30), shaped("abs exch abs 2 copy lt {exch} if pop neg", 30),
                         shaped("dup mul exch dup mul add 1 exch sub", 60)}));
    const auto cell = [&page](const std::string &by, size_t from) {
        const size_t at = page.find(by, page.find("</span>Black", page.find("id=\"page-" + std::to_string(from))));
        return page.substr(at, page.find("</td>", at) - at);
    };
    EXPECT_NE(cell("Asked for\">", 1).find(", Line<small>by the job"), std::string::npos) << page;
    EXPECT_NE(cell("Measured\">", 1).find(", Line<small>"), std::string::npos);
    EXPECT_NE(cell("Asked for\">", 2).find(", Square<small>by the job"), std::string::npos);
    EXPECT_NE(cell("Measured\">", 2).find(", Square<small>"), std::string::npos);
    EXPECT_NE(cell("Asked for\">", 3).find(", Round<small>by the job"), std::string::npos);
    EXPECT_NE(cell("Measured\">", 3).find("<small>cells too small to show the dots’ shape</small>"),
              std::string::npos);
}

TEST_F(ProofTest, WithARidersFile)
{
    writeFile(folder / "film.riders", "%!Zu3_Riders\nuserdict begin\n/riderFrequency 40 def\n/riderAngle 15 def\n"
                                      "riderFrequency riderAngle {pop} setscreen\nend\n%Zu3_RidersEnd\n");
    const std::string job = "%!PS\n.5 setgray 0 0 100 100 rectfill showpage\n";
    proof::ProofRequest with = request(job);
    with.riders = folder / "film.riders";
    ASSERT_EQ(proofOf(with), "done");
    const std::string page = contentsOf(out / "proof.html");
    EXPECT_NE(page.find("40&nbsp;lpi, 15°</span><small>by the riders file"), std::string::npos);
    EXPECT_NE(page.find("with film.riders"), std::string::npos);
    with.riders = with.job;
    EXPECT_EQ(proofOf(with), with.job.string() +
                                 ": is not a riders file (it does not begin with %!Zu3_Riders); it is "
                                 "a job, to which a riders file is added: riders make makes one");
}

TEST_F(ProofTest, AnEpsIsAsLargeAsItsBox)
{
    const std::string eps = "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 10 10 82 46\n%%EndComments\n"
                            ".5 setgray 10 10 72 36 rectfill\n";
    for (const bool wrapped : {false, true}) {
        std::string bytes = eps;
        if (wrapped)
            bytes = std::string("\xC5\xD0\xD3\xC6\x20\0\0\0", 8) + static_cast<char>(eps.size()) +
                    std::string(23, '\0') + eps + "preview";
        ASSERT_EQ(proofOf(request(bytes)), "done") << wrapped;
        const Film film = readFilm(out / "films/page-1-black.tif");
        EXPECT_EQ(film.bits.width, 300);
        EXPECT_EQ(film.bits.height, 150);
        EXPECT_NEAR(film.ink(), 0.5, 0.01);
    }
}

TEST_F(ProofTest, APdf)
{
    std::string pdf = "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
                      "2 0 obj<</Type/Pages/Kids[3 0 R 5 0 R]/Count 2/MediaBox[0 0 144 144]>>endobj\n"
                      "3 0 obj<</Type/Page/Parent 2 0 R/Contents 4 0 R>>endobj\n"
                      "4 0 obj<</Length 29>>stream\n0 .5 0 0 k 0 0 144 72 re f  \nendstream endobj\n"
                      "5 0 obj<</Type/Page/Parent 2 0 R/Contents 4 0 R>>endobj\ntrailer<</Root 1 0 R>>\n%%EOF\n";
    proof::ProofRequest second = request(pdf, "no-matter.txt");
    second.pages = "2";
    ASSERT_EQ(proofOf(second), "done");
    EXPECT_EQ(files(), (Names{"films/page-2-magenta.tif", "pictures/page-2-all.png", "pictures/page-2-magenta.png",
                              "pictures/page-2.png", "proof.html"}));
    EXPECT_NEAR(readFilm(out / "films/page-2-magenta.tif").ink(), 0.25, 0.005);
    second.pages = "3";
    EXPECT_EQ(proofOf(second), second.job.string() + ": there is no page 3; the job has 2 pages");
    second.pages = "1-2,7-9";
    EXPECT_EQ(proofOf(second), second.job.string() + ": there is no page 7; the job has 2 pages");
}

}  // namespace
