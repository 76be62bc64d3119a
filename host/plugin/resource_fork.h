// Resource forks that belong to the program's own files.
#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>

namespace riders::plugin {

// One line for the user: what could not be loaded and why.
struct PluginError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The resource fork of a file, open for reading and current, until destroyed.
// The Toolbox must be started, and must outlive it.
class ResourceFork {
public:
    // PluginError when it cannot be opened.
    explicit ResourceFork(const std::filesystem::path &file);
    ~ResourceFork();
    ResourceFork(const ResourceFork &) = delete;
    ResourceFork &operator=(const ResourceFork &) = delete;

    std::int16_t number() const { return number_; }

private:
    std::int16_t number_;
};

}  // namespace riders::plugin
