#include "printer/queues/queue_list.h"

#include <algorithm>
#include <utility>

#include "io/bytes.h"
#include "io/output.h"
#include "io/refusal.h"

namespace riders::printer {

QueueList::QueueList(const std::vector<Queue> &given, std::filesystem::path kept)
    : kept_(std::move(kept)), queues_(given.begin(), given.end()), given_(given.size())
{
    if (!std::filesystem::exists(kept_))
        return;
    for (const Queue &queue : queuesFromToml(io::contentsOf(kept_), kept_)) {
        const auto isIt = [&](const Queue &one) { return one.name == queue.name; };
        if (std::none_of(given.begin(), given.end(), isIt))
            queues_.push_back(queue);
    }
}

std::vector<const Queue *> QueueList::all() const
{
    const std::lock_guard lock(mutex_);
    std::vector<const Queue *> all;
    for (const Queue &queue : queues_)
        all.push_back(&queue);
    return all;
}

const Queue &QueueList::find(const std::string &name) const
{
    for (const Queue *const queue : all())
        if (queue->name == name)
            return *queue;
    throw io::Refusal("there is no queue " + name + " any more");
}

const Queue &QueueList::add(const Queue &queue)
{
    const std::lock_guard lock(mutex_);
    const auto isIt = [&](const Queue &one) { return one.name == queue.name; };
    if (std::any_of(queues_.begin(), queues_.end(), isIt))
        throw io::Refusal("there is a queue " + queue.name + " already");
    if (queues_.size() >= kMostQueues)
        throw io::Refusal("expected no more than " + std::to_string(kMostQueues) + " queues");
    queues_.push_back(queue);
    try {
        write();
    } catch (const io::Refusal &) {
        queues_.pop_back();
        throw;
    }
    return queues_.back();
}

void QueueList::takeBack()
{
    const std::lock_guard lock(mutex_);
    queues_.pop_back();
    write();
}

void QueueList::write() const
{
    std::string text;
    for (std::size_t i = given_; i < queues_.size(); ++i)
        text += tomlOf(queues_[i]);
    io::writeFile(kept_, text);
}

}  // namespace riders::printer
