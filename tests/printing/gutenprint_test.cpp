// Films printed with Gutenprint's drivers for inkjets that film makers use: what the printer is sent is read, and
// each of its droplets compared with the film.
#include <algorithm>
#include <cstdlib>

#include "film/printing/queue_resolution.h"
#include "printing/printing_test.h"

namespace fs = std::filesystem;

namespace printing_tests {
namespace {

using riders::printing::resolutionFromName;

struct Inkjet {
    const char *driver, *resolution;
};

class GutenprintTest : public PrintingTest, public ::testing::WithParamInterface<Inkjet> {
protected:
    PrinterPipe pipe{folder / "printer"};
    OwnCupsd server{{{"inkjet", gutenprintPpd(GetParam().driver), pipe.uri()}}};
};

TEST_P(GutenprintTest, EveryDropletIsAPixelOfTheFilm)
{
    const std::string dpi = GetParam().resolution;
    const CommandResult printed =
        film({"--printer", "inkjet", "--dpi", dpi, "--media", "A6", "-O", "StpPrintingDirection=Unidirectional"});
    ASSERT_EQ(printed.status, 0) << printed.err;
    EXPECT_NE(printed.out.find("inkjet-1: page 1 (Cyan, Black) on A6\n"), std::string::npos) << printed.out;
    const std::vector<escp2::Page> pages = escp2::read(pipe.read());
    const std::vector<BitPlate> plates = films(dpi);
    ASSERT_EQ(pages.size(), plates.size());
    for (std::size_t i = 0; i < pages.size(); ++i) {
        EXPECT_TRUE(std::all_of(pages[i].begin(), pages[i].end(),
                                [](const escp2::Droplet &droplet) { return droplet.ink == 0; }));
        const BitPlate droplets = pixelsOf(pages[i], *resolutionFromName(dpi + "dpi"));
        EXPECT_EQ(differentPixels(droplets, plates[i]), 0) << "plate " << i << " at " << dpi;
    }
    // The same marks are at the same place on all plates.
    const Ink first = inkOf(plates[0]), second = inkOf(plates[1]);
    EXPECT_EQ(first.left, second.left);
    EXPECT_EQ(first.top, second.top);
}

constexpr Inkjet kInkjets[] = {
    {"escp2-1400", "720"}, {"escp2-1400", "720x360"}, {"escp2-3880", "720"}, {"escp2-3880", "1440x720"}};

std::string nameOf(const ::testing::TestParamInfo<Inkjet> &info)
{
    std::string name = std::string(info.param.driver) + "_" + info.param.resolution;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Inkjets, GutenprintTest, ::testing::ValuesIn(kInkjets), nameOf);

// A page for each printer and each resolution that is offered.
class EveryResolutionTest : public PrintingTest {};

TEST_F(EveryResolutionTest, KeepsEveryPixel)
{
    if (!std::getenv("RIDERS_EVERY_RESOLUTION"))
        GTEST_SKIP() << "RIDERS_EVERY_RESOLUTION=1 prints at all resolutions of ten printers; takes minutes";
    for (const std::string driver : {"escp2-1400", "escp2-3880", "escp2-r3000", "escp2-artisan1430", "escp2-r1900",
                                     "escp2-3800", "escp2-4900", "escp2-7880", "escp2-p600", "escp2-1390"}) {
        std::string ppd;
        try {
            ppd = gutenprintPpd(driver);
        } catch (const std::runtime_error &) {
            continue;
        }
        fs::remove(folder / "printer");
        const PrinterPipe pipe(folder / "printer");
        const OwnCupsd server({{"inkjet", ppd, pipe.uri()}});
        for (const std::string dpi : {"360", "720x360", "720", "1440x720", "1440"}) {
            const CommandResult printed = film({"--printer", "inkjet", "--dpi", dpi, "--media", "A6", "--quiet"});
            if (printed.err.find("cannot print at") != std::string::npos)
                continue;
            ASSERT_EQ(printed.status, 0) << driver << " " << dpi << ": " << printed.err;
            const std::vector<escp2::Page> pages = escp2::read(pipe.read());
            const std::vector<BitPlate> plates = films(dpi);
            ASSERT_EQ(pages.size(), plates.size());
            for (std::size_t i = 0; i < pages.size(); ++i)
                EXPECT_EQ(differentPixels(pixelsOf(pages[i], *resolutionFromName(dpi + "dpi")), plates[i]), 0)
                    << driver << ", plate " << i << " at " << dpi;
        }
    }
}

}  // namespace
}  // namespace printing_tests
