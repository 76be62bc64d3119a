// Colour jobs as programs write them, with a screen for each plate: it holds on every page.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <set>

#include "apply/apply.h"
#include "make/plates_piece.h"
#include "meter/meter.h"
#include "plates/files/process_plates.h"
#include "printed/postscript_support.h"
#include "screens/job_producers.h"

namespace {

namespace fs = std::filesystem;
namespace meter = riders::meter;
using riders::plates::BitPlate;
using riders::plates::kProcessPlates;

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
                                            "-sDEVICE=pcxcmyk",
                                            "-r" + std::to_string(kDpi),
                                            "-sOutputFile=" + (folder / "film%d.pcx").string()};
        command.insert(command.end(), before.begin(), before.end());
        command.push_back(job.string());
        const CommandResult run = runProgram(command, {}, folder.path().string());
        EXPECT_EQ(run.status, 0) << run.out << run.err;
        for (int page = 1; page <= pages; ++page) {
            SCOPED_TRACE("page " + std::to_string(page));
            expectScreens(folder / ("film" + std::to_string(page) + ".pcx"), inColour);
        }
        EXPECT_FALSE(fs::exists(folder / ("film" + std::to_string(pages + 1) + ".pcx")));
    }

    fs::path applied(const fs::path &job)
    {
        writeFile(folder / "riders", ridersInColour());
        riders::apply::applyRiders({folder / "riders", job, folder / "screened.ps"});
        return folder / "screened.ps";
    }

    TemporaryFolder folder;

private:
    void expectScreens(const fs::path &pcx, bool inColour)
    {
        const std::string head = contentsOf(pcx).substr(0, 12);
        const auto side = [&](size_t at) {
            return static_cast<unsigned char>(head[at]) + 256 * static_cast<unsigned char>(head[at + 1]) + 1;
        };
        const std::vector<BitPlate> plates = riders::plates::readProcessPlates(pcx, side(8), side(10));
        int read = 0;
        for (size_t i = 0; i < plates.size(); ++i) {
            SCOPED_TRACE(kProcessPlates[i]);
            const BitPlate &plate = plates[i];
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
