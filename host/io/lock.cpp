#include "io/lock.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/file.h>

#include <chrono>
#include <thread>

#include "io/refusal.h"

namespace riders::io {

Lock tryLock(int descriptor)
{
    while (flock(descriptor, LOCK_EX | LOCK_NB) != 0)
        if (errno != EINTR)
            return errno == EWOULDBLOCK ? Lock::anothers : Lock::impossible;
    return Lock::taken;
}

OpenFile lockedFolder(const std::filesystem::path &folder)
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::seconds kPatience(60);
    constexpr std::chrono::milliseconds kBetweenTries(5);
    OpenFile opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC), folder);
    if (opened.descriptor() < 0)
        refuseErrno(folder, errno);
    for (const Clock::time_point start = Clock::now(); tryLock(opened.descriptor()) == Lock::anothers;) {
        if (Clock::now() - start > kPatience)
            throw Refusal(folder.string() + ": another program is using it and does not end");
        std::this_thread::sleep_for(kBetweenTries);
    }
    return opened;
}

}  // namespace riders::io
