// Requests to stop, by Ctrl-C or a polite kill.
#pragma once

#include <signal.h>

#include <exception>

namespace riders::io {

// Thrown where work ends because of a signal.
struct Interrupted : std::exception {
    explicit Interrupted(int number) : signal(number) {}
    const char *what() const noexcept override { return "interrupted"; }

    int signal;
};

// While one exists, SIGINT, SIGTERM and SIGHUP are noted instead of ending the
// process (those that are ignored stay so). Only one at a time.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption &) = delete;
    Interruption &operator=(const Interruption &) = delete;

    // From any thread: throws Interrupted once a signal has come.
    static void check();
    static bool hasCome();
    // A descriptor that is readable once a signal has come; for poll.
    static int descriptor();

private:
    struct sigaction old_[3];
};

}  // namespace riders::io
