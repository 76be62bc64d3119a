// The installed sets of screens make no pattern that can be seen, other than with yellow.
#include "screens/moire.h"
#include "screens/set_file.h"
#include "support/toolbox_test.h"

namespace {

namespace screens = riders::screens;

std::vector<screens::NamedScreen> platesIn(const std::filesystem::path &file)
{
    std::vector<screens::NamedScreen> plates;
    for (const screens::PlateScreen &plate : screensOf(screens::setFromFile(file)))
        if (plate.plate != screens::kRestOfPlates && plate.frequency && plate.angle)
            plates.push_back({plate.plate, {*plate.frequency, *plate.angle}, plate.plate == "Yellow"});
    return plates;
}

TEST(MoireSets, OfInstalledSetsOnlyYellowMakesAPattern)
{
    int patterns = 0;
    for (const auto &file :
         std::filesystem::directory_iterator(std::string(RIDERS_SOURCE_DIR) + "/resources/screens")) {
        if (file.path().extension() != ".toml")
            continue;
        const std::vector<screens::NamedScreen> plates = platesIn(file);
        for (const screens::Pattern &pattern : patternsOf(plates)) {
            EXPECT_TRUE(pattern.light || !pattern.canBeSeen())
                << file.path().filename() << ": " << plates[pattern.grids[0]].name << " and "
                << plates[pattern.grids[1]].name << ", " << pattern.millimetres() << " mm";
            ++patterns;
        }
    }
    EXPECT_GT(patterns, 50);
}

}  // namespace
