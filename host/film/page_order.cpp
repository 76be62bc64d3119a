#include "film/page_order.h"

#include <chrono>
#include <utility>

#include "io/interruption.h"

namespace riders::film {

void PageOrder::awaitTurn(std::size_t place)
{
    constexpr std::chrono::milliseconds kBetweenLooks(50);  // for a signal, which wakes nobody
    std::unique_lock lock(mutex_);
    while (finished_ < place && !hasFailedBefore(place)) {
        io::Interruption::check();
        changed_.wait_for(lock, kBetweenLooks);
    }
    if (finished_ < place)
        throw EarlierPageFailed();
}

void PageOrder::finished(std::size_t place)
{
    {
        const std::lock_guard lock(mutex_);
        finished_ = place + 1;
    }
    changed_.notify_all();
}

bool PageOrder::isFinished(std::size_t place)
{
    const std::lock_guard lock(mutex_);
    return place < finished_;
}

void PageOrder::check(std::size_t place)
{
    const std::lock_guard lock(mutex_);
    if (hasFailedBefore(place))
        throw EarlierPageFailed();
}

void PageOrder::failed(std::size_t place, std::exception_ptr failure)
{
    {
        const std::lock_guard lock(mutex_);
        failures_.emplace(place, std::move(failure));
    }
    changed_.notify_all();
}

void PageOrder::rethrow()
{
    const std::lock_guard lock(mutex_);
    if (!failures_.empty())
        std::rethrow_exception(failures_.begin()->second);
}

bool PageOrder::hasFailedBefore(std::size_t place) const
{
    return !failures_.empty() && failures_.begin()->first < place;
}

}  // namespace riders::film
