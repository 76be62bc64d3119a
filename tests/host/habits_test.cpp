// What people are used to on a command line: "-", -q and -v, options kept in a file or in the environment, words
// that are nearly right, numbers as they are written at home.
#include "io/nearest.h"
#include "support/command.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

constexpr const char *kGreyJob =
    "%!PS\n%%EndComments\n<</PageSize [72 72]>> setpagedevice .5 setgray 0 0 72 72 rectfill showpage\n";

class Habits : public ::testing::Test {
protected:
    CommandResult riders(const std::vector<std::string> &words, const std::string &input = {})
    {
        std::vector<std::string> all = {"env", "XDG_CONFIG_HOME=" + (folder / "config").string(),
                                        "RIDERS_OPTIONS=" + options, RIDERS_BINARY_DIR "/riders"};
        all.insert(all.end(), words.begin(), words.end());
        return runProgram(all, input, folder.path());
    }
    std::string said(const std::vector<std::string> &words)
    {
        const CommandResult result = riders(words);
        EXPECT_EQ(result.status, 0) << words[0] << ": " << result.err;
        return result.out;
    }
    // What refuses, with its exit code.
    std::string refused(int status, const std::vector<std::string> &words)
    {
        const CommandResult result = riders(words);
        EXPECT_EQ(result.status, status) << words[0] << ": " << result.out;
        return result.err;
    }
    void keep(const std::string &text)
    {
        fs::create_directories(folder / "config/riders");
        writeFile(folder / "config/riders/riders.conf", text);
    }
    std::string conf() const { return (folder / "config/riders/riders.conf").string(); }

    TemporaryFolder folder;
    std::string options;
};

}  // namespace

TEST_F(Habits, AHyphenIsStandardInputAndOutput)
{
    const CommandResult made = riders({"make", "-o", "-", "--angle", "45"});
    EXPECT_EQ(made.status, 0) << made.err;
    EXPECT_TRUE(made.out.starts_with("%!Zu3_Riders\n") && made.out.ends_with("%Zu3_RidersEnd\n"));
    EXPECT_EQ(made.err, "standard output: at 45°\n");
    ASSERT_EQ(riders({"make", "-q", "-o", "film", "--angle", "45"}).status, 0);
    EXPECT_EQ(made.out, contentsOf(folder / "film"));
    writeFile(folder / "job.ps", kGreyJob);
    const std::string applied = said({"apply", "film", "job.ps"});
    EXPECT_EQ(riders({"apply", "film", "-", "-o", "-"}, kGreyJob).out, applied);
    EXPECT_EQ(riders({"apply", "-", "job.ps"}, made.out).out, applied);
    EXPECT_EQ(riders({"strip", "-", "-o", "-"}, applied).out, kGreyJob);
    EXPECT_EQ(refused(1, {"apply", "-", "-"}),
              "riders apply: the riders file and the job cannot both come from standard "
              "input; name one of them\n");
    EXPECT_FALSE(fs::exists(folder / "-"));
    EXPECT_EQ(refused(1, {"make", "-o", "-", "--angle", "45", "--json"}),
              "riders make: the riders file goes to standard output, where --json has no place\n");
}

TEST_F(Habits, ProofsAndFilmsTakeTheirJobFromStandardInput)
{
    ASSERT_EQ(riders({"make", "-o", "film", "--frequency", "10", "--angle", "45"}).status, 0);
    EXPECT_EQ(riders({"proof", "-", "--dpi", "100", "--riders", "film"}, kGreyJob).out,
              "stdin-proof/proof.html\n");
    EXPECT_TRUE(riders({"film", "-", "--dpi", "100", "--riders", "film"}, kGreyJob)
                    .out.starts_with("stdin-film/stdin_p01_Black.tif: page 1, Black: 10 lpi at 45°"));
    EXPECT_EQ(riders({"film", "-"}, "hello").err,
              "riders film: standard input: is neither PostScript nor EPS nor PDF\n");
    EXPECT_EQ(refused(1, {"proof", "-", "--riders", "-"}),
              "riders proof: only one file can come from standard input\n");
    for (const auto &entry : fs::directory_iterator(fs::temp_directory_path()))
        EXPECT_FALSE(entry.path().filename().string().starts_with(".riders-stdin-")) << entry.path();
}

