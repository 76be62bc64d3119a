// Work spread over threads.
#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace riders::io {

// Threads that take pieces of work: urgent ones first, otherwise in the order they came.
// A piece may add others. A signal (see Interruption) is noticed between pieces, as if one had thrown Interrupted.
class Workers {
public:
    using Work = std::function<void()>;

    explicit Workers(int threads);
    // Drops what has not begun and waits for what has.
    ~Workers();
    Workers(const Workers &) = delete;
    Workers &operator=(const Workers &) = delete;

    void add(Work work);
    void addUrgent(Work work);
    // Waits until all is done. When a piece throws, what has not begun is
    // dropped, and the first exception is thrown here.
    void finish();
    // Drops what has not begun and waits for what has.
    void drop();

private:
    void run();
    void end();
    void add(std::deque<Work> &queue, Work work);

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Work> urgent_, other_;
    int busy_ = 0;
    bool ending_ = false;
    std::exception_ptr failure_;
    std::vector<std::thread> threads_;
};

}  // namespace riders::io
