// The folders in which a tried command runs, and what it has made of them.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "fault/commands.h"
#include "fault/faulty_run.h"
#include "support/toolbox_test.h"

// What each file is: kind, mode and contents. By path.
using Files = std::map<std::string, std::string>;

// A home of its own for one command: the folder `work`, settings, temporary files.
class World {
public:
    // Runs what comes before the command.
    explicit World(const TriedCommand &tried);

    FaultyCommand command() const;
    // As it was before the command.
    void restore();
    // All but what the command may leave unfinished.
    Files files() const;

private:
    void prepare() const;
    bool mayBeUnfinished(const std::string &group) const;
    std::filesystem::path place() const { return folder_ / "world"; }
    std::filesystem::path kept() const { return folder_ / "kept"; }

    const TriedCommand &tried_;
    TemporaryFolder folder_;
    Files before_;
};

struct Difference {
    std::string group;
    bool isLeft;  // and was not there before, nor is when all goes well
};
// Files that belong together are all as before or all new: each in `work`, or folder there; the settings; the
// rest. Those that are neither.
std::vector<Difference> neitherOldNorNew(const Files &now, const Files &old, const Files &fresh);
Files withoutWhatIsLeft(Files now, const Files &old, const Files &fresh);
