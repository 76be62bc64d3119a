#include "io/stream.h"

#include <errno.h>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <chrono>

#include "io/interruption.h"
#include "io/refusal.h"

namespace riders::io {

Stream::Stream(const std::string &path, int seconds)
    : in_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK), path), seconds_(seconds)
{
    if (in_.descriptor() < 0)
        refuseErrno(path, errno);
}

void Stream::waitForBytes() const
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point deadline = Clock::now() + std::chrono::seconds(seconds_);
    pollfd ready[2] = {{Interruption::descriptor(), POLLIN, 0}, {in_.descriptor(), POLLIN, 0}};
    for (int some = 0; some <= 0;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0)
            throw Refusal(in_.name() + ": nothing came from it for " + std::to_string(seconds_) + " seconds");
        some = poll(ready, 2, static_cast<int>(left));
        if (some < 0 && errno != EINTR)
            refuseErrno(in_.name(), errno);
        Interruption::check();
    }
}

size_t Stream::read(char *buffer, size_t size)
{
    for (;;) {
        waitForBytes();
        const ssize_t got = ::read(in_.descriptor(), buffer, size);
        if (got >= 0)
            return static_cast<size_t>(got);
        if (errno != EINTR && errno != EAGAIN)
            refuseErrno(in_.name(), errno);
    }
}

}  // namespace riders::io
