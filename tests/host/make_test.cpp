// `riders make`: one code path with the dialogs.
#include <sys/resource.h>
#include <sys/stat.h>

#include <utility>

#include "make/menu_match.h"
#include "support/command.h"
#include "support/toolbox_test.h"

namespace {

namespace make = riders::make;

class Make : public ::testing::Test {
protected:
    CommandResult make(std::vector<std::string> options)
    {
        std::vector<std::string> arguments = {"XDG_CONFIG_HOME=" + (folder / "config").string(),
                                              RIDERS_BINARY_DIR "/riders", "make", "-o", "made"};
        arguments.insert(arguments.begin(), "env");
        arguments.insert(arguments.end(), options.begin(), options.end());
        return runProgram(arguments, {}, folder.path());
    }

    std::string made() const { return contentsOf(folder / "made"); }
    static std::string pieceBytes(const std::string &name)
    {
        return contentsOf(std::filesystem::path(RIDERS_SOURCE_DIR) / "resources/ps" / name);
    }
    bool holds(const std::string &text) const { return made().find(text) != std::string::npos; }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(Make, WritesWhatWasNamedAndNothingElse)
{
    CommandResult result = make({"--frequency", "85"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "made: 85 lpi\n");
    EXPECT_TRUE(holds("85"));
    std::string onlyFrequency = made();
    ASSERT_EQ(make({"--frequency", "85", "--angle", "45", "--flatness", "1", "--spot", "round", "--error-handler"})
                  .status,
              0);
    EXPECT_GT(made().size(), onlyFrequency.size());
    ASSERT_EQ(make({"--frequency", "85"}).status, 0);
    EXPECT_EQ(made(), onlyFrequency);
}

TEST_F(Make, AValueThatEqualsAMenuItemPicksTheItem)
{
    ASSERT_EQ(make({"--frequency", "85"}).status, 0);
    std::string plain = made();
    ASSERT_EQ(make({"--frequency", "85.0"}).status, 0);
    EXPECT_EQ(made(), plain);
}

TEST_F(Make, NothingNamedIsRefusedInThePluginsWords)
{
    CommandResult result = make({});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err.rfind("riders make: ", 0), 0u) << result.err;
    EXPECT_GT(result.err.size(), 30u) << result.err;
    EXPECT_FALSE(std::filesystem::exists(folder / "made"));
}

TEST_F(Make, ARefusalLeavesAnOldFileAsItWas)
{
    writeFile(folder / "made", "%!Zu3_Riders mine");
    EXPECT_EQ(make({}).status, 1);
    EXPECT_EQ(make({"--spot", "octagonal"}).status, 1);
    EXPECT_EQ(make({"--frequency", "9999"}).status, 1);
    EXPECT_EQ(made(), "%!Zu3_Riders mine");
}

TEST_F(Make, AnOldFileIsReplacedWhole)
{
    writeFile(folder / "made", "%!Zu3_Riders" + std::string(100000, 'x'));
    EXPECT_EQ(make({"--angle", "45"}).status, 0);
    EXPECT_EQ(made().substr(0, 12), "%!Zu3_Riders");
    EXPECT_LT(made().size(), 100000u);
    for (const auto &entry : std::filesystem::directory_iterator(folder.path()))
        EXPECT_EQ(entry.path().filename().string().find("KTTemp"), std::string::npos) << entry.path();
}

TEST_F(Make, LeavesTheSavedSettingsAloneUnlessAskedToSave)
{
    EXPECT_EQ(make({"--frequency", "85"}).status, 0);
    EXPECT_FALSE(std::filesystem::exists(folder / "config"));
    EXPECT_EQ(make({"--frequency", "85", "--save-settings"}).status, 0);
    EXPECT_TRUE(std::filesystem::exists(folder / "config/riders"));
}

TEST_F(Make, WhatIsSavedDoesNotFindItsWayIntoAFileThatDidNotAskForIt)
{
    ASSERT_EQ(make({"--frequency", "85", "--error-handler", "--save-settings"}).status, 0);
    ASSERT_EQ(make({"--angle", "45", "--save-settings"}).status, 0);
    std::string withSaved = made();
    ASSERT_EQ(make({"--angle", "45"}).status, 0);
    EXPECT_EQ(made(), withSaved);
}

TEST_F(Make, AFolderThatIsNotThereIsRefused)
{
    CommandResult result = runRiders({"make", "-o", "nowhere/made", "--angle", "45"}, {}, folder.path());
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("there is no folder"), std::string::npos) << result.err;
    EXPECT_EQ(runRiders({"make", "-o", folder.path(), "--angle", "45"}).status, 1);
}

TEST_F(Make, NamesThatNoDialogCouldTypeStillWork)
{
    std::string longName(200, 'n');
    for (const std::string &name : {longName, std::string("Übung 日本.ps"), std::string("Übung.ps")}) {
        CommandResult result = runRiders({"make", "-o", name, "--angle", "45"}, {}, folder.path());
        EXPECT_EQ(result.status, 0) << name << ": " << result.err;
        EXPECT_EQ(contentsOf(folder / name).substr(0, 12), "%!Zu3_Riders") << name;
    }
}

TEST_F(Make, ANameWithAColonIsRefusedInWords)
{
    CommandResult result = runRiders({"make", "-o", "a:b", "--angle", "45"}, {}, folder.path());
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("colon"), std::string::npos) << result.err;
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(Make, AnyValueAnnotationFontAndSizeGoThroughTheirDialogs)
{
    CommandResult result = make({"--frequency", "87.5", "--angle", "33", "--annotation", "Größe (1", "--font",
                                 "courier-bold", "--size", "14"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(holds("87.5"));
    EXPECT_TRUE(holds("Courier-Bold"));
    EXPECT_TRUE(holds("Gr\x9a\xa7"
                      "e (1"));
}

TEST_F(Make, WhatADialogRefusesIsRefusedInItsOwnWords)
{
    EXPECT_NE(make({"--frequency", "9999"}).err.find("from 1 to 999"), std::string::npos);
    EXPECT_NE(make({"--angle", "1a"}).err.find("not a number"), std::string::npos);
    EXPECT_NE(make({"--annotation", "x", "--size", "31"}).err.find("from 4 to 30"), std::string::npos);
    EXPECT_NE(make({"--annotation", ""}).err.find("1 to 254"), std::string::npos);
    EXPECT_NE(make({"--annotation", std::string(300, 'x')}).err.find("254"), std::string::npos);
    EXPECT_NE(make({"--annotation", "日"}).err.find("日"), std::string::npos);
    EXPECT_NE(make({"--annotation", "x", "--font", "Comic"}).err.find("Comic"), std::string::npos);
    EXPECT_NE(make({"--spot", "octagonal"}).err.find("octagonal"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder / "made"));
}

TEST_F(Make, ASpotFunctionFileIsImported)
{
    writeFile(folder / "mine.spot", "%!KT1_Spot\rpop % by rows\r");
    CommandResult result = make({"--spot", "mine.spot"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(holds("pop % by rows"));
    writeFile(folder / "other.spot", "pop\r");
    EXPECT_EQ(make({"--spot", "other.spot"}).status, 1);
}

TEST_F(Make, AnInstalledDotShapeIsImportedByItsName)
{
    ASSERT_EQ(make({"--spot", "cosinedot", "--save-settings"}).status, 0);
    EXPECT_TRUE(holds("180 mul cos exch 180 mul cos add 2 div"));
    EXPECT_NE(contentsOf(folder / "config/riders/._Riders Preferences").find("CosineDot"), std::string::npos);
    EXPECT_NE(make({"--spot", "octagonal"}).err.find("Euclidean, and those of `riders shapes`"), std::string::npos);
}

TEST_F(Make, AnInstalledDotShapeTakesNoNameFromTheMenu)
{
    ASSERT_EQ(make({"--spot", "round"}).status, 0);
    EXPECT_TRUE(holds("% Round"));
    ASSERT_EQ(make({"--spot", "euclidean"}).status, 0);
    EXPECT_TRUE(holds("% Euclidean"));
}

TEST_F(Make, AnInstalledDotShapeComesBeforeAFileOfItsName)
{
    writeFile(folder / "Rhomboid", "%!KT1_Spot\rpop % by rows\r");
    ASSERT_EQ(make({"--spot", "Rhomboid"}).status, 0);
    EXPECT_FALSE(holds("by rows"));
    ASSERT_EQ(make({"--spot", "./Rhomboid"}).status, 0);
    EXPECT_TRUE(holds("by rows"));
}

TEST_F(Make, ASpotFileThatNoDialogWouldOfferIsRefusedInWords)
{
    const std::string spot = "%!KT1_Spot\rpop % by rows\r";
    std::filesystem::create_directories(folder / "folder");
    std::filesystem::create_directories(folder / ".away");
    writeFile(folder / ".hidden", spot);
    writeFile(folder / ".away" / "mine", spot);
    writeFile(folder / "binary", std::string(100, '\0') + spot);
    std::filesystem::create_symlink("folder", folder / "link");
    for (const auto &[name, why] : std::vector<std::pair<std::string, std::string>>{{"folder", "not an ordinary file"},
                                                                                    {"link", "not an ordinary file"},
                                                                                    {".hidden", "hidden"},
                                                                                    {".away/mine", "hidden"},
                                                                                    {"binary", "not a text file"},
                                                                                    {"-", "no file \"-\""}}) {
        CommandResult result = make({"--spot", name});
        EXPECT_EQ(result.status, 1) << name;
        EXPECT_NE(result.err.find(why), std::string::npos) << name << ": " << result.err;
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "made"));
    writeFile(folder / "folder" / "mine", spot);
    EXPECT_EQ(make({"--spot", "link/mine"}).status, 0);
}

TEST_F(Make, WhatIsNoOrdinaryFileIsNeverReplaced)
{
    ASSERT_EQ(mkfifo((folder / "made").c_str(), 0600), 0);
    CommandResult result = make({"--frequency", "85"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "riders make: made is not an ordinary file; name another one for the riders\n");
    EXPECT_TRUE(std::filesystem::is_fifo(folder / "made"));
    EXPECT_EQ(runRiders({"make", "-o", ""}).err, "riders make: name a file for the riders\n");
}

TEST_F(Make, ANameTooLongForTheDiskIsRefusedInWords)
{
    CommandResult result =
        runRiders({"make", "-o", std::string(256, 'n'), "--frequency", "85"}, {}, folder.path());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err.find("filesystem"), std::string::npos) << result.err;
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(Make, AFileThatMayNotGrowIsAFullDisk)
{
    writeFile(folder / "made", "%!Zu3_Riders mine");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit small = before;
    small.rlim_cur = 400;
    setrlimit(RLIMIT_FSIZE, &small);
    CommandResult result = make({"--spot", "Round", "--error-handler"});
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(result.status, 1) << result.err;
    EXPECT_NE(result.err.find("full"), std::string::npos) << result.err;
    EXPECT_EQ(made(), "%!Zu3_Riders mine");
}

TEST_F(Make, WrongUsageExitsWithTwo)
{
    EXPECT_EQ(runRiders({"make"}).status, 2);
    EXPECT_EQ(runRiders({"make", "-o", "x", "--no-such-option"}).status, 2);
    EXPECT_EQ(runRiders({"make", "-o", "x", "--font", "Courier"}).status, 2);
    EXPECT_EQ(runRiders({"make", "--help"}).status, 0);
    EXPECT_EQ(runRiders({"--help"}).status, 0);
    EXPECT_EQ(runRiders({"frobnicate"}).status, 2);
}

TEST(MenuMatch, ComparesNumbersNotTexts)
{
    std::vector<std::string> items = {"Printer's own", "20 lpi", "85 lpi", "7.5\u00B0", "Other..."};
    EXPECT_EQ(make::itemWithValue(items, "85"), 3);
    EXPECT_EQ(make::itemWithValue(items, "085.00"), 3);
    EXPECT_EQ(make::itemWithValue(items, "7.5"), 4);
    EXPECT_EQ(make::itemWithValue(items, "8"), 0);
    EXPECT_EQ(make::itemWithValue(items, "85x"), 0);
    EXPECT_EQ(make::itemWithValue(items, ""), 0);
    EXPECT_EQ(make::itemWithValue(items, "Other..."), 0);
}

TEST(MenuMatch, NamesMatchWhateverTheirCapitals)
{
    std::vector<std::string> items = {"Printer's own   ", "Round", "Square"};
    EXPECT_EQ(make::itemWithName(items, "round"), 2);
    EXPECT_EQ(make::itemWithName(items, "SQUARE"), 3);
    EXPECT_EQ(make::itemWithName(items, "squar"), 0);
    EXPECT_EQ(make::itemWithName(items, "printer's own"), 1);
}

TEST(MenuMatch, DividersAndItemsThatOpenADialogAreNoValues)
{
    std::vector<std::string> items = {"Printer's own", "-", "Round", "Import..."};
    EXPECT_EQ(make::itemWithName(items, "-"), 0);
    EXPECT_EQ(make::itemWithName(items, "Import..."), 0);
    EXPECT_EQ(make::itemWithName(items, "round"), 3);
}
