// Sets of screens: what a file may hold, how a wrong one is refused, and which screens come out.
#include <fstream>

#include "io/refusal.h"
#include "screens/data_folder.h"
#include "screens/plate_spelling.h"
#include "screens/screen_set.h"
#include "screens/set_file.h"
#include "screens/set_names.h"
#include "support/toolbox_test.h"

namespace {

namespace screens = riders::screens;

constexpr const char *kWhole = R"(name = "Offset"
for = "coated paper"
source = "handbooks"
frequency = 150
shape = "Euclidean"

[plates]
Cyan = { angle = 15 }
Magenta = { angle = 75.5, shape = "Line" }
yellow = { angle = -10, factor = 1.08 }
"PANTONE 300: C" = { frequency = 75 }
"*" = {}
)";

std::string refusalOf(const std::string &text)
{
    try {
        screens::setFromText(text, "mine.toml");
        return "taken";
    } catch (const riders::io::Refusal &refusal) {
        return refusal.message;
    }
}

std::string with(const std::string &lines)
{
    return "name = \"Mine\"\n" + lines;
}

std::vector<std::string> spelled(const std::vector<screens::PlateScreen> &plates)
{
    std::vector<std::string> texts;
    for (const screens::PlateScreen &plate : plates)
        texts.push_back(textFromPlate(plate));
    return texts;
}

}  // namespace

TEST(ScreenSet, WhereQuotationMarksAreMissingItIsSaid)
{
    const auto ends = [](const std::string &text, const std::string &end) {
        const std::string refusal = refusalOf(text);
        EXPECT_TRUE(refusal.starts_with("mine.toml:")) << refusal;
        EXPECT_TRUE(refusal.ends_with(end)) << refusal;
    };
    ends(with("[plates]\nPANTONE 300 C = { angle = 15 }\n"),
         "; such a name goes between quotation marks, as in \"PANTONE 300 C\" =");
    ends(with("[plates]\n* = { angle = 15 }\n"), "; such a name goes between quotation marks, as in \"*\" =");
    ends("name = Mine\n[plates]\nCyan = { angle = 15 }\n", "; a text goes between quotation marks");
    ends(with("[plates]\nCyan = { angle = 22,5 }\n"), "saw '}'");
    ends(with("[plates]\nCyan = { angle = 15\n"), "saw '\\n'");
}

TEST(ScreenSet, AFactorCannotLeadBeyondWhatIsPossible)
{
    EXPECT_EQ(refusalOf(with("frequency = 900\n[plates]\nCyan = { factor = 1.5 }\n")),
              "mine.toml:4:8: expected a factor that makes a frequency from 1 to 999 lines per inch of 900");
}

TEST(ScreenSet, ProductsAreNumbersThatCanBeRead)
{
    const screens::ScreenSet set = screens::setFromText(kWhole, "offset.toml");
    EXPECT_EQ(screensOf(set, 133)[2].frequency, 143.64);
}

TEST(ScreenSet, HoldsWhatItsFileSays)
{
    const screens::ScreenSet set = screens::setFromText(kWhole, "offset.toml");
    EXPECT_EQ(set.name, "Offset");
    EXPECT_EQ(set.use, "coated paper");
    EXPECT_EQ(set.source, "handbooks");
    EXPECT_EQ(
        spelled(screens::screensOf(set)),
        (std::vector<std::string>{"Cyan:150@15,Euclidean", "Magenta:150@75.5,Line", "Yellow:162@-10,Euclidean",
                                  "PANTONE 300:: C:75,Euclidean", "*:150,Euclidean"}));
}

TEST(ScreenSet, IsScaledAsAWhole)
{
    const screens::ScreenSet set = screens::setFromText(kWhole, "offset.toml");
    EXPECT_EQ(
        spelled(screens::screensOf(set, 100)),
        (std::vector<std::string>{"Cyan:100@15,Euclidean", "Magenta:100@75.5,Line", "Yellow:108@-10,Euclidean",
                                  "PANTONE 300:: C:50,Euclidean", "*:100,Euclidean"}));
    EXPECT_THROW(screens::screensOf(set, 950), riders::io::Refusal);
}

