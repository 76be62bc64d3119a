// A job stays within its limits and its own file, whatever it does to get out of them.
#include "host/proof_support.h"
#include "printed/postscript_support.h"
#include "support/command.h"

namespace {

namespace proof = riders::proof;

using Names = std::vector<std::string>;

const std::string kTint = ".7 setgray 12 12 120 120 rectfill";

TEST_F(ProofTest, AJobThatWritesThePagesLineIsEndedAsAnEndlessOne)
{
    for (const char *line : {"%%ProofPage", "%%ProofScreen 60 45 Gold"}) {
        proof::ProofRequest forger =
            request("%!PS\n(a line end first\\n) print {(" + std::string(line) + "\\n) print flush} loop\n");
        forger.limits.secondsAPage = 1;
        EXPECT_EQ(proofOf(forger),
                  forger.job.string() + ": page 1: the interpreter took more than 1 seconds and was ended");
    }
    EXPECT_EQ(left(), Names{"job.ps"});
}

// The lines of the prolog begin with a word that a job cannot find out.
TEST_F(ProofTest, AJobFindsTheWordOfTheProofsLinesNowhere)
{
    const std::string seek =
        "/seek {dup type dup /arraytype eq exch /packedarraytype eq or {dup rcheck {{seek} forall} {pop} ifelse} "
        "{dup type /stringtype eq {dup (%%Proof) anchorsearch {pop pop (found ) print =} {pop pop} ifelse} {pop} "
        "ifelse} ifelse} executeonly def\n";
    const std::string spot = "50 30 {pop userdict /stack countexecstack array execstack put} setscreen\n";
    const std::string page =
        pageOf("%!PS\n" + seek + "userdict {exch pop seek} forall currentpagedevice /EndPage get seek\n" + spot +
               ".5 setgray 0 0 9 9 rectfill showpage stack {seek} forall\n"
               "{(prolog.ps) (r) file 10000 string readstring pop (ProofPage) search {(found ) print pop pop pop} "
               "{pop} ifelse} stopped pop\n"
               "[(%%Proof as a test of the search)] seek\n");
    EXPECT_NE(page.find("found %%Proof as a test"), std::string::npos);
    EXPECT_EQ(page.find("found "), page.rfind("found ")) << page;
}

TEST_F(ProofTest, AJobWithMorePagesThanAllowedIsEnded)
{
    proof::ProofRequest endless = request("%!PS\n<</PageSize [9 9]>> setpagedevice {showpage} loop\n");
    endless.limits.pages = 3;
    EXPECT_EQ(proofOf(endless), endless.job.string() + ": has more than 3 pages");
    EXPECT_EQ(left(), Names{"job.ps"});
}

// Each page begins the time of a page anew.
TEST_F(ProofTest, AJobOfManySlowPagesIsEnded)
{
    proof::ProofRequest slow = request("%!PS\n<</PageSize [9 9]>> setpagedevice\n"
                                       "{realtime 300 add {dup realtime lt {pop exit} if} loop showpage} loop\n");
    slow.limits.secondsAPage = 3;
    slow.limits.slowPages = 1;
    const std::string refused = proofOf(slow);
    EXPECT_TRUE(
        refused.ends_with(": the interpreter took more than 3 seconds so far, 1 times what a page may take, "
                          "and was ended"))
        << refused;
    EXPECT_EQ(left(), Names{"job.ps"});
}

// The survey at 200 dpi is quick. A PostScript job never gets past the page.
TEST_F(ProofTest, WhatIsDoneBeforeAPageThatTakesTooLongIsKept)
{
    const std::string tint = smallPage(kTint);
    proof::ProofRequest asked =
        request(smallJob({tint, "currentpagedevice /HWResolution get 0 get 250 gt {{} loop} if\n" + tint, tint}));
    asked.limits.secondsAPage = 1;
    EXPECT_EQ(proofOf(asked),
              asked.job.string() +
                  ": page 2: the interpreter took more than 1 seconds and was ended; the rest is in " +
                  (out / "proof.html").string());
    const std::string page = contentsOf(out / "proof.html");
    EXPECT_NE(page.find("Its dots are not shown: "), std::string::npos);
    EXPECT_EQ(files(out / "films"), Names{"page-1-black.tif"});
    for (const char *picture : {"pictures/page-2.png", "pictures/page-3.png"})
        EXPECT_TRUE(std::filesystem::exists(out / picture)) << picture;
    EXPECT_EQ(left(), (Names{"job.ps", "out"}));
}

TEST_F(ProofTest, PageFilesThatFillTheDiskAreEnded)
{
    proof::ProofRequest large = request("%!PS\n<</PageSize [3000 3000]>> setpagedevice\n{showpage} loop\n");
    large.limits.pageMegabytes = 20;
    const std::string refused = proofOf(large);
    EXPECT_TRUE(refused.ends_with(": the page files take more than 20 MB, and the job was ended")) << refused;
    EXPECT_EQ(left(), Names{"job.ps"});
}

TEST_F(ProofTest, ADotShapeThatNeverEndsIsEnded)
{
    proof::ProofRequest asked = request(smallJob({smallPage(kTint)}));
    asked.riders = folder / "riders";
    asked.limits.secondsAPage = 1;
    writeFile(asked.riders, composeRiders({.frequency = "50", .spotBody = "{} loop"}));
    EXPECT_EQ(proofOf(asked),
              asked.job.string() + ": page 1: the interpreter took more than 1 seconds and was ended");
    // One that takes all memory is no dot shape.
    asked.limits.secondsAPage = 60;
    asked.limits.megabytes = 300;
    writeFile(asked.riders,
              composeRiders({.frequency = "50", .spotBody = "/x [] def {/x [x 60000 string] def} loop"}));
    EXPECT_EQ(proofOf(asked), "done");
    EXPECT_NE(contentsOf(out / "proof.html").find("the job keeps its own"), std::string::npos);
    EXPECT_EQ(left(), (Names{"job.ps", "out", "riders"}));
}

TEST_F(ProofTest, TemporaryFilesWithoutEndAreEnded)
{
    const proof::ProofRequest writer =
        request("%!PS\n{(x) (w) .tempfile exch pop 1000 {dup 10000 string writestring} repeat closefile} loop\n");
    EXPECT_EQ(proofOf(writer),
              writer.job.string() + ": page 1: the job fills the disk with temporary files and was ended");
    EXPECT_EQ(left(), Names{"job.ps"});
}

// Of names on its command line the interpreter makes patterns of what may be read.
TEST_F(ProofTest, AJobNamedByAPatternReadsNoOtherFile)
{
    writeFile(folder / "mine", "precious");
    const std::string reads = "%!PS\n(" + (folder / "mine").string() + ") (r) file 20 string readstring pop =\n";
    for (const char *name : {"*", "????", "m*e"}) {
        const proof::ProofRequest asked = request(reads, name);
        EXPECT_EQ(proofOf(asked),
                  asked.job.string() + ": page 1: the interpreter said: /invalidfileaccess in file");
    }
}

TEST_F(ProofTest, ATerminalObeysNothingThatAJobSays)
{
    request("%!PS\n(\\033]0;mine\\007\\233[31m\\302\\233[0m) cvn cvx exec\n");
    const CommandResult run = runRiders({"proof", "job.ps"}, "", folder.path());
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "riders proof: job.ps: page 1: the interpreter said: /undefined in  ]0;mine  [31mÂ [0m\n");
    const CommandResult named = runRiders({"proof", "\x1B[31m.ps"}, "", folder.path());
    EXPECT_EQ(named.err, "riders proof:  [31m.ps: No such file or directory\n");
    const std::string page = pageOf("%!PS\n(\\033[31m\\302\\233\\342\\200\\256said) =\n" + smallPage(kTint));
    EXPECT_NE(page.find(" [31m  said"), std::string::npos) << page;
}

// A file that may not grow is as good as a full disk.
TEST_F(ProofTest, AFullDiskIsCalledThat)
{
    request(smallJob({smallPage(kTint)}));
    for (const char *blocks : {"8", "40", "200"}) {
        const CommandResult run = runProgram(
            {"bash", "-c",
             "ulimit -f " + std::string(blocks) + "; " RIDERS_BINARY_DIR "/riders proof job.ps --dpi 600"},
            "", folder.path());
        EXPECT_EQ(run.status, 1) << blocks;
        EXPECT_NE(run.err.find("is the disk full?"), std::string::npos) << run.err;
        EXPECT_EQ(left(), Names{"job.ps"});
    }
}

}  // namespace
