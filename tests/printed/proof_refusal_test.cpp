// What is refused, what fails, and that nothing is left behind then.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/proof_support.h"
#include "looking/look_folder.h"
#include "support/command.h"

namespace fs = std::filesystem;

namespace {

namespace proof = riders::proof;

using Names = std::vector<std::string>;

const std::string kTint = ".7 setgray 12 12 120 120 rectfill";

TEST_F(ProofTest, AFailingJobNamesThePageAndTheError)
{
    const proof::ProofRequest bad = request(smallJob({smallPage(kTint), smallPage("1 0 div")}));
    EXPECT_EQ(proofOf(bad), bad.job.string() + ": page 2: the interpreter said: /undefinedresult in div");
    EXPECT_EQ(left(), Names{"job.ps"});
}

TEST_F(ProofTest, AnEndlessJobIsEnded)
{
    proof::ProofRequest endless = request(smallJob({smallPage(kTint), "{} loop"}));
    endless.limits.secondsAPage = 1;
    EXPECT_EQ(proofOf(endless),
              endless.job.string() + ": page 2: the interpreter took more than 1 seconds and was ended");
    EXPECT_EQ(left(), Names{"job.ps"});
}

TEST_F(ProofTest, AJobThatWantsAllMemoryIsEnded)
{
    proof::ProofRequest greedy = request("%!PS\n[ {65000 string} loop");
    greedy.limits.megabytes = 300;
    const std::string said = proofOf(greedy);
    EXPECT_NE(said.find("page 1: the interpreter"), std::string::npos) << said;
    EXPECT_NE(said.find("memory"), std::string::npos) << said;
    EXPECT_EQ(left(), Names{"job.ps"});
}

TEST_F(ProofTest, AJobReadsAndWritesNoFiles)
{
    writeFile(folder / "mine", "precious");
    const std::string mine = "(" + (folder / "mine").string() + ")";
    for (const std::string &reach :
         {std::string("(/etc/passwd) (r) file"), mine + " (r) file", mine + " (w) file", mine + " deletefile",
          std::string("(1.tif) (w) file"), std::string("(%pipe%id) (r) file")}) {
        const std::string said = proofOf(request("%!PS\n" + reach + " showpage\n"));
        EXPECT_TRUE(said.ends_with("/invalidfileaccess in file") || said.ends_with("/ioerror in deletefile"))
            << said;
        EXPECT_EQ(left(), (Names{"job.ps", "mine"}));
    }
    EXPECT_EQ(contentsOf(folder / "mine"), "precious");
}

TEST_F(ProofTest, ALockedPdfIsDistinguishedFromAnEmptyOne)
{
    writeFile(folder / "open.ps", smallJob({smallPage(kTint)}));
    const CommandResult locked = runProgram({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pdfwrite",
                                             "-sOwnerPassword=a", "-sUserPassword=b", "-dEncryptionR=3",
                                             "-dKeyLength=128", "-sOutputFile=locked.pdf", "open.ps"},
                                            "", folder.path());
    ASSERT_EQ(locked.status, 0) << locked.err;
    for (const char *pages : {"", "2"}) {
        proof::ProofRequest asked = request(contentsOf(folder / "locked.pdf"), "locked.pdf");
        asked.pages = pages;
        EXPECT_EQ(proofOf(asked), (folder / "locked.pdf").string() +
                                      ": paints no page; the interpreter said: This file requires a password for "
                                      "access.");
    }
}

TEST_F(ProofTest, WhatIsNoJobIsRefused)
{
    EXPECT_EQ(proofOf(request("")), (folder / "job.ps").string() + ": is empty");
    EXPECT_EQ(proofOf(request("Dear Sir")),
              (folder / "job.ps").string() + ": is neither PostScript nor EPS nor PDF");
    EXPECT_EQ(proofOf(request("\xC5\xD0\xD3\xC6 short")),
              (folder / "job.ps").string() + ": is an EPS file whose wrapper is damaged");
    EXPECT_EQ(proofOf(request("%!PS\n")), (folder / "job.ps").string() + ": paints no page");
    proof::ProofRequest missing = request("");
    missing.job = folder / "missing.ps";
    EXPECT_EQ(proofOf(missing), missing.job.string() + ": No such file or directory");
    missing.job = folder.path();
    EXPECT_EQ(proofOf(missing), missing.job.string() + ": is a folder, not a job");
}

TEST_F(ProofTest, AResolutionOutOfRangeIsRefused)
{
    proof::ProofRequest coarse = request(smallJob({smallPage(kTint)}));
    for (const int dpi : {71, 4801}) {
        coarse.dpi = dpi;
        EXPECT_EQ(proofOf(coarse),
                  std::to_string(dpi) + " dpi is not a resolution for a proof; it goes from 72 to 4800");
    }
}

TEST_F(ProofTest, AnEarlierProofIsReplacedAsAWhole)
{
    ASSERT_EQ(proofOf(request(smallJob({smallPage(kTint), smallPage(kTint)}))), "done");
    ASSERT_TRUE(riders::looking::isLookFolder(out));
    ASSERT_EQ(proofOf(request(smallJob({smallPage(kTint)}))), "done");
    EXPECT_EQ(files(), (Names{"films/page-1-black.tif", "pictures/page-1-all.png", "pictures/page-1-black.png",
                              "pictures/page-1.png", "proof.html"}));
    const std::string page = contentsOf(out / "proof.html");
    EXPECT_NE(proofOf(request("%!PS\nshowpage stop-it")), "done");
    EXPECT_EQ(contentsOf(out / "proof.html"), page);
    EXPECT_EQ(left(), (Names{"job.ps", "out"}));
}

TEST_F(ProofTest, WhatIsNotAProofStays)
{
    const proof::ProofRequest asked = request(smallJob({smallPage(kTint)}));
    writeFile(out, "a file");
    EXPECT_EQ(proofOf(asked), out.string() + ": exists and is not a folder; name another with -o");
    EXPECT_EQ(contentsOf(out), "a file");
    fs::remove(out);

    fs::create_directory(out);
    ASSERT_EQ(proofOf(asked), "done");  // an empty folder is as good as none
    const std::string foreign = out.string() + ": exists and holds files that are not an earlier proof's, "
                                               "or changed since; name another folder with -o";
    for (const char *name : {"notes.txt", "films/mine.tif", "pictures/page-1.txt", "films/deep/page-1.tif",
                             "films/page-9-mine.tif"}) {
        fs::create_directories((out / name).parent_path());
        writeFile(out / name, "precious");
        EXPECT_EQ(proofOf(asked), foreign) << name;
        EXPECT_EQ(contentsOf(out / name), "precious");
        fs::remove_all(name == std::string("films/deep/page-1.tif") ? out / "films/deep" : out / name);
    }
    const fs::path film = out / "films/page-1-black.tif";
    writeFile(film, "retouched");
    fs::last_write_time(film, fs::last_write_time(out / "proof.html") + std::chrono::seconds(1));
    EXPECT_EQ(proofOf(asked), foreign);
    EXPECT_EQ(contentsOf(film), "retouched");
    fs::last_write_time(film, fs::last_write_time(out / "proof.html"));
    ASSERT_EQ(proofOf(asked), "done");
    writeFile(out / "proof.html", "<html>a page of my own</html>");
    EXPECT_EQ(proofOf(asked), foreign);
    EXPECT_EQ(left(), (Names{"job.ps", "out"}));
}

TEST_F(ProofTest, NoFolderToMakeItInIsRefused)
{
    proof::ProofRequest nowhere = request(smallJob({smallPage(kTint)}));
    nowhere.folder = folder / "missing/out";
    EXPECT_EQ(proofOf(nowhere), (folder / "missing").string() + ": No such file or directory");
}

// True while a program works in the folder.
bool anyoneWorksIn(const fs::path &folder)
{
    for (const fs::directory_entry &process : fs::directory_iterator("/proc")) {
        std::error_code error;
        const fs::path at = fs::read_symlink(process.path() / "cwd", error);
        if (!error && at.string().starts_with(folder.string()))
            return true;
    }
    return false;
}

bool hasReachedPageOne(const fs::path &folder)
{
    for (const fs::directory_entry &entry : fs::directory_iterator(folder))
        if (fs::exists(entry.path() / "work/survey/1.tif"))
            return true;
    return false;
}

TEST_F(ProofTest, CtrlCLeavesNothingBehind)
{
    const proof::ProofRequest endless = request(smallJob({smallPage(kTint), "{} loop"}));
    for (const int number : {SIGINT, SIGTERM}) {
        const pid_t child = fork();
        if (child == 0) {
            execl(RIDERS_BINARY_DIR "/riders", "riders", "proof", endless.job.c_str(), "-o", out.c_str(), nullptr);
            _exit(127);
        }
        while (!hasReachedPageOne(folder.path()))
            ASSERT_EQ(waitpid(child, nullptr, WNOHANG), 0);
        EXPECT_TRUE(anyoneWorksIn(folder.path()));
        kill(child, number);
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == number) << status;
        EXPECT_EQ(left(), Names{"job.ps"});
        EXPECT_FALSE(anyoneWorksIn(folder.path()));
    }
}

