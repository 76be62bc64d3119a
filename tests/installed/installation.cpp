#include "installed/installation.h"

#include <algorithm>

namespace fs = std::filesystem;

Installation::Installation() : prefix_(folder_ / "prefix"), home_(folder_ / "home")
{
    fs::create_directories(home_);
    const CommandResult result =
        runProgram({RIDERS_CMAKE, "--install", RIDERS_BINARY_DIR, "--prefix", prefix_.string()});
    EXPECT_EQ(result.status, 0) << result.err;
}

CommandResult Installation::riders(const std::vector<std::string> &arguments) const
{
    std::vector<std::string> command = {"riders"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return run(command);
}

CommandResult Installation::run(const std::vector<std::string> &command) const
{
    std::vector<std::string> whole = {"env",
                                      "-u",
                                      "XDG_CONFIG_HOME",
                                      "-u",
                                      "XDG_CACHE_HOME",
                                      "-u",
                                      "XDG_DATA_HOME",
                                      "HOME=" + home_.string(),
                                      "PATH=" + (prefix_ / "bin").string() + ":/usr/bin:/bin",
                                      "XDG_DATA_DIRS=" + (prefix_ / "share").string() + ":/usr/share"};
    whole.insert(whole.end(), command.begin(), command.end());
    return runProgram(whole, {}, home_.string());
}

std::vector<std::string> Installation::files() const
{
    std::vector<std::string> found;
    for (const auto &entry : fs::recursive_directory_iterator(prefix_))
        if (!entry.is_directory())
            found.push_back(entry.path().lexically_relative(prefix_).string());
    std::sort(found.begin(), found.end());
    return found;
}

const Installation &installed()
{
    static const Installation one;
    return one;
}