TEST_F(Habits, QuietSaysNothingAndVerboseMore)
{
    EXPECT_EQ(said({"make", "-q", "-o", "film", "--angle", "45"}), "");
    EXPECT_EQ(said({"make", "-v", "-o", "film", "--angle", "45"}), "film: at 45°\n  all plates at 45°\n");
    writeFile(folder / "job.ps", kGreyJob);
    const CommandResult applied = riders({"apply", "-v", "film", "job.ps", "-o", "new.ps"});
    EXPECT_TRUE(applied.err.starts_with("riders apply: film is added in line 3, ")) << applied.err;
    const CommandResult stripped = riders({"strip", "--verbose", "new.ps", "-o", "new.ps"});
    EXPECT_EQ(stripped.err.substr(stripped.err.find("line")), applied.err.substr(applied.err.find("line")));
    EXPECT_EQ(said({"proof", "-q", "job.ps", "--dpi", "100"}), "");
    EXPECT_TRUE(fs::exists(folder / "job-proof/proof.html"));
}

TEST_F(Habits, NumbersMayHaveADecimalCommaAndAngleSigns)
{
    EXPECT_EQ(said({"make", "-o", "film", "--frequency", "22,5", "--angle", "-15", "--flatness", "1,5"}),
              "film: 22.5 lpi at 345°; flatness 1.5\n");
    EXPECT_EQ(
        said({"make", "-o", "film", "--plate", "Cyan:133,5@-22,5,Round", "--plate", "Gold:spot-60,5-75-line"}),
        "film: Cyan 133.5 lpi at -22.5°, Round; Gold 60.5 lpi at 75°, line\n");
    EXPECT_EQ(said({"mesh", "--frequency", "22,5", "--threads", "90,5/cm", "--angle", "-7,5", "--json"}),
              said({"mesh", "--frequency", "22.5", "--threads", "90.5/cm", "--angle", "-7.5", "--json"}));
    EXPECT_NE(refused(1, {"make", "-o", "film", "--frequency", "1,2,3"}), "");
}

TEST_F(Habits, AWordThatIsNearlyRightIsProposed)
{
    EXPECT_TRUE(refused(2, {"mkae", "-o", "film"}).ends_with("Did you mean riders make?\n"));
    EXPECT_TRUE(refused(2, {"make", "-o", "film", "--freqency", "60"}).ends_with("Did you mean --frequency?\n"));
    EXPECT_TRUE(refused(1, {"make", "-o", "film", "--screens", "ofset"}).ends_with("; did you mean offset?\n"));
    EXPECT_TRUE(refused(1, {"make", "-o", "film", "--spot", "elipse"}).ends_with("; did you mean Ellipse?\n"));
    EXPECT_TRUE(refused(1, {"shapes", "cosinedto"}).ends_with("; did you mean CosineDot?\n"));
    EXPECT_EQ(riders::io::nearest("xyz", {"make", "film"}), "");
    EXPECT_EQ(riders::io::nearest("flim", {"make", "film"}), "film");
}

TEST_F(Habits, OptionsAreTakenFromAFileAndTheEnvironment)
{
    keep("# mine\nannotation = \"of the file\"\n\n[make]\nfrequency = 60\nerror-handler\n[film]\ndpi = 300\n");
    EXPECT_EQ(said({"make", "-o", "film"}), "film: 60 lpi; annotation \"of the file\"; error handler\n");
    options = "--frequency 85 --dpi 600 --annotation='of the variable'";
    EXPECT_EQ(said({"make", "-o", "film"}), "film: 85 lpi; annotation \"of the variable\"; error handler\n")
        << "and --dpi needs --explain";
    EXPECT_EQ(said({"make", "-o", "film", "--frequency=20", "--annotation", "x"}),
              "film: 20 lpi; annotation \"x\"; error handler\n");
    keep("[make]\nerror-handler = no\nplate = Cyan:60\nplate = Gold:@75\nquiet\n");
    options = "";
    EXPECT_EQ(said({"make", "-o", "film", "--json"}), "{\"file\": \"film\", \"plates\": [{\"plate\": \"Cyan\", "
                                                      "\"frequency\": 60}, {\"plate\": \"Gold\", \"angle\": "
                                                      "75}], \"errorHandler\": false}\n")
        << "what excludes an option that is given is left out";
    EXPECT_NE(said({"make", "--help"}), "");
}

