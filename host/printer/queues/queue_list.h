// The queues that are served: those that the printer was started with, and those that were made since, which are
// kept in a file.
#pragma once

#include <deque>
#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

#include "printer/queues/queue.h"

namespace riders::printer {

// May be used on several threads. A queue stays where it is for as long as this lives.
class QueueList {
public:
    // Of the queues in the file, those count whose names are not given. Throws io::Refusal where it cannot be
    // read.
    QueueList(const std::vector<Queue> &given, std::filesystem::path kept);

    std::vector<const Queue *> all() const;
    // Throws io::Refusal where there is none.
    const Queue &find(const std::string &name) const;
    // Adds a queue, which is in the file when this returns. Throws io::Refusal; the list is as it was then.
    const Queue &add(const Queue &queue);
    // Takes the queue back that was added last.
    void takeBack();

private:
    void write() const;

    const std::filesystem::path kept_;
    mutable std::mutex mutex_;
    std::deque<Queue> queues_;
    std::size_t given_ = 0;  // that many of them are not in the file
};

}  // namespace riders::printer
