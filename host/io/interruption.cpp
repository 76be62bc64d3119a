#include "io/interruption.h"

#include <errno.h>
#include <fcntl.h>
#include <unistd.h>

#include <atomic>

#include "io/refusal.h"

namespace riders::io {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
std::atomic<int> noted{0};
int ends[2] = {-1, -1};

void note(int signal)
{
    const int error = errno;
    int none = 0;
    if (noted.compare_exchange_strong(none, signal)) [[maybe_unused]]
        ssize_t put = write(ends[1], "", 1);
    errno = error;
}

}  // namespace

Interruption::Interruption()
{
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        refuseErrno("a pipe", errno);
    noted = 0;
    for (int i = 0; i < 3; ++i) {
        sigaction(kSignals[i], nullptr, &old_[i]);
        struct sigaction action = {};
        action.sa_handler = note;
        sigfillset(&action.sa_mask);
        if (old_[i].sa_handler != SIG_IGN)
            sigaction(kSignals[i], &action, nullptr);
    }
}

Interruption::~Interruption()
{
    for (int i = 0; i < 3; ++i)
        sigaction(kSignals[i], &old_[i], nullptr);
    for (int &end : ends) {
        close(end);
        end = -1;
    }
}

void Interruption::check()
{
    if (const int signal = noted)
        throw Interrupted(signal);
}

bool Interruption::hasCome()
{
    return noted != 0;
}

int Interruption::descriptor()
{
    return ends[0];
}

}  // namespace riders::io
