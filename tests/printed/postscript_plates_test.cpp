// What the piece for single plates makes of the screens in force, as the job is shown them. The dots are measured
// in tests/screens.
#include "make/plates_piece.h"
#include "printed/postscript_support.h"

namespace {

using riders::make::PlatePiece;
using riders::make::withPlates;

const std::string kNames = "[/Cyan /Magenta /Yellow /Black /Gold /Default]\n";
// Frequency and angle of each plate.
const std::string kTell = kNames +
                          "{currenthalftone exch 2 copy known not {pop /Default} if get\n"
                          "dup /Frequency get =only ( ) print /Angle get =only (, ) print} forall (\\n) print\n";
const std::string kTellFour =
    "currentcolorscreen 4 {pop exch =only ( ) print =only (, ) print} repeat (\\n) print\n";

RidersChoice roundDots(const char *frequency, const char *angle)
{
    return {.frequency = frequency, .angle = angle, .spotBody = pieceBytes(16128)};
}

std::string outputOf(const std::string &job, const std::string &device = "tiffsep1")
{
    TemporaryFolder folder;
    const auto result = runGhostscript(folder, job, "page%d.tif", "-sDEVICE=" + device + " -r600 -g90x90");
    EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
    std::string said;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with("%%SeparationName"))
            said += line + "\n";
    return said;
}

TEST(Plates, HaveTheirOwnBesideWhatAllHave)
{
    const std::string riders = withPlates(composeRiders(roundDots("60", "45")),
                                          {{"Cyan", {}, 15}, {"Yellow", 64.5, 0}, {"Gold", 70, {}}});
    EXPECT_EQ(outputOf("%!PS\n" + riders + kTell),
              "60.0 15.0, 60.0 45.0, 64.5 0.0, 60.0 45.0, 70.0 45.0, 60.0 45.0, \n");
    EXPECT_EQ(outputOf("%!PS\n" + riders + kTellFour), "60.0 45.0, 64.5 0.0, 60.0 45.0, 60.0 15.0, \n");
}

TEST(Plates, KeepWhatTheyHadWhereNothingWasChosen)
{
    const std::string riders = withPlates(composeRiders({}), {{"Cyan", {}, 22.5}, {"Black", 50, {}}});
    const std::string job = "80 1 {pop} 81 2 {pop} 82 3 {pop} 83 4 {pop} setcolorscreen\n";
    const std::string expected = "80.0 22.5, 81.0 2.0, 82.0 3.0, 50.0 4.0, 83.0 4.0, 83.0 4.0, \n";
    EXPECT_EQ(outputOf("%!PS\n" + job + riders + kTell), expected);
    EXPECT_EQ(outputOf("%!PS\n" + riders + job + kTell), expected);
    EXPECT_EQ(outputOf("%!PS\n" + riders + job + "<< >> setpagedevice showpage " + job + kTell), expected);
}

TEST(Plates, OfALaterRidersFileWinWhereBothChooseTheSame)
{
    const std::string first =
        withPlates(composeRiders(roundDots("60", "45")), {{"Cyan", 61, 15}, {"Magenta", {}, 75}});
    const std::string second =
        withPlates(composeRiders({.frequency = "50"}), {{"Magenta", {}, 30}, {"Gold", {}, 5}});
    EXPECT_EQ(outputOf("%!PS\n" + first + second + kTell),
              "50.0 15.0, 50.0 30.0, 50.0 45.0, 50.0 45.0, 50.0 5.0, 50.0 45.0, \n");
    EXPECT_EQ(outputOf("%!PS\n" + first + composeRiders({.angle = "7.5"}) + kTell),
              "61.0 7.5, 60.0 7.5, 60.0 7.5, 60.0 7.5, 60.0 7.5, 60.0 7.5, \n");
}

// In the order red, green, blue, gray, which is cyan, magenta, yellow, black.
TEST(Plates, ReachInterpretersWithoutHalftoneDictionaries)
{
    const std::string riders = withPlates(composeRiders(roundDots("60", "45")),
                                          {{"Cyan", {}, 15}, {"Magenta", {}, 75}, {"Yellow", {}, 0}});
    std::vector<std::string> hidden = kLevel2Only;
    std::erase(hidden, "setcolorscreen");
    std::erase(hidden, "currentcolorscreen");
    hidden.insert(hidden.end(), {"setuserparams", "currentuserparams"});
    EXPECT_EQ(outputOf(onInterpreterWithout(riders, hidden, "") + kTellFour),
              "60.0 45.0, 60.0 0.0, 60.0 75.0, 60.0 15.0, \n");
}

