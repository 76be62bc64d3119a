// Where a job is interpreted: a process that sees the system's programs, its job, and the folder of its films, and
// no network.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace riders::printer {

struct SandboxRoom {
    std::vector<std::filesystem::path> readable;  // besides the system's programs and fonts
    std::vector<std::filesystem::path> writable;
    std::filesystem::path folder;  // the current one
    bool network = false;          // where films go to another queue
};

// The command in a sandbox of bubblewrap.
std::vector<std::string> inSandbox(const SandboxRoom &room, const std::vector<std::string> &command);

// What hinders sandboxes here; empty where they work. Starts one. `folder` may be written to.
std::string whySandboxesFail(const std::filesystem::path &folder);

}  // namespace riders::printer
