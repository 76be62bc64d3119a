// Resource forks that are open, by the files they belong to.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "files/forks.h"

namespace toolbox::files {

// While one exists, the file at its address cannot be deleted, and the address
// follows when the file is renamed.
class OpenFork {
public:
    explicit OpenFork(ForkAddress address);
    ~OpenFork();
    OpenFork(const OpenFork &) = delete;
    OpenFork &operator=(const OpenFork &) = delete;

    const ForkAddress &address() const { return address_; }
    // Whether the other address leads to the same file.
    bool isAt(const ForkAddress &other) const;
    bool isOf(const std::filesystem::path &file) const;
    void renamed(const std::string &name) { address_.name = name; }

private:
    ForkAddress address_;
};

std::vector<OpenFork *> openForksOf(const std::filesystem::path &file);

}  // namespace toolbox::files
