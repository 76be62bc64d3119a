// Repeats a system call that a signal interrupts.
#pragma once

#include <cerrno>

namespace toolbox::files {

template <typename Call> auto retried(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

}  // namespace toolbox::files
