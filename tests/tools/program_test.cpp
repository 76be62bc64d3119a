// The program itself: what it writes, and that it writes nothing when the source
// is wrong.
#include "tools/compile.h"

#include <sys/wait.h>

#include <cstdio>

#include "toolbox/host/appledouble.h"

namespace {

struct Outcome {
    int status = -1;
    std::string said;
};

Outcome rescompWith(const std::string &arguments)
{
    Outcome outcome;
    std::string command = std::string(RIDERS_BINARY_DIR "/tools/rescomp/rescomp ") + arguments + " 2>&1";
    FILE *pipe = popen(command.c_str(), "r");
    if (!pipe)
        return outcome;
    for (int c = fgetc(pipe); c != EOF; c = fgetc(pipe))
        outcome.said += static_cast<char>(c);
    outcome.status = WEXITSTATUS(pclose(pipe));
    return outcome;
}

}  // namespace

TEST_F(Compile, ProgramWritesTheForkBareAndInACompanion)
{
    std::string in = (folder / "in.res").string(), out = (folder / "._x").string();
    std::string fork = (folder / "x.fork").string();
    writeFile(in, "string 128 named \"greet\" \"Hi\"");
    Outcome outcome = rescompWith(in + " -o " + out + " --fork " + fork);
    EXPECT_EQ(outcome.status, 0) << outcome.said;
    EXPECT_EQ(outcome.said, "");
    std::string bare = contentsOf(fork), companion = contentsOf(out);
    EXPECT_EQ(bare.size(), 0x13Fu);
    EXPECT_EQ(asHex(companion.substr(0, 50)),
              asHex(fromHex("00051607 00020000 00000000 00000000 00000000 00000000 0002"
                            "00000009 00000032 00000020 00000002 00000052 0000013F")));
    EXPECT_EQ(companion.substr(50), std::string(32, '\0') + bare);
}

TEST_F(Compile, ProgramLeavesTheOldFileWhenTheSourceIsWrong)
{
    std::string in = (folder / "in.res").string(), out = (folder / "out").string();
    writeFile(in, "string 1 \"a\"\nstring 1 \"b\"\n");
    writeFile(out, "old");
    Outcome outcome = rescompWith(in + " -o " + out);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.said, in + ":2: 'STR ' 1 is there already, at " + in + ":1\n");
    EXPECT_EQ(contentsOf(out), "old");
    auto files = std::filesystem::directory_iterator(folder.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 2);
}

TEST_F(Compile, ProgramDoesNotReplaceWhatIsNoFile)
{
    writeFile(folder / "in.res", "string 1 \"a\"");
    std::filesystem::create_directory(folder / "out");
    Outcome outcome = rescompWith((folder / "in.res").string() + " -o " + (folder / "out").string());
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.said.find("is not an ordinary file"), std::string::npos);
}

TEST_F(Compile, ProgramReportsAnUnwritablePlace)
{
    writeFile(folder / "in.res", "string 1 \"a\"");
    Outcome outcome = rescompWith((folder / "in.res").string() + " -o " + (folder / "no" ).string() + "/where");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.said.find("No such file or directory"), std::string::npos);
}

TEST_F(Compile, ProgramExplainsItsUse)
{
    for (const char *wrong : {"", "in.res", "in.res -o", "-o x", "a b -o x", "--what a -o x"}) {
        Outcome outcome = rescompWith(wrong);
        EXPECT_EQ(outcome.status, 2) << wrong;
        EXPECT_TRUE(outcome.said.starts_with("usage: rescomp")) << wrong;
    }
}
