// Colour jobs as programs write them, with a screen for each plate: it holds on every page.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <iterator>
#include <set>

#include "apply/apply.h"
#include "make/plates_piece.h"
#include "meter/meter.h"
#include "plates/files/plate_files.h"
#include "printed/postscript_support.h"
#include "screens/job_producers.h"

namespace {

namespace fs = std::filesystem;
namespace meter = riders::meter;
using riders::plates::BitPlate;

constexpr int kDpi = 300;
constexpr double kFrequency = 45, kAngles[] = {15, 75, 0, 52.5};

std::string ridersInColour()
{
    return riders::make::withPlates(
        composeRiders({.frequency = "45", .angle = "52.5", .spotBody = pieceBytes(16128)}),
        {{"Cyan", {}, 15}, {"Magenta", {}, 75}, {"Yellow", {}, 0}});
}

class ColourJobs : public ::testing::Test {
protected:
    // The plates of the job's pages; the files `before` are run before it.
    void expectHeld(const fs::path &job, int pages, bool inColour, const std::vector<std::string> &before = {})
    {
        std::vector<std::string> command = {"timeout",
                                            "60",
                                            "gs",
                                            "-q",
                                            "-dSAFER",
                                            "-dBATCH",
                                            "-dNOPAUSE",
                                            "-sDEVICE=tiffsep1",
                                            "-dMaxSpots=1",
                                            "-sCompression=none",
                                            "-r" + std::to_string(kDpi),
                                            "-sOutputFile=" + (folder / "%d.tif").string()};
        command.insert(command.end(), before.begin(), before.end());
        command.push_back(job.string());
        const CommandResult run = runProgram(command, {}, folder.path().string());
        EXPECT_EQ(run.status, 0) << run.out << run.err;
        for (int page = 1; page <= pages; ++page) {
            SCOPED_TRACE("page " + std::to_string(page));
            expectScreens(page, inColour);
        }
        EXPECT_FALSE(fs::exists(folder / (std::to_string(pages + 1) + ".tif")));
    }

    fs::path applied(const fs::path &job)
    {
        writeFile(folder / "riders", ridersInColour());
        riders::apply::applyRiders({folder / "riders", job, folder / "screened.ps"});
        return folder / "screened.ps";
    }

    TemporaryFolder folder;

private:
    void expectScreens(int page, bool inColour)
    {
        const std::vector<riders::plates::PlateFile> files = riders::plates::plateFiles(folder.path(), page);
        ASSERT_EQ(files.size(), std::size(kAngles));
        int read = 0;
        for (size_t i = 0; i < files.size(); ++i) {
            SCOPED_TRACE(files[i].plate);
            const BitPlate plate = riders::plates::readPlate(files[i].file);
            const meter::ScreenReading reading =
                meter::readScreen({plate.bits.data(), plate.width, plate.height, plate.rowBytes, kDpi});
            if (reading.kind == meter::ScreenKind::none || reading.ink < 0.1)
                continue;
            ++read;
            EXPECT_NEAR(reading.frequency, kFrequency, 0.005 * kFrequency);
            EXPECT_NEAR(std::remainder(reading.angle - kAngles[i], 90), 0, 0.3);
        }
        EXPECT_GE(read, inColour ? 3 : 1);
    }
};

class EachProducerInColour : public ColourJobs, public ::testing::WithParamInterface<Producer> {};

TEST_P(EachProducerInColour, HasThePlatesOwnScreensOnEveryPage)
{
    GetParam().make(folder, folder / "job.ps", true);
    expectHeld(applied(folder / "job.ps"), GetParam().pages, GetParam().colours);
}

// Two that differ in how they set a page up; all of them with RIDERS_EVERY_PRODUCER.
std::vector<Producer> tried()
{
    const std::set<std::string> few = {"cairo", "psnup"};
    std::vector<Producer> some;
    for (const Producer &producer : jobProducers())
        if (std::getenv("RIDERS_EVERY_PRODUCER") || few.count(producer.name))
            some.push_back(producer);
    return some;
}

INSTANTIATE_TEST_SUITE_P(Debian, EachProducerInColour, ::testing::ValuesIn(tried()),
                         [](const auto &test) { return std::string(test.param.name); });

TEST_F(ColourJobs, AsPdf)
{
    writeFile(folder / "riders", ridersInColour());
    makePdf(folder, folder / "job.pdf", true);
    expectHeld(folder / "job.pdf", 2, true, {(folder / "riders").string()});
}

}  // namespace
