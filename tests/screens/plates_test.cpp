// A screen for each plate: the plates of colour jobs, measured one by one. Here at 600 dpi and for few sets;
// `./measure plates` measures every set at three resolutions.
#include <gtest/gtest.h>

#include <algorithm>

#include "make/plates_piece.h"
#include "printed/postscript_support.h"
#include "screens/plate_films.h"
#include "screens/set_file.h"
#include "support/command.h"

namespace {

using riders::screens::PlateScreen;

std::vector<PlateScreen> setNamed(const std::string &name)
{
    const std::string file = std::string(RIDERS_SOURCE_DIR) + "/resources/screens/" + name + ".toml";
    return riders::screens::screensOf(riders::screens::setFromFile(file));
}

std::string digitsOf(double value)
{
    std::ostringstream text;
    text.precision(10);
    text << value;
    return text.str();
}

// With round dots on all plates: the meter finds them best.
std::string ridersOf(const std::vector<PlateScreen> &set)
{
    RidersChoice all = {.spotBody = pieceBytes(16128)};
    std::vector<riders::make::PlatePiece> plates;
    for (const PlateScreen &screen : set) {
        if (screen.plate == riders::screens::kRestOfPlates) {
            if (screen.frequency)
                all.frequency = digitsOf(*screen.frequency);
            if (screen.angle)
                all.angle = digitsOf(*screen.angle);
        } else {
            plates.push_back({screen.plate, screen.frequency, screen.angle});
        }
    }
    return riders::make::withPlates(composeRiders(all), plates);
}

class EachPlateFilm : public ::testing::TestWithParam<PlateFilm> {
protected:
    void expectHeld(const std::vector<PlateScreen> &set, size_t readings, double percent = 0.2,
                    double degrees = 0.3)
    {
        writeFile(folder / "riders", ridersOf(set));
        const std::vector<PlateReading> read =
            readPlates(GetParam(), folder / "riders", folder.path(), [](const std::vector<std::string> &command) {
                const CommandResult result = runProgram(command);
                ASSERT_EQ(result.status, 0) << result.err;
            });
        EXPECT_EQ(read.size(), readings);
        for (const PlateReading &reading : read) {
            const PlateError error = errorOf(reading, set);
            EXPECT_LT(error.frequency, percent) << reading.plate;
            EXPECT_LT(error.angle, degrees) << reading.plate << " " << reading.reading.angle;
        }
    }

    TemporaryFolder folder;
};

size_t readingsOf(PlateJob job)
{
    return job == PlateJob::preseparated ? 8 : 4;
}

TEST_P(EachPlateFilm, HasTheSetsScreenOnEachPlate)
{
    expectHeld({{"Cyan", 62, 15, {}},
                {"Magenta", 60, 75, {}},
                {"Yellow", 64.8, 0, {}},
                {"Gold", 85, 22.5, {}},
                {"PANTONE 300 C", 53, 52.5, {}},
                {"*", 60, 45, {}}},
               readingsOf(GetParam().job));
}

INSTANTIATE_TEST_SUITE_P(At600Dpi, EachPlateFilm,
                         ::testing::Values(PlateFilm{PlateDevice::separations, PlateJob::photograph, 600},
                                           PlateFilm{PlateDevice::separations, PlateJob::spotArt, 600},
                                           PlateFilm{PlateDevice::composite, PlateJob::preseparated, 600},
                                           PlateFilm{PlateDevice::oneInk, PlateJob::preseparated, 600}),
                         [](const auto &test) {
                             std::string name = nameOf(test.param);
                             std::erase_if(name, [](char c) { return !std::isalnum(c); });
                             return name;
                         });

class InstalledSet : public EachPlateFilm {};

TEST_P(InstalledSet, IsOnThePlates)
{
    expectHeld(setNamed("screen-printing-process"), 4);
}

INSTANTIATE_TEST_SUITE_P(At600Dpi, InstalledSet,
                         ::testing::Values(PlateFilm{PlateDevice::composite, PlateJob::photograph, 600}));

// At these resolutions no two squares of 65,535 pixels together are as close.
class SetNeedingLargeSquares : public EachPlateFilm {};

TEST_P(SetNeedingLargeSquares, IsOnThePlates)
{
    expectHeld(setNamed(GetParam().dpi == 1270 ? "letterpress" : "screen-printing-process"), 4, 0.06, 0.06);
}

INSTANTIATE_TEST_SUITE_P(OfFourInks, SetNeedingLargeSquares,
                         ::testing::Values(PlateFilm{PlateDevice::composite, PlateJob::fills, 1270},
                                           PlateFilm{PlateDevice::composite, PlateJob::fills, 2400}),
                         [](const auto &test) { return "At" + std::to_string(test.param.dpi) + "Dpi"; });

}  // namespace
