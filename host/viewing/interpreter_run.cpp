#include "viewing/interpreter_run.h"

#include "io/refusal.h"

namespace riders::viewing {

std::filesystem::path pageFile(const std::filesystem::path &folder, const char *extension, const ViewedJob &job)
{
    const std::filesystem::path file = folder / (std::string("1.") + extension);
    if (!std::filesystem::exists(file))
        throw io::Refusal(job.job.string() + ": has no page " + std::to_string(job.page));
    return file;
}

}  // namespace riders::viewing
