#include "app/job_summary.h"

#include <errno.h>
#include <unistd.h>

#include <algorithm>
#include <memory>

#include "apply/job_structure.h"
#include "io/bytes.h"
#include "io/refusal.h"
#include "plates/job/job_kind.h"

namespace riders::app {
namespace {

std::string tailOf(const io::OpenFile &job)
{
    constexpr off_t longest = 64 << 10;
    const off_t size = lseek(job.descriptor(), 0, SEEK_END);
    if (size < 0 || lseek(job.descriptor(), std::max<off_t>(size - longest, 0), SEEK_SET) < 0)
        io::refuseErrno(job.name(), errno);
    std::string tail(static_cast<size_t>(std::min(size, longest)), '\0');
    tail.resize(io::readFully(job, tail.data(), tail.size()));
    return tail;
}

}  // namespace

JobSummary summaryOf(const std::filesystem::path &job)
{
    const io::OpenFile in = io::openOrdinaryFile(job);
    const auto buffer = std::make_unique_for_overwrite<char[]>(apply::kJobHeadSize + 1);
    const size_t size = io::readFully(in, buffer.get(), apply::kJobHeadSize + 1);
    const std::string_view bytes(buffer.get(), std::min(size, apply::kJobHeadSize));
    const plates::JobKind kind = plates::kindOfHead(bytes.substr(0, plates::kJobHead), in.name());
    JobSummary summary;
    summary.takesRiders = kind != plates::JobKind::pdf && !plates::isWrapped(bytes);
    if (!summary.takesRiders)
        return summary;
    summary.hasRiders = apply::findFragment({bytes, size <= apply::kJobHeadSize, in.name()}).has_value();
    summary.comments = commentsOf(bytes.substr(std::min(bytes.find("%!"), bytes.size())), tailOf(in));
    return summary;
}

}  // namespace riders::app
