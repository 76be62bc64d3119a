// Where a job comes from: pipes, and names of any kind.
#include <sys/stat.h>

#include "host/proof_support.h"
#include "support/command.h"

namespace fs = std::filesystem;

namespace {

namespace proof = riders::proof;

using Names = std::vector<std::string>;

const std::string kTint = ".7 setgray 12 12 120 120 rectfill";

class ProofInputTest : public ProofTest {
protected:
    CommandResult shell(const std::string &command)
    {
        return runProgram({"bash", "-c", "riders=" RIDERS_BINARY_DIR "/riders; " + command}, "", folder.path());
    }
};

TEST_F(ProofInputTest, AJobComesThroughAPipe)
{
    request(smallJob({smallPage(kTint)}));
    const CommandResult pipe = shell("$riders proof <(cat job.ps) --dpi 300 -o out");
    EXPECT_EQ(pipe.err, "");
    const std::string page = contentsOf(out / "proof.html");
    EXPECT_NE(page.find("50&nbsp;lpi, 30°</span>, Round<small>by the job"), std::string::npos);
    const CommandResult named =
        shell("mkfifo pipe; cat job.ps >pipe & $riders proof pipe --dpi 300 -o out; wait; rm pipe");
    EXPECT_EQ(named.err, "");
    EXPECT_EQ(named.out, "out/proof.html\n");
    const CommandResult riders = shell("$riders make -o film --frequency 40 --angle 15 && "
                                       "$riders proof <(cat job.ps) --riders <(cat film) --dpi 300 -o out");
    EXPECT_EQ(riders.err, "");
    EXPECT_NE(contentsOf(out / "proof.html").find("40&nbsp;lpi, 15°"), std::string::npos);
    EXPECT_EQ(left(), (Names{"film", "job.ps", "out"}));
}

TEST_F(ProofInputTest, APipeThatNobodyFillsIsGivenUp)
{
    proof::ProofRequest silent = request("");
    silent.job = folder / "pipe";
    silent.limits.secondsAPage = 1;
    ASSERT_EQ(mkfifo(silent.job.c_str(), 0600), 0);
    EXPECT_EQ(proofOf(silent), silent.job.string() + ": nothing came from it for 1 seconds");
    EXPECT_EQ(left(), (Names{"job.ps", "pipe"}));
}

TEST_F(ProofInputTest, WhatIsNoJobIsNotReadToItsEnd)
{
    proof::ProofRequest zeros = request("");
    zeros.job = "/dev/zero";
    EXPECT_EQ(proofOf(zeros), "/dev/zero: is neither PostScript nor EPS nor PDF");
    EXPECT_EQ(left(), Names{"job.ps"});
}

TEST_F(ProofInputTest, AJobMayHaveAnyName)
{
    for (const std::string &name : {std::string("J\xFCrgen.ps"), std::string("a %stdin%b"), std::string("-c quit"),
                                    std::string("@list"), std::string("[a-z]\n?.ps")})
        EXPECT_EQ(proofOf(request(smallJob({smallPage(kTint)}), name)), "done") << name;
}

TEST_F(ProofInputTest, TheFolderMayHaveAnyName)
{
    for (const std::string &name : {std::string("J\xFCrgen"), std::string("*"), std::string("%d")}) {
        fs::create_directory(folder / name);
        proof::ProofRequest asked = request(smallJob({smallPage(kTint)}));
        asked.folder = folder / name / "proof";
        EXPECT_EQ(proofOf(asked), "done") << name;
    }
}

TEST_F(ProofInputTest, LittleMemoryIsSaidInWords)
{
    request("%!PS\n<</PageSize [1000 1000]>> setpagedevice .7 setgray 12 12 820 820 rectfill showpage\n");
    const CommandResult run = shell("ulimit -v 200000; $riders proof job.ps --dpi 2400");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "riders proof: there is not enough memory\n");
    EXPECT_EQ(left(), Names{"job.ps"});
}

}  // namespace
