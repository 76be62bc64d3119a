// Patterns between the plates of real jobs: said, shown, and kept quiet about where nothing prints over each
// other.
#include "host/proof_support.h"
#include "support/command.h"

namespace {

namespace proof = riders::proof;

using Names = std::vector<std::string>;

// Cyan and black, each with a screen of its own, and painted so.
std::string twoPlates(int cyanAngle, int blackAngle, const std::string &painting)
{
    const auto screen = [](int angle) {
        return "<</HalftoneType 1 /AccurateScreens true /Frequency 40 /Angle " + std::to_string(angle) +
               " /SpotFunction {dup mul exch dup mul add 1 exch sub}>>";
    };
    return "%!PS\n<</PageSize [216 216]>> setpagedevice\n<</HalftoneType 5 /Cyan " + screen(cyanAngle) +
           " /Black " + screen(blackAngle) + " /Default " + screen(blackAngle) + ">> sethalftone\n" + painting +
           "\nshowpage\n";
}

const std::string kOver = ".5 0 0 .5 setcmykcolor 12 12 192 192 rectfill";
const std::string kApart =
    ".5 0 0 0 setcmykcolor 12 12 90 192 rectfill 0 0 0 .5 setcmykcolor 108 12 90 192 rectfill";

bool has(const std::string &text, const std::string &part)
{
    return text.find(part) != std::string::npos;
}

// 40 lines per inch, 10 degrees apart: 25.4 mm / 40 / (2 sin 5°) = 3.64 mm.
TEST_F(ProofTest, APatternBetweenPlatesIsWarnedOfAndShown)
{
    proof::ProofRequest fine = request(twoPlates(35, 45, kOver));
    fine.dpi = 600;
    ASSERT_EQ(proofOf(fine), "done");
    const std::string page = contentsOf(out / "proof.html");
    const size_t at = page.find("Cyan and Black make a pattern of ");
    ASSERT_NE(at, std::string::npos) << page;
    EXPECT_NEAR(std::stod(page.substr(at + 33)), 3.64, 0.25) << "the device's screens are not exact";
    EXPECT_TRUE(has(page.substr(at, 200), "the rosette’s own is 1.2")) << page.substr(at, 200);
    EXPECT_TRUE(has(page, "<a href=\"pictures/page-1-pattern-1.png\">"));
    EXPECT_EQ(files().size(), 8u);
    EXPECT_TRUE(std::filesystem::exists(out / "pictures/page-1-pattern-1.png"));
    ASSERT_EQ(proofOf(fine), "done") << "and is known as a proof when it is replaced";
}

TEST_F(ProofTest, PlatesThatDoNotPrintOverEachOtherMakeNoPattern)
{
    proof::ProofRequest fine = request(twoPlates(35, 45, kApart));
    fine.dpi = 600;
    ASSERT_EQ(proofOf(fine), "done");
    EXPECT_FALSE(has(contentsOf(out / "proof.html"), "pattern of"));
    fine.job = request(twoPlates(5, 45, kOver)).job;
    ASSERT_EQ(proofOf(fine), "done");
    EXPECT_FALSE(has(contentsOf(out / "proof.html"), "pattern of")) << "40 degrees apart";
    EXPECT_FALSE(std::filesystem::exists(out / "pictures/page-1-pattern-1.png"));
}

TEST_F(ProofTest, AMeshIsComparedWithEachPlate)
{
    writeFile(folder / "job.ps", twoPlates(15, 45, kOver));
    const Names command = {"proof", "job.ps", "--dpi", "600", "-o", "films", "--mesh", "90/cm"};
    ASSERT_EQ(runRiders(command, {}, folder.path()).status, 0);
    const std::string page = contentsOf(folder / "films/proof.html");
    EXPECT_TRUE(has(page, "On a mesh of 228.6 threads per inch"));
    EXPECT_TRUE(has(page, "<li>Cyan: 5.7"));
    EXPECT_TRUE(has(page, "<li>Black: 5.7"));
    const CommandResult refused = runRiders({"proof", "job.ps", "--mesh", "90/mm"}, {}, folder.path());
    EXPECT_EQ(refused.status, 2);
    EXPECT_TRUE(has(refused.err, "90/mm is not a number of threads")) << refused.err;
}

}  // namespace
