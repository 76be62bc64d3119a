// The host in examples/host: built on the public headers alone, it makes the
// riders file that the program makes.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

#include "support/command.h"
#include "support/toolbox_test.h"

namespace {

const std::filesystem::path kSource = std::filesystem::path(RIDERS_SOURCE_DIR) / "examples/host/main.cpp";

CommandResult runExample(const std::vector<std::string> &arguments, const TemporaryFolder &folder)
{
    std::vector<std::string> command = {RIDERS_BINARY_DIR "/examples/host/example_host"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return runProgram(command, {}, folder.path());
}

}  // namespace

TEST(ExampleHost, MakesWhatTheProgramMakesWithTheSameChoices)
{
    TemporaryFolder folder;
    CommandResult result = runExample({RIDERS_BINARY_DIR "/riders.so", "film.riders"}, folder);
    ASSERT_EQ(result.status, 0) << result.err;
    CommandResult program =
        runRiders({"make", "-o", "program.riders", "--frequency", "60", "--angle", "22.5", "--spot", "round"}, {},
                  folder.path());
    ASSERT_EQ(program.status, 0) << program.err;
    const std::string made = contentsOf(folder / "program.riders");
    EXPECT_FALSE(made.empty());
    EXPECT_TRUE(contentsOf(folder / "film.riders") == made) << "the two files differ";
}

TEST(ExampleHost, SaysWhatItDid)
{
    TemporaryFolder folder;
    CommandResult result = runExample({RIDERS_BINARY_DIR "/riders.so", "film.riders"}, folder);
    const std::string bytes = std::to_string(contentsOf(folder / "film.riders").size());
    EXPECT_EQ(result.out,
              "command 0: Riders, Make Riders File...\n"
              "command 1: Riders, Remove Riders File...\n"
              "made film.riders, " +
                  bytes +
                  " bytes\n"
                  "left behind: 0 pointers, 0 handles, 0 open files, 0 open windows, 0 loaded resources\n");
    EXPECT_EQ(result.err, "");
}

TEST(ExampleHost, SaysWhatItCannotLoad)
{
    TemporaryFolder folder;
    writeFile(folder / "none.so", "no library");
    CommandResult result = runExample({(folder / "none.so").string(), "film.riders"}, folder);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("none.so"), std::string::npos) << result.err;
    EXPECT_EQ(runExample({}, folder).status, 2);
}

TEST(ExampleHost, IsShortAndUsesPublicHeadersOnly)
{
    const std::string source = contentsOf(kSource);
    EXPECT_LT(std::count(source.begin(), source.end(), '\n'), 150);
    const std::regex include(R"re(#include "([^"]+)")re");
    int seen = 0;
    for (std::sregex_iterator at(source.begin(), source.end(), include), end; at != end; ++at, ++seen) {
        const std::string name = (*at)[1];
        const std::filesystem::path root = RIDERS_SOURCE_DIR;
        EXPECT_TRUE(std::filesystem::exists(root / "toolbox/include" / name) || name == "riders/plugin.h") << name;
    }
    EXPECT_GT(seen, 0);
}