TEST(Plates, WithOneScreenForAllHaveThatOfBlack)
{
    std::vector<std::string> hidden = kLevel2Only;
    hidden.insert(hidden.end(), {"setuserparams", "currentuserparams"});
    const std::string riders =
        withPlates(composeRiders(roundDots("60", "45")), {{"Cyan", {}, 15}, {"Black", {}, 30}});
    EXPECT_EQ(outputOf(onInterpreterWithout(riders, hidden, "") + "currentscreen pop = =\n"), "30.0\n60.0\n");
}

TEST(Plates, WithADotShapeThatIsNoneKeepTheirs)
{
    const std::string riders = withPlates(composeRiders(roundDots("60", "45")),
                                          {{"Cyan\n)", 62, {}, "pop stop"}, {"Black", {}, {}, "pop"}});
    EXPECT_EQ(outputOf("%!PS\n" + riders +
                       "currenthalftone /Black get /SpotFunction get ==\n"
                       "currenthalftone dup (Cyan\\n\\)) cvn get /Frequency get =\n"
                       "/Default get /SpotFunction get length = count = countdictstack =\n"),
              "%%[ riders: the dot shape of plate Cyan?) is empty, fails, or gives what is no spot value; the job "
              "keeps its own ]%%\n{--pop--}\n62.0\n9\n0\n3\n");
}

// A page that is one plate: painted in black, named by a comment.
class PagePlate : public ::testing::Test {
protected:
    std::string toldBy(const std::string &pages)
    {
        const std::string tell =
            "/tell {systemdict /currenthalftone get exec /Zu3_Riders known\n"
            "systemdict begin userdict /Zu3_Riders get begin riderPageIs {=} {(none) =} ifelse\n"
            "riderToSet riderPlatesOfDevice end end /Default get 1 get = pop} def\n";
        const std::string riders = withPlates(composeRiders(roundDots("60", "45")),
                                              {{"Cyan", {}, 15}, {"Magenta", {}, 75}, {"PANTONE 300 C", {}, 30}});
        return outputOf("%!PS-Adobe-3.0\n" + riders + tell + pages, "pbmraw");
    }
};

TEST_F(PagePlate, IsNamedByAComment)
{
    EXPECT_EQ(toldBy("%%Page: 1 1\n%%PlateColor: Cyan\ntell\n"), "Cyan\n15.0\n");
    EXPECT_EQ(toldBy("%%PlateName: (Process magenta) \ntell\n"), "Magenta\n75.0\n");
    EXPECT_EQ(toldBy("%%PlateColor: (pantone 300 c)\ntell\n"), "PANTONE 300 C\n30.0\n");
    EXPECT_EQ(toldBy("%%PlateColor: Composite\ntell\n"), "none\n45.0\n");
    EXPECT_EQ(toldBy("%%PlateColor: Silver\ntell\n"), "Silver\n45.0\n");
}

TEST_F(PagePlate, HoldsForItsPageAlone)
{
    EXPECT_EQ(toldBy("%%Page: 1 1\n%%PlateColor: Cyan\nshowpage\n%%Page: 2 2\ntell\n"), "none\n45.0\n");
    EXPECT_EQ(toldBy("%%PlateColor: Cyan\n%%Page: 1 1\nshowpage\n%%Page: 2 2\ntell\n"), "Cyan\n15.0\n");
    EXPECT_EQ(toldBy("%%Page: 1 1\n%%PlateColor: Cyan\nshowpage\n%%PlateColor: Magenta\n%%Page: 2 2\ntell\n"),
              "Magenta\n75.0\n");
}

TEST_F(PagePlate, IsNotThatOfAnEmbeddedDocument)
{
    EXPECT_EQ(toldBy("%%Page: 1 1\n%%PlateColor: Cyan\n%%BeginDocument: x\n%%PlateColor: Magenta\n%%EndDocument\n"
                     "tell\n"),
              "Cyan\n15.0\n");
}

// Another program's reading of comments goes on.
TEST_F(PagePlate, LeavesAnEarlierReaderOfCommentsItsOwn)
{
    const std::string riders = withPlates(composeRiders(roundDots("60", "45")), {{"Cyan", {}, 15}});
    EXPECT_EQ(outputOf("%!PS-Adobe-3.0\n<< /ProcessDSCComment {dup (%%Pl) anchorsearch {pop pop (read ) print =} {pop pop} ifelse pop} >> setuserparams\n" + riders +
                       riders + "%%PlateColor: Cyan\ncount =\n"),
              "read %%PlateColor: Cyan\n0\n");
}

}  // namespace
