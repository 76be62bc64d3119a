// What the error handler prints when a job fails. The jobs are in broken_jobs; comments in them say what
// is to be found: the words on the sheet, where the job had painted, where the report is (in points, as the
// sheet lies), and what options Ghostscript is given.
#include <fstream>
#include <sstream>

#include "printed/postscript_support.h"

namespace {

const std::filesystem::path kJobs = std::filesystem::path(RIDERS_SOURCE_DIR) / "tests/printed/broken_jobs";
const std::string kPicture = "-sDEVICE=pbmraw -r72";
const std::string kWords = "-sDEVICE=txtwrite";

std::string comment(const std::string &job, const std::string &name, const std::string &otherwise = "")
{
    const std::string start = "\n% " + name + ": ";
    const size_t at = job.find(start);
    if (at == std::string::npos)
        return otherwise;
    const size_t first = at + start.size();
    return job.substr(first, job.find('\n', first) - first);
}

std::string withRiders(const std::string &job, const std::string &riders)
{
    const size_t second = job.find('\n') + 1;
    return job.substr(0, second) + riders + job.substr(second);
}

std::string firstLine(const std::string &text)
{
    return text.substr(0, text.find('\n'));
}

// Ink in a rectangle given in points from the sheet's lower left corner.
double inkIn(const Bitmap &page, const std::string &rectangle)
{
    std::istringstream numbers(rectangle);
    int left = 0, bottom = 0, right = 0, top = 0;
    numbers >> left >> bottom >> right >> top;
    EXPECT_TRUE(numbers) << rectangle;
    return page.share(left, page.height - top, right, page.height - bottom);
}

// Each of the words, which are separated by semicolons, must be on the sheet.
void expectWords(const std::string &sheet, const std::string &words)
{
    std::istringstream all(words);
    for (std::string word; std::getline(all >> std::ws, word, ';');)
        EXPECT_NE(sheet.find(word), std::string::npos) << word << " is not in:\n" << sheet;
}

class PostScriptErrors : public ::testing::Test {
protected:
    GhostscriptResult run(const std::string &job, const std::string &options)
    {
        std::filesystem::remove(folder / "page");
        return runGhostscript(folder, job, "page", options);
    }
    std::string wordsOf(const std::string &job, const std::string &options = "")
    {
        run(job, kWords + " " + options);
        return std::filesystem::exists(folder / "page") ? contentsOf(folder / "page") : "";
    }

    const std::string handler = composeRiders({.errorHandler = true});
    TemporaryFolder folder;
};

class BrokenJobs : public PostScriptErrors, public ::testing::WithParamInterface<std::string> {};

TEST_P(BrokenJobs, SayOnTheSheetWhatFailed)
{
    const std::string job = contentsOf(kJobs / (GetParam() + ".ps")), options = comment(job, "Ghostscript");
    const std::string broken = withRiders(job, handler), painted = comment(job, "Painted");
    const auto without = run(job, "-sDEVICE=nullpage " + options);
    const auto with = run(broken, kPicture + " " + options);
    EXPECT_EQ(with.exitCode, 1);
    EXPECT_EQ(without.exitCode, 1);
    EXPECT_TRUE(with.output.starts_with("Error: /")) << with.output;
    EXPECT_EQ(firstLine(with.output), firstLine(without.output));
    const Bitmap page = readBitmap(folder / "page");
    EXPECT_GT(inkIn(page, comment(job, "Box", "20 20 120 60")), 0.03) << "the report";
    if (!painted.starts_with("nothing")) {
        EXPECT_GT(inkIn(page, painted), 0.05) << "what was painted before";
    }
    expectWords(wordsOf(broken, options), comment(job, "On the sheet"));
}

std::vector<std::string> jobNames()
{
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(kJobs))
        names.push_back(entry.path().stem());
    std::sort(names.begin(), names.end());
    return names;
}

INSTANTIATE_TEST_SUITE_P(All, BrokenJobs, ::testing::ValuesIn(jobNames()),
                         [](const auto &info) { return info.param; });

TEST_F(PostScriptErrors, ThereAreAtLeastTenBrokenJobs)
{
    EXPECT_GE(jobNames().size(), 10u);
}

TEST_F(PostScriptErrors, JobThatCatchesItsErrorsPrintsNothing)
{
    const auto result = run("%!PS\n" + handler +
                                "{1 0 div} stopped = clear {undefinedName} stopped = clear {stop} stopped = "
                                "{{pop pop} stopped = stop} stopped = count = showpage\n",
                            kPicture);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output, "true\ntrue\ntrue\ntrue\ntrue\n0\n");
    EXPECT_EQ(readBitmap(folder / "page").share(0, 0, 595, 792), 0);
}

