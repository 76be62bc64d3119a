// The sets of screens that come with the program are those that docs/screens.md describes.
#include <cmath>
#include <complex>
#include <numbers>

#include "screens/number_text.h"
#include "screens/screen_set.h"
#include "screens/set_file.h"
#include "screens/set_names.h"
#include "screens/shapes.h"
#include "support/documents.h"
#include "support/toolbox_test.h"

namespace {

namespace screens = riders::screens;

const std::vector<std::string> kPlateColumns = {"Cyan", "Magenta", "Yellow", "Black", "*"};

std::map<std::string, std::filesystem::path> installed()
{
    return screens::setFiles({{}, std::filesystem::path(RIDERS_SOURCE_DIR) / "resources/screens"});
}

// As a row of the table has it: name, figures of each plate, shape.
TableRow rowOf(const std::string &name, const screens::ScreenSet &set)
{
    TableRow row = {"`" + name + "`"};
    const std::vector<screens::PlateScreen> plates = screensOf(set);
    for (const std::string &column : kPlateColumns) {
        row.emplace_back();
        for (const screens::PlateScreen &plate : plates)
            if (plate.plate == column)
                row.back() = screens::numberText(*plate.frequency) + " at " + screens::numberText(*plate.angle);
    }
    row.push_back(set.shape);
    return row;
}

// From a cell's corner to the next, in pixels.
std::complex<double> cellOf(const screens::PlateScreen &plate, double dpi)
{
    return std::polar(dpi / *plate.frequency, *plate.angle * std::numbers::pi / 180);
}

}  // namespace

TEST(InstalledSets, AreThoseThatAreDescribed)
{
    std::map<std::string, TableRow> described;
    for (const TableRow &row : tableIn(sourceText("docs/screens.md"), "Set"))
        described[quotedIn(row.at(0)).at(0)] = row;
    std::map<std::string, TableRow> rows;
    for (const auto &[name, file] : installed())
        rows[name] = rowOf(name, screens::setFromFile(file));
    EXPECT_EQ(rows, described);
}

TEST(InstalledSets, SayWhatTheyAreForAndNameShapesThatAreThere)
{
    ASSERT_GE(installed().size(), 12u);
    for (const auto &[name, file] : installed()) {
        const screens::ScreenSet set = screens::setFromFile(file);
        EXPECT_FALSE(set.use.empty()) << name;
        EXPECT_FALSE(set.source.empty()) << name;
        for (const screens::PlateScreen &plate : screensOf(set)) {
            EXPECT_TRUE(plate.frequency && plate.angle) << name;
            EXPECT_TRUE(screens::installedShape(plate.shape)) << name << ": " << plate.shape;
        }
    }
}

TEST(InstalledSets, ByRationalTangentsHaveCellsOfWholePixels)
{
    for (const int dpi : {600, 1200, 2400, 2540}) {
        const std::string name = "rational-" + std::to_string(dpi);
        const auto plates = screensOf(screens::setFromFile(installed().at(name)));
        ASSERT_EQ(plates.size(), 4u);
        for (const screens::PlateScreen &plate : plates) {
            const std::complex<double> cell = cellOf(plate, dpi);
            EXPECT_NEAR(cell.real(), std::round(cell.real()), 1e-4) << name << " " << plate.plate;
            EXPECT_NEAR(cell.imag(), std::round(cell.imag()), 1e-4) << name << " " << plate.plate;
        }
        // The waves of cyan and yellow, and how much they differ.
        const std::complex<double> difference = 1.0 / cellOf(plates[0], dpi) - 1.0 / cellOf(plates[2], dpi);
        EXPECT_NEAR(1 / std::abs(difference), 3 * std::abs(cellOf(plates[0], dpi)), 1e-3) << name;
    }
}
