// The commands that change files, for the tests that kill them and look at what they leave. A new command joins by
// a row.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support/command.h"
#include "support/file_changes.h"

struct ChangingCommand {
    std::string name;
    std::vector<std::string> before;  // lines for the shell, run first; what they leave is the old state
    std::string words;                // of `riders`
    std::vector<std::string> parts;   // files and folders, each of which is left in its old or in its new state
    // Run after the killed one, with the same outcome whatever that one left; empty: `words` again.
    std::string next = {};
    bool ofChildren = false;             // killed at a change made by a program that it starts
    std::function<void()> instead = {};  // in place of `words`
};

const std::vector<ChangingCommand> &changingCommands();
std::ostream &operator<<(std::ostream &out, const ChangingCommand &command);

// A folder with the files that the commands use, which they are run in. The user's settings are there, too.
class CommandsFolder {
public:
    explicit CommandsFolder(std::filesystem::path folder);
    ~CommandsFolder();

    const std::filesystem::path &path() const { return folder_; }
    // Makes it as it is before `command`.
    void reset(const ChangingCommand &command);
    // Runs `riders`.
    CommandResult run(const std::string &words) const;
    // For follow().
    std::function<void()> program(const ChangingCommand &command) const;
    // All that users see of these parts: bytes, modes, links. Temporary files have hidden names.
    std::string state(const std::string &part) const;
    // The names of all files and folders, hidden ones too.
    std::vector<std::string> names() const;

private:
    std::filesystem::path folder_;
    const std::string path_ = getenv("PATH");  // where programs are found
};
