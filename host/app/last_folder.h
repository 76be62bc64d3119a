// The folder a person used last in a file dialog, kept from one run of the
// program to the next.
#pragma once

#include <filesystem>

namespace riders::app {

// While one of these exists, file dialogs open where those of the last run
// ended; its destructor keeps the folder used last, in a file in the user's
// settings folder. A folder that no longer exists counts as none: dialogs open
// in the session's start folder. The Toolbox must be started, and must outlive it.
class LastFolder {
public:
    LastFolder();
    ~LastFolder();
    LastFolder(const LastFolder &) = delete;
    LastFolder &operator=(const LastFolder &) = delete;

private:
    std::filesystem::path kept_;
};

}  // namespace riders::app
