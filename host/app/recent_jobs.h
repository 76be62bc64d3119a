// The jobs a person opened last, kept from one run of the program to the next.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace riders::app {

// In a file in the user's settings folder, read when the list is first wanted, and written when it changes. What
// cannot be kept is forgotten without a word. The Toolbox must be started, and must outlive it.
class RecentJobs {
public:
    // As they are shown, the newest first; those of one name with the folder's.
    std::vector<std::string> names();
    // By its place in that list; empty beyond its end.
    std::filesystem::path job(std::size_t place);
    void add(const std::filesystem::path &job);
    void remove(const std::filesystem::path &job);

private:
    void read();
    void keep() const;

    std::vector<std::filesystem::path> jobs_;
    bool known_ = false;
};

}  // namespace riders::app
