// Work that goes on beside a program which must not wait for it.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include "io/beside.h"

namespace riders::io {

// A thread with one piece of work at a time, the newest: what is under way when another piece comes is not wanted
// any more. The thread begins with the first piece. All calls are for the thread that made this.
class Background {
public:
    // What is to be done with the result, on the thread that takes it.
    using Then = std::function<void()>;
    // Runs on the other thread. A program that it starts is given `unwanted` (see LimitedRun::beside) and so is
    // ended once nobody waits for it; whatever the work throws then is dropped. It must throw nothing else.
    using Work = std::function<Then(Beside &unwanted)>;

    // Throws Refusal where the system has no descriptors left.
    Background();
    // Ends what is under way.
    ~Background();
    Background(const Background &) = delete;
    Background &operator=(const Background &) = delete;

    void begin(Work work);
    void stop();
    // Whether there is work of which the result has not been taken.
    bool busy();
    // Does what is to be done with a result that has come since the last call. True when there was one.
    bool takeResult();
    // Waits until there is one, if there is work.
    void wait();

private:
    class Unwanted : public Beside {
    public:
        explicit Unwanted(int descriptor) : descriptor_(descriptor) {}
        int descriptor() const override { return descriptor_; }
        bool take() override;
        void ended() override {}

    private:
        int descriptor_;
    };
    void run();
    void replace(Work work);

    std::mutex mutex_;
    std::condition_variable changed_;
    Work next_;
    Then result_;
    bool working_ = false, ending_ = false;
    unsigned wanted_ = 0;  // counts pieces of work; a result of an earlier one is dropped
    int alarm_;            // readable while what is under way is not wanted
    std::thread thread_;
};

}  // namespace riders::io
