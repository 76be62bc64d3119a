// A terminal obeys nothing that a file's name, a file or an argument says, whatever the command.
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/command.h"
#include "support/toolbox_test.h"

namespace {

using Words = std::vector<std::string>;

const std::string kOdd = "\x1B]0;mine\x07\x1B[31m\xC2\x9B\x7F";

// A line end is all that it may obey.
bool isPlain(const std::string &text)
{
    for (size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool c1 = byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
        if ((byte < 32 && byte != '\n') || byte == 127 || c1)
            return false;
    }
    return true;
}

// What the command writes where all its output goes to a terminal.
std::string onTerminal(const Words &arguments, const std::filesystem::path &folder)
{
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        Words command = {RIDERS_BINARY_DIR "/riders"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        std::vector<char *> words;
        for (std::string &word : command)
            words.push_back(word.data());
        words.push_back(nullptr);
        if (chdir(folder.c_str()) == 0)
            execv(words[0], words.data());
        _exit(127);
    }
    std::string all, some(4096, '\0');
    for (ssize_t got; (got = read(terminal, some.data(), some.size())) > 0;)
        all.append(some, 0, static_cast<size_t>(got));
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    return all;
}

TEST(Terminal, ObeysNothingThatAMessageQuotes)
{
    TemporaryFolder folder;
    writeFile(folder / kOdd, kOdd);
    writeFile(folder / "cut", "%!Zu3_Riders\n" + kOdd);
    writeFile(folder / "job.ps", "%!PS\n");
    writeFile(folder / "odd.play", kOdd + " x\n");
    writeFile(folder / "picture.play", "picture \"" + kOdd + "/x\"\n");
    writeFile(folder / (kOdd + ".spot"), "%!KT1_Spot\n" + kOdd);
    const std::vector<Words> commands = {{kOdd + "none"},
                                         {"--" + kOdd},
                                         {"make", kOdd},
                                         {"make", "-o", kOdd + "/x", "--flatness", "1"},
                                         {"make", "-o", "made", "--flatness", kOdd},
                                         {"make", "-o", "made", "--frequency", kOdd},
                                         {"make", "-o", "made", "--spot", kOdd + "none"},
                                         {"make", "-o", "made", "--spot", "./" + kOdd},
                                         {"make", "-o", "made", "--spot", "./" + kOdd + ".spot"},
                                         {"make", "-o", "made", "--annotation", kOdd + "№"},
                                         {"make", "-o", "made", "--annotation", "x", "--font", kOdd},
                                         {"make", "-o", "made", "--annotation", "x", "--size", kOdd},
                                         {"apply", kOdd, "job.ps"},
                                         {"apply", kOdd + "none", "job.ps"},
                                         {"apply", "cut", "job.ps"},
                                         {"apply", "cut", kOdd},
                                         {"strip", kOdd},
                                         {"strip", "job.ps", kOdd, kOdd},
                                         {"strip", "job.ps", "-o", kOdd + "/x"},
                                         {"proof", kOdd},
                                         {"proof", "job.ps", "--pages", kOdd},
                                         {"proof", "job.ps", "--dpi", kOdd},
                                         {"proof", "job.ps", "--riders", kOdd},
                                         {"play", kOdd},
                                         {"play", kOdd + "none"},
                                         {"play", "odd.play"},
                                         {"play", "picture.play"},
                                         {"play", "odd.play", "--screen", kOdd},
                                         {"play", "odd.play", "--trace", kOdd + "/x"},
                                         {"play", "odd.play", "--system-version", kOdd},
                                         {"play", "odd.play", "--decimal", kOdd}};
    for (const Words &command : commands) {
        const CommandResult run = runRiders(command, "", folder.path());
        EXPECT_NE(run.status, 0) << testing::PrintToString(command);
        EXPECT_FALSE(run.err.empty()) << testing::PrintToString(command);
        EXPECT_TRUE(isPlain(run.out) && isPlain(run.err)) << testing::PrintToString(command) << run.err;
    }
}

// A program that reads where the proof is gets the very name.
TEST(Terminal, ObeysNothingThatTheNameOfAProofSays)
{
    TemporaryFolder folder;
    writeFile(folder / "job.ps", "%!PS\n<</PageSize [72 72]>> setpagedevice 9 9 9 9 rectfill showpage\n");
    const Words command = {"proof", "job.ps", "--dpi", "72", "-o", "\x1B[31mred"};
    EXPECT_EQ(runRiders(command, "", folder.path()).out, "\x1B[31mred/proof.html\n");
    const std::string shown = onTerminal(command, folder.path());
    EXPECT_NE(shown.find(" [31mred/proof.html\r\n"), std::string::npos) << testing::PrintToString(shown);
    EXPECT_EQ(shown.find("\x1B[31m"), std::string::npos);
}

}  // namespace
