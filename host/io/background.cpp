#include "io/background.h"

#include <errno.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cstdint>
#include <utility>

#include "io/refusal.h"

namespace riders::io {
namespace {

struct NotWanted {};

void raiseAlarm(int descriptor)
{
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t put = write(descriptor, &one, sizeof one);
}

void endAlarm(int descriptor)
{
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t got = read(descriptor, &count, sizeof count);
}

// Signals are for the thread that waits for the person.
std::thread withoutSignals(std::function<void()> work)
{
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread thread(std::move(work));
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
}

}  // namespace

bool Background::Unwanted::take()
{
    throw NotWanted();
}

Background::Background() : alarm_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (alarm_ < 0)
        refuseErrno("the window's work", errno);
}

Background::~Background()
{
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        next_ = {};
        raiseAlarm(alarm_);
    }
    changed_.notify_all();
    if (thread_.joinable())
        thread_.join();
    close(alarm_);
}

void Background::begin(Work work)
{
    replace(std::move(work));
    if (!thread_.joinable())
        thread_ = withoutSignals([this] { run(); });
    changed_.notify_all();
}

void Background::stop()
{
    replace({});
}

void Background::replace(Work work)
{
    const std::lock_guard lock(mutex_);
    ++wanted_;
    next_ = std::move(work);
    result_ = {};
    if (working_)
        raiseAlarm(alarm_);
}

bool Background::busy()
{
    const std::lock_guard lock(mutex_);
    return working_ || next_ || result_;
}

bool Background::takeResult()
{
    Then result;
    {
        const std::lock_guard lock(mutex_);
        result.swap(result_);
    }
    if (result)
        result();
    return result != nullptr;
}

void Background::wait()
{
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !working_ && !next_; });
}

void Background::run()
{
    Unwanted unwanted(alarm_);
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return next_ || ending_; });
        if (ending_)
            return;
        const Work work = std::exchange(next_, {});
        const unsigned number = wanted_;
        working_ = true;
        endAlarm(alarm_);
        lock.unlock();
        Then result;
        try {
            result = work(unwanted);
        } catch (const NotWanted &) {
        }
        lock.lock();
        working_ = false;
        if (number == wanted_)
            result_ = std::move(result);
        changed_.notify_all();
    }
}

}  // namespace riders::io
