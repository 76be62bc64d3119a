// Jobs as programs write them, each with grey on every page, with a riders file
// put in: the dots on the film are the ones that were chosen.
#include <gtest/gtest.h>

#include <cmath>

#include "apply/apply.h"
#include "host/postscript_support.h"
#include "screens/job_producers.h"
#include "screens/plain_bitmap.h"

namespace {

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
    return composeRiders({.frequency = "45", .angle = "22.5", .spotBody = piece(spot)});
}

void expectChosen(const riders::BitPage &page, int spot)
{
    const riders::ScreenReading reading = riders::readScreen(page);
    ASSERT_EQ(reading.kind, spot == kLine ? riders::ScreenKind::lines : riders::ScreenKind::dots);
    EXPECT_NEAR(reading.frequency, kFrequency, 0.005 * kFrequency);
    EXPECT_NEAR(std::remainder(reading.angle - kAngle, spot == kLine ? 180 : 90), 0, 0.3);
    EXPECT_GT(riders::likenessTo(page, reading, shapeOf(spot).value).correlation, 0.93);
}

class RealJobs : public ::testing::Test {
protected:
    // Films of the job's pages; `first` is run before it.
    std::vector<PlainBitmap> films(const fs::path &job, const std::vector<std::string> &before = {})
    {
        std::vector<std::string> command = {"timeout", "60", "gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE",
                                            "-sDEVICE=pbmraw", "-r300",
                                            "-sOutputFile=" + (folder / "film%d.pbm").string()};
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
        riders::applyRiders({folder / "riders", job, folder / "screened.ps"});
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

INSTANTIATE_TEST_SUITE_P(Debian, EachProducer, ::testing::ValuesIn(jobProducers()),
                         [](const auto &test) { return std::string(test.param.name); });

}  // namespace
