// The folder a person used last in a file dialog, kept from one run of the
// program to the next.
#pragma once

#include <filesystem>

namespace riders::app {

// While one of these is there, file dialogs open where the last run's ended; at
// its end the folder used last is kept, in a file of the user's own settings
// folder. A folder that is gone counts as none: dialogs open in the session's start
// folder. The Toolbox must be started, and must outlive it.
class LastFolder {
public:
    LastFolder();
    ~LastFolder();
    LastFolder(const LastFolder &) = delete;

private:
    std::filesystem::path kept_;
};

}  // namespace riders::app
