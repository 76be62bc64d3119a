#include "viewing/compared_job.h"

#include <algorithm>
#include <memory>

#include "apply/apply.h"
#include "apply/job_structure.h"
#include "apply/markers.h"
#include "io/output.h"
#include "plates/job/job_kind.h"

namespace fs = std::filesystem;

namespace riders::viewing {
namespace {

constexpr std::uintmax_t kLargest = std::uintmax_t(128) << 20;  // bytes of a job that is copied

// The bytes of the riders file in a job; empty where there is none.
std::string fragmentOf(const fs::path &job)
{
    const io::OpenFile in = io::openOrdinaryFile(job);
    const auto buffer = std::make_unique_for_overwrite<char[]>(apply::kJobHeadSize + 1);
    const size_t size = io::readFully(in, buffer.get(), apply::kJobHeadSize + 1);
    const std::string_view bytes(buffer.get(), std::min(size, apply::kJobHeadSize));
    const std::optional<size_t> at = apply::findFragment({bytes, size <= apply::kJobHeadSize, in.name()});
    if (!at)
        return {};
    const std::string_view from = bytes.substr(*at);
    const size_t line = std::min(from.find('\n'), from.size() - 1) + 1;
    const std::optional<apply::Marker> marker = apply::parseOpening(from.substr(0, line));
    if (!marker)
        return {};
    const size_t start = line + (marker->landscape ? apply::kLandscapeLine.size() : 0);
    return std::string(from.substr(std::min(start, from.size()), marker->length));
}

}  // namespace

ComparedJob compareJob(const fs::path &job, const fs::path &tried, const fs::path &folder)
{
    if (!tried.empty())
        return {{job, tried}, ViewedJob{job}, tried};
    if (plates::kindOfJob(job) == plates::JobKind::pdf || plates::isWrapped(plates::headOf(io::openInput(job))))
        return {{job}, {}, {}};
    const std::string fragment = fragmentOf(job);
    if (fragment.empty())
        return {{job}, {}, {}};
    const fs::path riders = folder / "riders", plain = folder / "plain.ps";
    io::writeFile(riders, fragment);
    if (fs::file_size(job) > kLargest)
        return {{job}, {}, riders};
    apply::stripRiders({job, plain});
    return {{job}, ViewedJob{plain}, riders};
}

}  // namespace riders::viewing
