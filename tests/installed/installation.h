// The program as it is installed, under a prefix of the test's own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/command.h"
#include "support/toolbox_test.h"

// Installs on construction, as `cmake --install` does.
class Installation {
public:
    Installation();

    // A path under the prefix.
    std::filesystem::path operator/(const std::string &path) const { return prefix_ / path; }
    // Runs the program, or another one that finds it and its data, at home and with no settings.
    CommandResult riders(const std::vector<std::string> &arguments) const;
    CommandResult run(const std::vector<std::string> &command) const;
    // What was installed, as paths under the prefix, in order.
    std::vector<std::string> files() const;
    // A folder to work in, the current one of what is run.
    const std::filesystem::path &home() const { return home_; }

private:
    TemporaryFolder folder_;
    std::filesystem::path prefix_, home_;
};

// One for all tests of a process: none of them changes it.
const Installation &installed();
