#include "io/workers.h"

#include <system_error>
#include <utility>

#include "io/interruption.h"
#include "io/refusal.h"

namespace riders::io {

Workers::Workers(int threads)
{
    threads_.reserve(static_cast<size_t>(threads));
    try {
        for (int i = 0; i < threads; ++i)
            threads_.emplace_back([this] { run(); });
    } catch (const std::system_error &) {
        // Those that there are do all the work.
        if (threads_.empty())
            throw Refusal("there are not enough threads");
    } catch (...) {
        end();
        throw;
    }
}

Workers::~Workers()
{
    end();
}

void Workers::end()
{
    {
        std::lock_guard lock(mutex_);
        ending_ = true;
        urgent_.clear();
        other_.clear();
    }
    changed_.notify_all();
    for (std::thread &thread : threads_)
        thread.join();
}

void Workers::add(std::deque<Work> &queue, Work work)
{
    {
        std::lock_guard lock(mutex_);
        if (!failure_ && !ending_)
            queue.push_back(std::move(work));
    }
    changed_.notify_all();
}

void Workers::add(Work work)
{
    add(other_, std::move(work));
}

void Workers::addUrgent(Work work)
{
    add(urgent_, std::move(work));
}

void Workers::finish()
{
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return busy_ == 0 && urgent_.empty() && other_.empty(); });
    if (failure_)
        std::rethrow_exception(std::exchange(failure_, nullptr));
}

void Workers::drop()
{
    std::unique_lock lock(mutex_);
    urgent_.clear();
    other_.clear();
    changed_.wait(lock, [this] { return busy_ == 0; });
}

void Workers::run()
{
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return ending_ || !urgent_.empty() || !other_.empty(); });
        if (ending_)
            return;
        std::deque<Work> &queue = urgent_.empty() ? other_ : urgent_;
        Work work = std::move(queue.front());
        queue.pop_front();
        ++busy_;
        lock.unlock();
        std::exception_ptr failure;
        try {
            Interruption::check();
            work();
        } catch (...) {
            failure = std::current_exception();
        }
        work = {};  // what it held is released before others are woken
        lock.lock();
        --busy_;
        if (failure && !failure_) {
            failure_ = failure;
            urgent_.clear();
            other_.clear();
        }
        changed_.notify_all();
    }
}

}  // namespace riders::io