TEST_F(Habits, ABadLineIsRefusedWithItsPlace)
{
    const std::vector<std::string> make = {"make", "-o", "film", "--angle", "45"};
    const auto wrong = [&](const std::string &text) {
        keep(text);
        std::string words = refused(2, make);
        const std::string start = "riders: " + conf() + ":";
        EXPECT_TRUE(words.starts_with(start)) << words;
        return words.substr(std::min(start.size(), words.size()));
    };
    EXPECT_EQ(wrong("\n[make]\nfreqency = 60\n"),
              "3: riders make has no option --freqency; did you mean --frequency?\n");
    EXPECT_EQ(wrong("[mkae]\ndpi = 60\n"), "2: there is no command mkae; did you mean make?\n");
    EXPECT_EQ(wrong("frequncy = 60\n"), "1: no command has the option --frequncy; did you mean --frequency?\n");
    EXPECT_EQ(wrong("[make\n"), "1: expected a command in brackets, as in [film]\n");
    EXPECT_EQ(wrong("one two\n"), "1: expected NAME = VALUE, as in dpi = 2400\n");
    EXPECT_EQ(wrong("[make]\nspot =\n"), "2: --spot needs a value\n");
    EXPECT_EQ(wrong("[make]\nspot\n"), "2: --spot needs a value\n");
    EXPECT_EQ(wrong("[make]\nerror-handler = maybe\n"), "2: --error-handler is yes or no, not \"maybe\"\n");
    EXPECT_FALSE(fs::exists(folder / "film"));
    keep("");
    options = "--frequency '60";
    EXPECT_EQ(refused(2, make), "riders: RIDERS_OPTIONS: a quotation mark is not closed\n");
    options = "60";
    EXPECT_EQ(refused(2, make), "riders: RIDERS_OPTIONS: expected an option, not \"60\"\n");
    options = "";
    fs::remove(conf());
    fs::create_directory(conf());
    EXPECT_EQ(refused(1, make), "riders: " + conf() + ": is a folder\n");
}

TEST_F(Habits, AStrictProofFailsWhereAScreenIsFarOff)
{
    writeFile(folder / "job.ps", "%!PS\n<</PageSize [144 144]>> setpagedevice 60 45 {add 2 div} setscreen\n"
                                 ".5 setgray 0 0 144 144 rectfill showpage\n");
    ASSERT_EQ(riders({"make", "-o", "film", "--frequency", "61", "--angle", "15"}).status, 0);
    ASSERT_EQ(riders({"make", "-o", "fine", "--frequency", "300", "--angle", "45"}).status, 0);
    EXPECT_EQ(riders({"proof", "--strict", "job.ps", "--riders", "film", "--dpi", "600"}).status, 0);
    const CommandResult off = riders({"proof", "--strict", "job.ps", "--riders", "fine", "--dpi", "600"});
    EXPECT_EQ(off.status, 1);
    EXPECT_EQ(off.out, "job-proof/proof.html\n");
    EXPECT_NE(off.err.find("riders proof: page 1, Black: "), std::string::npos) << off.err;
    EXPECT_TRUE(off.err.ends_with("riders proof: the proof is made, but a screen is not as asked for\n"))
        << off.err;
    const CommandResult json = riders({"proof", "--json", "job.ps", "--riders", "fine", "--dpi", "600"});
    EXPECT_EQ(json.status, 0) << json.err;
    EXPECT_TRUE(json.out.starts_with("{\"page\": \"job-proof/proof.html\", \"off\": [\"page 1, Black: "))
        << json.out;
}

