// Deleting a file, asked about, and done by moving it to the desktop's trash.
#pragma once

#include <functional>
#include <string>

namespace riders::app {

// While one of these exists, what the plug-in deletes for the person goes to the trash, after a question; where
// there is no trash, it is deleted after another. Its own settings file is not asked about. The plug-in takes a
// file that the person keeps for deleted, and says nothing.
class TrashInstead {
public:
    // Receives what was done, UTF-8.
    explicit TrashInstead(std::function<void(const std::string &said)> say);
    ~TrashInstead();
    TrashInstead(const TrashInstead &) = delete;
    TrashInstead &operator=(const TrashInstead &) = delete;
};

}  // namespace riders::app
