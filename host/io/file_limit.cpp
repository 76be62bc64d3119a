#include "io/file_limit.h"

#include <signal.h>
#include <sys/resource.h>

namespace riders::io {

void limitFilesTo(int megabytes)
{
    signal(SIGXFSZ, SIG_IGN);
    rlimit limit = {};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = static_cast<rlim_t>(megabytes) << 20;
    if (limit.rlim_cur < limit.rlim_max)
        setrlimit(RLIMIT_FSIZE, &limit);
}

}  // namespace riders::io
