// Scripts played by the program as a user plays them, in a temporary folder.
#pragma once

#include <sstream>

#include "support/command.h"
#include "support/toolbox_test.h"

class Play : public ::testing::Test {
protected:
    CommandResult play(const std::string &script, std::vector<std::string> options = {})
    {
        writeFile(folder / "session.play", script);
        std::vector<std::string> arguments = {"play",        "session.play", "--preferences",
                                              "preferences", "--trace",      "trace"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return runRiders(arguments, {}, folder.path());
    }

    std::string trace() const { return contentsOf(folder / "trace"); }
    // The first of the wanted lines (or beginnings of them) that does not stand
    // in the trace after the ones before it.
    std::string firstNotTraced(const std::vector<std::string> &wanted) const
    {
        std::istringstream in(trace());
        std::size_t next = 0;
        for (std::string line; next < wanted.size() && std::getline(in, line);)
            next += line.starts_with(wanted[next]);
        return next < wanted.size() ? wanted[next] : "";
    }
    bool traced(const std::string &line) const
    {
        return ("\n" + trace()).find("\n" + line + "\n") != std::string::npos;
    }

    TemporaryFolder folder;
};
