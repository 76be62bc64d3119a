// Jobs as programs write them, each with grey on every page, with a riders file
// added: the dots on the film are the ones that were chosen.
#include <gtest/gtest.h>

#include <cmath>

#include "apply/apply.h"
#include "printed/postscript_support.h"
#include "screens/job_producers.h"
#include "screens/plain_bitmap.h"

namespace {

namespace meter = riders::meter;

namespace fs = std::filesystem;

constexpr double kDpi = 300;
constexpr double kFrequency = 45, kAngle = 22.5;
constexpr int kLine = 16130, kRound = 16128;

const SpotShape &shapeOf(int piece)
{
    return *std::find_if(kSpotShapes.begin(), kSpotShapes.end(),
                         [&](const SpotShape &shape) { return shape.id == piece; });
}

std::string ridersWith(int spot)
{
    return composeRiders({.frequency = "45", .angle = "22.5", .spotBody = pieceBytes(spot)});
}

void expectChosen(const meter::BitPage &page, int spot)
{
    const meter::ScreenReading reading = meter::readScreen(page);
    ASSERT_EQ(reading.kind, spot == kLine ? meter::ScreenKind::lines : meter::ScreenKind::dots);
    EXPECT_NEAR(reading.frequency, kFrequency, 0.005 * kFrequency);
    EXPECT_NEAR(std::remainder(reading.angle - kAngle, spot == kLine ? 180 : 90), 0, 0.3);
    EXPECT_GT(meter::likenessTo(page, reading, shapeOf(spot).value).correlation, 0.93);
}

class RealJobs : public ::testing::Test {
protected:
    // Films of the job's pages; the files `before` are run before it.
    std::vector<PlainBitmap> films(const fs::path &job, const std::vector<std::string> &before = {})
    {
        std::vector<std::string> command = {"timeout",   "60",
                                            "gs",        "-q",
                                            "-dSAFER",   "-dBATCH",
                                            "-dNOPAUSE", "-sDEVICE=pbmraw",
                                            "-r300",     "-sOutputFile=" + (folder / "film%d.pbm").string()};
        command.insert(command.end(), before.begin(), before.end());
        command.push_back(job.string());
        const CommandResult run = runProgram(command, {}, folder.path().string());
        EXPECT_EQ(run.status, 0) << run.out << run.err;
        std::vector<PlainBitmap> pages;
        for (int page = 1; fs::exists(folder / ("film" + std::to_string(page) + ".pbm")); ++page)
            pages.push_back(readPlainBitmap(folder / ("film" + std::to_string(page) + ".pbm"), kDpi));
        return pages;
    }

    void expectChosenOnEveryPage(const std::vector<PlainBitmap> &pages, int count, int spot)
    {
        EXPECT_EQ(int(pages.size()), count);
        for (size_t i = 0; i < pages.size(); ++i) {
            SCOPED_TRACE("page " + std::to_string(i + 1));
            expectChosen(pages[i].page(), spot);
        }
    }

    fs::path applied(const fs::path &job, int spot)
    {
        writeFile(folder / "riders", ridersWith(spot));
        riders::apply::applyRiders({folder / "riders", job, folder / "screened.ps"});
        return folder / "screened.ps";
    }

    TemporaryFolder folder;
};

class EachProducer : public RealJobs, public ::testing::WithParamInterface<Producer> {};

TEST_P(EachProducer, PrintsWhatWasChosenOnEveryPage)
{
    const fs::path job = folder / "job.ps";
    GetParam().make(folder, job);
    for (int spot : {kLine, kRound})
        expectChosenOnEveryPage(films(applied(job, spot)), GetParam().pages, spot);
}

// Wherever the fragment stands.
class EachPlace : public RealJobs {
protected:
    void SetUp() override
    {
        makeGroff();
        fragment = ridersWith(kRound);
    }
    void makeGroff()
    {
        jobProducers()[0].make(folder, folder / "job.ps");
        job = contentsOf(folder / "job.ps");
    }
    // Checks both pages of the job with text inserted after one of its lines.
    void expectChosenAfter(const std::string &line, const std::string &text)
    {
        const size_t at = job.find(line + "\n");
        ASSERT_NE(at, std::string::npos) << line;
        std::string bytes = job;
        writeFile(folder / "screened.ps", bytes.insert(at + line.size() + 1, text));
        expectChosenOnEveryPage(films(folder / "screened.ps"), 2, kRound);
    }

    std::string job, fragment;
};

TEST_F(EachPlace, AfterTheFirstLine)
{
    expectChosenAfter("%!PS-Adobe-3.0", fragment);
}

TEST_F(EachPlace, InTheSetup)
{
    expectChosenAfter("%%BeginSetup", fragment);
}

TEST_F(EachPlace, Twice)
{
    expectChosenAfter("%!PS-Adobe-3.0", fragment + fragment);
}

TEST_F(EachPlace, BeforeTheJob)
{
    writeFile(folder / "riders", fragment);
    expectChosenOnEveryPage(films(folder / "job.ps", {(folder / "riders").string()}), 2, kRound);
}

TEST_F(EachPlace, BeforeAPdf)
{
    writeFile(folder / "riders", fragment);
    makePdf(folder, folder / "job.pdf");
    expectChosenOnEveryPage(films(folder / "job.pdf", {(folder / "riders").string()}), 2, kRound);
}

TEST_F(EachPlace, InAnEncapsulatedDrawingWithoutShowpage)
{
    writeFile(folder / "drawing.eps", "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 200 200\n%%EndComments\n"
                                      "0.6 setgray 0 0 200 200 rectfill\n%%EOF\n");
    const fs::path screened = applied(folder / "drawing.eps", kLine);
    expectChosenOnEveryPage(films(screened, {"-dEPSCrop"}), 1, kLine);
}

// A job's own screens, even in procedures it bound before, and pages that restore.
TEST_F(EachPlace, OverTheJobsOwnScreens)
{
    const std::string page = "save 60 0 {exch pop} setscreen 0.6 setgray 100 100 300 300 rectfill fine "
                             "100 450 300 200 rectfill restore showpage\n";
    writeFile(folder / "own.ps", "%!PS-Adobe-3.0\n%%EndComments\n%%BeginProlog\n"
                                 "/fine {80 30 {pop} setscreen} bind def\n%%EndProlog\n%%BeginSetup\n"
                                 "<< /PageSize [500 700] >> setpagedevice\n%%EndSetup\n%%Page: 1 1\n" +
                                     page + "%%Page: 2 2\n" + page);
    expectChosenOnEveryPage(films(applied(folder / "own.ps", kLine)), 2, kLine);
}

INSTANTIATE_TEST_SUITE_P(Debian, EachProducer, ::testing::ValuesIn(jobProducers()),
                         [](const auto &test) { return std::string(test.param.name); });

}  // namespace
