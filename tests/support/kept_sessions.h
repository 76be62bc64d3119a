// The sessions kept in examples/sessions, played in a folder of their own.
#pragma once

#include <string>
#include <vector>

#include "support/command.h"
#include "support/toolbox_test.h"

namespace kept {

// The scripts in a folder by name, without the ending .play, sorted.
std::vector<std::string> scriptsIn(const std::filesystem::path &folder);
std::vector<std::string> wordsOf(const std::string &line);

extern const std::filesystem::path sessions;
std::vector<std::string> names();

// Played in a folder that holds nothing but a copy of examples/sessions/files.
class Session {
public:
    // With `riders` of this build unless another program is named.
    explicit Session(std::string program = "riders") : program_(std::move(program)) {}

    CommandResult play(const std::string &name);
    std::string trace() const { return contentsOf(work_ / "trace"); }
    std::string made(const std::string &name) const { return contentsOf(work_ / "there" / name); }
    bool has(const std::string &name) const { return std::filesystem::exists(work_ / "there" / name); }
    std::vector<std::string> names() const;
    std::string folder() const { return work_.path(); }
    std::filesystem::path picture(const std::string &name) const { return work_ / "pictures" / (name + ".png"); }

private:
    std::string program_;
    TemporaryFolder work_;
};

// The trace kept for a session.
std::filesystem::path traceOf(const std::string &name);
// Where the two begin to differ, in words; empty when they do not.
std::string difference(const std::string &is, const std::string &should);

}  // namespace kept
