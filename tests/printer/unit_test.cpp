// The printer as a service of the system: what its unit lets it do.
#include <regex>

#include "support/command.h"
#include "support/toolbox_test.h"

TEST(PrinterUnitTest, LetsTheServiceDoLittle)
{
    const std::string unit = RIDERS_SOURCE_DIR "/host/printer/riders-printer.service";
    const CommandResult result = runProgram({"systemd-analyze", "security", "--offline=true", "--no-pager", unit});
    static const std::regex exposure("Overall exposure level for [^:]*: ([0-9.]+)");
    std::smatch found;
    if (!std::regex_search(result.out, found, exposure))
        GTEST_SKIP() << "systemd-analyze says nothing here: " << result.err;
    EXPECT_LE(std::stod(found[1]), 2.0) << result.out;
}