TEST(ScreenSet, IsRefusedWhereAScaledPlateIsOutOfRange)
{
    const screens::ScreenSet set =
        screens::setFromText(with("frequency = 60\n[plates]\n\"*\" = { factor = 1.1 }\n"), "");
    try {
        screens::screensOf(set, 950);
        ADD_FAILURE() << "taken";
    } catch (const riders::io::Refusal &refusal) {
        EXPECT_EQ(refusal.message,
                  "the set \"Mine\" gives the rest 1045 lines per inch, not a frequency from 1 to 999 "
                  "lines per inch");
    }
}

TEST(ScreenSet, WithoutAFrequencyOfItsOwnIsNotScaled)
{
    const screens::ScreenSet own = screens::setFromText(with("[plates]\nCyan = { frequency = 60 }"), "own.toml");
    EXPECT_EQ(spelled(screens::screensOf(own)), std::vector<std::string>{"Cyan:60"});
    EXPECT_THROW(screens::screensOf(own, 100), riders::io::Refusal);
    const screens::ScreenSet none = screens::setFromText(with("[plates]\nCyan = { angle = 60 }"), "none.toml");
    EXPECT_EQ(spelled(screens::screensOf(none)), std::vector<std::string>{"Cyan:@60"});
    EXPECT_EQ(spelled(screens::screensOf(none, 100)), std::vector<std::string>{"Cyan:100@60"});
}

TEST(ScreenSet, OneMayWriteATableForEachPlate)
{
    const screens::ScreenSet set = screens::setFromText(
        with("frequency = 60\n[plates.Magenta]\nangle = 75\n[plates.Cyan]\nangle = 15\n"), "");
    EXPECT_EQ(spelled(screens::screensOf(set)), (std::vector<std::string>{"Magenta:60@75", "Cyan:60@15"}));
}

TEST(ScreenSet, APartThatIsGivenReplacesThatOfTheSet)
{
    std::vector<screens::PlateScreen> plates = screens::screensOf(screens::setFromText(kWhole, ""));
    screens::setPlate(plates, screens::plateFromText("Cyan:@22.5"));
    screens::setPlate(plates, screens::plateFromText("*:45,Line"));
    screens::setPlate(plates, screens::plateFromText("Gold:45@60"));
    EXPECT_EQ(spelled(plates), (std::vector<std::string>{
                                   "Cyan:150@22.5,Euclidean", "Magenta:150@75.5,Line", "Yellow:162@-10,Euclidean",
                                   "PANTONE 300:: C:75,Euclidean", "*:45,Line", "Gold:45@60"}));
}

TEST(ScreenSet, AWrongFileIsRefusedWithThePlaceAndWhatWasExpected)
{
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "mine.toml:1:1: expected the set's name, as in name = \"Offset\""},
        {"name = Offset", "mine.toml:1:8: "},
        {"name = \"a\"\nname = \"b\"", "mine.toml:2:"},
        {"name = \"\"", "mine.toml:1:8: expected name as a text between quotation marks"},
        {"name = 7", "mine.toml:1:8: expected name as a text between quotation marks"},
        {"name = \"a\\u0007\"", "mine.toml:1:8: expected name as a text between quotation marks"},
        {with("frequenzy = 60\n"), "mine.toml:2:1: there is no key \"frequenzy\" here; the keys are name, for, "
                                   "source, frequency, shape, plates"},
        {with("frequency = 0.9\n"), "mine.toml:2:13: expected a frequency from 1 to 999 lines per inch"},
        {with("frequency = \"60\"\n"), "mine.toml:2:13: expected a frequency from 1 to 999 lines per inch"},
        {with("frequency = nan\n"), "mine.toml:2:13: expected a frequency from 1 to 999 lines per inch"},
        {with("frequency = inf\n"), "mine.toml:2:13: expected a frequency from 1 to 999 lines per inch"},
        {with("frequency = 60\n"), "mine.toml:1:1: expected [plates] with a line for each plate"},
        {with("plates = 7\n"), "mine.toml:2:10: expected [plates] with a line for each plate"},
        {with("[plates]\n"), "mine.toml:2:1: expected [plates] with a line for each plate"},
        {with("[plates]\nCyan = 15\n"), "mine.toml:3:8: expected the plate's screen, as in { angle = 15 }"},
        {with("[plates]\nCyan = { angle = 361 }\n"), "mine.toml:3:18: expected an angle from -360 to 360 degrees"},
        {with("[plates]\nCyan = { angle = 9007199254740993 }\n"),
         "mine.toml:3:18: expected an angle from -360 to 360 degrees"},
        {with("[plates]\nCyan = { angel = 15 }\n"), "mine.toml:3:10: there is no key \"angel\" here; the keys are "
                                                    "frequency, angle, shape, factor"},
        {with("[plates]\nCyan = {}\n"), "mine.toml:3:8: expected a frequency, an angle or a shape for Cyan"},
        {with("[plates]\nCyan = { factor = 2 }\n"), "mine.toml:3:8: expected a frequency for the whole set"},
        {with("frequency = 60\n[plates]\nCyan = { frequency = 60, factor = 2 }\n"),
         "mine.toml:4:8: expected a frequency or a factor, not both"},
        {with("frequency = 60\n[plates]\nCyan = { factor = 11 }\n"),
         "mine.toml:4:19: expected a factor from 0.1 to 10"},
        {with("[plates]\n\"\" = { angle = 1 }\n"), "mine.toml:3:1: expected the name of a plate, 1 to 127 bytes"},
        {with("[plates]\n\"a\\n\" = { angle = 1 }\n"),
         "mine.toml:3:1: expected the name of a plate in UTF-8 without control characters"},
        {with("[plates]\nDefault = { angle = 1 }\n"), "mine.toml:3:1: expected the name of a plate (the rest"},
        {with("[plates]\nCyan = { angle = 1 }\ncyan = { angle = 1 }\n"),
         "mine.toml:4:1: expected each plate once; Cyan is there already"},
    };
    for (const auto &[text, words] : cases)
        EXPECT_EQ(refusalOf(text).substr(0, words.size()), words) << text;
}