// A job that asks for the report itself goes on as if nothing had been printed in between.
TEST_F(PostScriptErrors, JobThatCallsTheHandlerGoesOnAfterIt)
{
    const std::string job = "%!PS\n" + handler +
                            "2 3 scale 0.25 setgray 1 2 {1 0 div} stopped {clear 7 8 handleerror} if "
                            "count = pstack countdictstack = currentgray = matrix currentmatrix 0 get 72 div =\n"
                            "$error /newerror get = {undefinedName} stopped {handleerror} if clear showpage\n";
    const auto result = runGhostscript(folder, job, "page%d", kPicture);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_NE(result.output.find("Error: /undefinedresult in --div--"), std::string::npos);
    EXPECT_NE(result.output.find("2\n8\n7\n3\n0.25\n"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("Error: /undefined in undefinedName"), std::string::npos) << result.output;
    EXPECT_TRUE(std::filesystem::exists(folder / "page3")) << "two reports and the job's own page";
    EXPECT_FALSE(std::filesystem::exists(folder / "page4"));
}

TEST_F(PostScriptErrors, TwoHandlersPrintOneReport)
{
    const std::string job = "%!PS\n" + handler + handler + "save pop 1 0 div\n";
    const auto result = runGhostscript(folder, job, "page%d", kWords);
    EXPECT_EQ(firstLine(result.output), "Error: /undefinedresult in --div--");
    expectWords(contentsOf(folder / "page1"), "undefinedresult; div");
    EXPECT_FALSE(std::filesystem::exists(folder / "page2"));
}

// The sheet is out before the next one's beginning fails again.
TEST_F(PostScriptErrors, FailingBeginOfAPagePrintsOneReport)
{
    runGhostscript(folder, "%!PS\n" + handler + "<< /BeginPage {pop missingHeader} >> setpagedevice\n", "page%d",
                   kWords);
    expectWords(contentsOf(folder / "page1"), "undefined; beginpage");
    EXPECT_FALSE(std::filesystem::exists(folder / "page2"));
}

TEST_F(PostScriptErrors, DeepInsideTheJobArePrinted)
{
    const std::string pattern = "<< /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 9 9] /XStep 9 /YStep 9 "
                                "/PaintProc {pop inPattern} >> matrix makepattern setpattern 0 0 50 50 rectfill";
    const std::string saved = "save save 5 {gsave 10 10 clip newpath} repeat 0 0 scale true setglobal inSaves";
    const std::string longName(300, 'x');
    for (const auto &[job, words] : {std::pair{pattern, std::string("undefined; inPattern")},
                                     {saved, "inSaves; -save-"},
                                     {longName, "Command: xxxxxxxx"},
                                     {"{pop (x) 1 add} settransfer 0 0 9 9 rectfill", "typecheck; (x)"}})
        expectWords(wordsOf("%!PS\n" + handler + job + "\n"), words);
}

TEST_F(PostScriptErrors, StopWithoutAnErrorIsNotReported)
{
    runGhostscript(folder, "%!PS\n" + handler + "stop\n", "page%d", kWords);
    EXPECT_FALSE(std::filesystem::exists(folder / "page1"));
}

TEST_F(PostScriptErrors, ErrorInTheRidersFileItselfIsPrinted)
{
    std::string riders = handler;
    riders.insert(riders.size() - pieceBytes(16600).size(), "(of the riders file) notThere\n");
    expectWords(wordsOf("%!PS\n" + riders), "undefined; notThere; (of the riders file)");
}

TEST_F(PostScriptErrors, ErrorInTheHandlerLeavesTheInterpretersReport)
{
    const std::string spoilt = "userdict /Zu3_Riders get /riderFoot {riderFoot2} put "
                               "userdict /Zu3_Riders get /riderFoot2 {1 (x) add} put\n";
    const auto result = run("%!PS\n" + handler + spoilt + "1 2 missing\n", kPicture);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(firstLine(result.output), "Error: /undefined in missing");
    EXPECT_NE(result.output.find("Operand stack:\n   1   2\n"), std::string::npos) << result.output;
    EXPECT_FALSE(std::filesystem::exists(folder / "page"));
}

TEST_F(PostScriptErrors, StandAboveTheAnnotation)
{
    const std::string riders = composeRiders({.annotation = "Plate 7", .size = "30", .errorHandler = true});
    const std::string job = "%!PS\n" + riders + "1 0 div\n";
    run(job, kPicture);
    const Bitmap page = readBitmap(folder / "page");
    EXPECT_GT(inkIn(page, "18 18 120 50"), 0.05) << "the annotation";
    EXPECT_EQ(inkIn(page, "200 0 400 50"), 0) << "no box under it";
    EXPECT_GT(inkIn(page, "20 56 120 100"), 0.05) << "the report";
    expectWords(wordsOf(job), "Plate 7; undefinedresult");
}

// What a level 1 interpreter lacks is removed, as far as names go.
TEST_F(PostScriptErrors, Level1InterpreterPrintsTheErrorToo)
{
    const std::string levelOne =
        "%!PS\n[/setpagedevice /currentpagedevice /setoverprint /selectfont /rectfill "
        "/resourcestatus /undef /glyphshow /languagelevel /sethalftone /setcolorscreen "
        "/currentcolorscreen] {systemdict exch undef} bind forall systemdict readonly pop\n";
    const std::string riders = composeRiders({.annotation = "level one", .errorHandler = true});
    EXPECT_EQ(riders.find("<<"), std::string::npos) << "a syntax error there";
    EXPECT_EQ(riders.find("//"), std::string::npos);
    const std::string job = levelOne + riders + "(an operand) /key {1 2} exec 7 get\n";
    expectWords(wordsOf(job, "-dWRITESYSTEMDICT"), "level one; typecheck; get; /key; (an operand)");
}

}  // namespace
