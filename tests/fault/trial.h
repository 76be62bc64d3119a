// One command, run again and again with something failing, and judged each time.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fault/commands.h"
#include "fault/faulty_run.h"
#include "fault/world.h"

class Trial {
public:
    // Runs the command without a fault, to see what is right.
    explicit Trial(const TriedCommand &tried);

    const char *name() const { return tried_.name; }
    const FaultyRun &right() const { return right_; }

    // Runs the command in a restored world. A GoogleTest failure, which begins with `what`, where it crashes or
    // does not end, says nothing or too much, exits with 0 without having done its work, leaves a file that is
    // neither old nor new, or one too many, or where the next run does not work. Counted under `kind`.
    // A run that takes too long gets a second try: on a busy machine that happens once, but an endless run
    // repeats. Where nothing can be removed any more, what is left is a failure only if the next run leaves it,
    // too.
    struct Setting {
        std::optional<Fault> fault;
        std::vector<std::string> environment;
        bool nothingCanBeRemoved = false;
    };
    void tryWith(const Setting &setting, const std::string &kind, const std::string &what);
    // The counts, on standard output.
    void print() const;

private:
    struct Count {
        int tried = 0, failed = 0;
    };

    std::vector<std::string> wrongWith(const FaultyRun &run, bool mayLeave);
    std::vector<std::string> wrongResult(const FaultyRun &run, const Files &now, bool mayLeave) const;
    std::vector<std::string> wrongFiles(const Files &now, bool mayLeave) const;
    std::vector<std::string> wrongNext();

    const TriedCommand &tried_;
    World world_;
    Files old_, fresh_;
    FaultyRun right_, again_;  // again: once more in the new world
    Files afterAgain_;
    std::map<std::string, Count> counts_;
};
