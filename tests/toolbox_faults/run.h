// A run of the program in a process of its own, with a fault, in a folder of its own.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "toolbox_faults/fault.h"
#include "support/toolbox_test.h"

namespace toolbox_faults {

// How the program ended: what it says in one line, or nothing, and whether it was a remark and no failure.
struct Words {
    std::string problem;
    std::string note;
};

struct Scenario {
    std::string name;
    std::function<Words()> run;  // in the folder of the files
    // Whether the host puts files in their places, and promises more than the plug-in does: what is made is right
    // or not made, and so are saved settings.
    bool byHost = false;
};
inline void PrintTo(const Scenario &scenario, std::ostream *out)
{
    *out << scenario.name;
}

// The bytes of each file of a folder by its name.
using Files = std::map<std::string, std::string>;

struct Outcome {
    int status = -1;  // exit code; -1: it did not end by itself
    std::string how;  // in words, if it did not
    std::string err;
    std::vector<int> calls;          // of each kind, see callsOfEachKind
    std::vector<std::string> said;   // the texts of messages, and beeps
    std::vector<std::string> made;   // the names of files that were made, quoted
    std::vector<std::string> leaks;  // what was left behind after a call of the plug-in, or at the end
    std::vector<std::string> trace;
    Files files, settings;
};

// The folder of the files that a user works on, and that of the settings.
class Place {
public:
    // As they are before each run.
    Place(Files files, Files settings);
    void restore() const;
    Files files() const;
    Files settings() const;
    // Runs it, with a fault if nth is not 0; what runs is stopped after ten seconds of its own time.
    Outcome run(const Scenario &scenario, const Fault &fault = {}, int nth = 0) const;
    std::filesystem::path settingsFolder() const { return work_ / "config" / "riders"; }
    std::filesystem::path folder() const { return work_ / "there"; }

private:
    Files files_, settings_;
    TemporaryFolder work_;
};

}  // namespace toolbox_faults
