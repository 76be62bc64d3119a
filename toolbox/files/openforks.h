// Resource forks that are open, by the files they belong to.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "files/forks.h"

namespace toolbox::files {

// While one is there, the file of its address cannot be deleted, and the
// address follows when the file is renamed.
class OpenFork {
public:
    explicit OpenFork(ForkAddress address);
    ~OpenFork();
    OpenFork(const OpenFork &) = delete;

    const ForkAddress &address() const { return address_; }
    // Whether its file is the one that the other address leads to.
    bool isAt(const ForkAddress &other) const;
    bool isOf(const std::filesystem::path &file) const;
    void renamed(const std::string &name) { address_.name = name; }

private:
    ForkAddress address_;
};

std::vector<OpenFork *> openForksOf(const std::filesystem::path &file);

}  // namespace toolbox::files