TEST_F(ProofTest, TheCommandSaysWhereThePageIsAndDrawsNoBarIntoAFile)
{
    request(smallJob({smallPage(kTint)}));
    const CommandResult made = runRiders({"proof", "job.ps", "--dpi", "300"}, "", folder.path());
    EXPECT_EQ(made.status, 0) << made.err;
    EXPECT_EQ(made.out, "job-proof/proof.html\n");
    EXPECT_EQ(made.err, "");
    EXPECT_EQ(left(), (Names{"job-proof", "job.ps"}));
    const CommandResult refused = runRiders({"proof", "job.ps", "--pages", "0"}, "", folder.path());
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "riders proof: there is no page 0; pages go from 1 to 100000\n");
    EXPECT_EQ(runRiders({"proof", "job.ps", "--dpi", "50"}, "", folder.path()).status, 2);
}

TEST_F(ProofTest, AtATerminalABarShowsHowFarItIs)
{
    request(smallJob({smallPage(kTint)}));
    const CommandResult run = runProgram(
        {"script", "-qec", RIDERS_BINARY_DIR "/riders proof job.ps --dpi 300", "typescript"}, "", folder.path());
    EXPECT_EQ(run.status, 0) << run.out;
    EXPECT_NE(run.out.find("\r\x1B[K[########################] 1 of 1 page, 1 of 1 plate\r\x1B[K"),
              std::string::npos)
        << run.out;
}

}  // namespace
