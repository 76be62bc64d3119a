// Whatever the bytes: the title is one line that can be shown, and no number of
// pages is negative.
#include <stdlib.h>

#include <cstdint>
#include <string_view>

#include "app/job_comments.h"
#include "toolbox/host/text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view job(reinterpret_cast<const char *>(data), size);
    const riders::app::JobComments comments = riders::app::commentsOf(job, job.substr(size / 2));
    if (!toolbox::romanFromUtf8(comments.title) || comments.title.find_first_of("\r\n\t") != comments.title.npos)
        abort();
    if (comments.pages && *comments.pages < 0)
        abort();
    return 0;
}