TEST_F(Habits, NamesAreListedOnALineEach)
{
    EXPECT_TRUE(said({"list", "frequencies"}).starts_with("20\n25\n30\n"));
    EXPECT_EQ(said({"list", "angles"}).substr(0, 13), "0\n15\n22.5\n30\n");
    EXPECT_EQ(said({"list", "angles", "--json"}),
              "[0, 15, 22.5, 30, 45, 60, 75, 90, 7.5, 37.5, 52.5, 67.5, 82.5]\n");
    EXPECT_NE(said({"list", "fonts"}).find("\nHelvetica-Bold\n"), std::string::npos);
    EXPECT_NE(said({"list", "shapes"}).find("\nSimpleDot\nRound\n"), std::string::npos)
        << said({"list", "shapes"});
    fs::create_directories(folder / "config/riders/screens");
    writeFile(folder / "config/riders/screens/mine.toml", "name = \"Mine\"\n[plates]\nBlack = { angle = 45 }\n");
    EXPECT_NE(said({"list", "screens", "--json"}).find("\"mine\", \"newspaper\""), std::string::npos);
    EXPECT_EQ(riders({"list", "mines"}).status, 2);
    EXPECT_EQ(riders({"list"}).status, 2);
    // What is listed is taken.
    EXPECT_EQ(
        riders({"make", "-o", "film", "--spot", "SimpleDot", "--annotation", "x", "--font", "Helvetica-Bold"})
            .status,
        0);
}

TEST_F(Habits, ASpotFunctionFromATodaysEditorIsHelped)
{
    const std::string body = "abs exch\nabs add 1 exch sub\n";
    writeFile(folder / "mine.spot", "%!KT1_Spot\n" + body);
    const std::string hint = "riders shapes FILE --fix makes a copy in which it does";
    EXPECT_NE(refused(1, {"make", "-o", "film", "--spot", "./mine.spot"}).find(hint), std::string::npos);
    EXPECT_NE(refused(1, {"shapes", "./mine.spot"}).find(hint), std::string::npos);
    EXPECT_EQ(said({"shapes", "./mine.spot", "--fix"}), "mine-fixed.spot\n");
    EXPECT_EQ(contentsOf(folder / "mine-fixed.spot"), "%!KT1_Spot\r" + body);
    EXPECT_EQ(contentsOf(folder / "mine.spot"), "%!KT1_Spot\n" + body) << "it is a copy";
    EXPECT_EQ(said({"make", "-o", "film", "--spot", "./mine-fixed.spot"}), "film: ./mine-fixed.spot\n");
    const CommandResult again = riders({"shapes", "./mine-fixed.spot", "--fix", "-o", "copy.spot"});
    EXPECT_EQ(again.err, "riders shapes: ./mine-fixed.spot needs no change\n");
    EXPECT_EQ(contentsOf(folder / "copy.spot"), contentsOf(folder / "mine-fixed.spot"));
    writeFile(folder / "photo.jpg", "photo");
    EXPECT_EQ(
        refused(1, {"shapes", "./mine.spot", "--fix", "-o", "photo.jpg"}),
        "riders shapes: photo.jpg: exists and is no spot function file; name another file, or replace it with "
        "--force\n");
    EXPECT_EQ(contentsOf(folder / "photo.jpg"), "photo");
    EXPECT_EQ(said({"shapes", "./mine.spot", "--fix", "-o", "photo.jpg", "--force", "--json"}),
              "{\"file\": \"photo.jpg\", \"changed\": true}\n");
    EXPECT_EQ(said({"shapes", "./mine.spot", "--fix", "-o", "./mine.spot"}), "./mine.spot\n");
    EXPECT_EQ(contentsOf(folder / "mine.spot"), "%!KT1_Spot\r" + body);
    writeFile(folder / "none", "abs exch\n");
    EXPECT_NE(refused(1, {"shapes", "./none", "--fix"}).find("its first line does not hold %!KT1_Spot"),
              std::string::npos);
}