TEST(ScreenSet, HasNoMoreThanItMay)
{
    std::string plates = with("[plates]\n");
    for (size_t i = 0; i < screens::kMostSetPlates; ++i)
        plates += "ink" + std::to_string(i) + " = { angle = 15 }\n";
    EXPECT_EQ(refusalOf(plates), "taken");
    EXPECT_EQ(refusalOf(plates + "last = { angle = 15 }\n"), "mine.toml:67:1: expected no more than 64 plates");
    const std::string comment = "[plates]\nCyan = { angle = 15 }\n#";
    const size_t room = screens::kMostSetBytes - with(comment).size();
    EXPECT_EQ(refusalOf(with(comment) + std::string(room, 'x')), "taken");
    EXPECT_EQ(refusalOf(with(comment) + std::string(room + 1, 'x')),
              "mine.toml: is larger than a set of screens may be, 65536 bytes");
    EXPECT_EQ(refusalOf("name = \"" + std::string(screens::kLongestSetText, 'x') + "\"\n" + comment), "taken");
    EXPECT_NE(refusalOf("name = \"" + std::string(screens::kLongestSetText + 1, 'x') + "\"\n" + comment), "taken");
    EXPECT_NE(refusalOf(std::string(60000, '[')).find("mine.toml:1:"), std::string::npos);
}

TEST(ScreenSet, APathInItCountsFromItsFolder)
{
    TemporaryFolder folder;
    writeFile(folder / "mine.toml",
              with("shape = \"./own.spot\"\n[plates]\nCyan = { shape = \"/x/y\" }\n\"*\" = {}"));
    const auto plates = screens::screensOf(screens::setFromFile(folder / "mine.toml"));
    EXPECT_EQ(plates.at(0).shape, "/x/y");
    EXPECT_EQ(plates.at(1).shape, (folder / "own.spot").string());
}

TEST(ScreenSet, IsFoundByNameTheUsersOwnFirst)
{
    TemporaryFolder folder;
    std::filesystem::create_directory(folder / "own");
    std::filesystem::create_directory(folder / "installed");
    for (const char *file :
         {"own/offset.toml", "own/.hidden.toml", "own/notes.txt", "installed/offset.toml", "installed/flexo.toml"})
        writeFile(folder / file, "");
    const screens::SetFolders folders{folder / "own", folder / "installed"};
    EXPECT_EQ(screens::setFiles(folders),
              (std::map<std::string, std::filesystem::path>{{"flexo", folder / "installed/flexo.toml"},
                                                            {"offset", folder / "own/offset.toml"}}));
    EXPECT_EQ(screens::setFileNamed("Offset", folders), folder / "own/offset.toml");
    EXPECT_EQ(screens::setFileNamed("./offset", folders), "./offset");
    EXPECT_THROW(screens::setFileNamed("notes", folders), riders::io::Refusal);
    EXPECT_TRUE(screens::setFiles({folder / "nowhere", {}}).empty());
}
