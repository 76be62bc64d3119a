#include "app/job_summary.h"

#include <algorithm>
#include <fstream>
#include <memory>

#include "apply/job_structure.h"
#include "io/bytes.h"

namespace riders::app {
namespace {

std::string tailOf(const std::filesystem::path &job)
{
    constexpr std::streamoff longest = 64 << 10;
    std::ifstream in(job, std::ios::binary | std::ios::ate);
    const std::streamoff size = std::min<std::streamoff>(std::max<std::streamoff>(in.tellg(), 0), longest);
    in.seekg(-size, std::ios::end);
    std::string tail(static_cast<size_t>(size), '\0');
    in.read(tail.data(), size);
    tail.resize(static_cast<size_t>(in.gcount()));
    return tail;
}

}  // namespace

JobSummary summaryOf(const std::filesystem::path &job)
{
    const io::OpenFile in = io::openOrdinaryFile(job);
    const auto buffer = std::make_unique_for_overwrite<char[]>(apply::kJobHeadSize + 1);
    const size_t size = io::readFully(in, buffer.get(), apply::kJobHeadSize + 1);
    const std::string_view bytes(buffer.get(), std::min(size, apply::kJobHeadSize));
    JobSummary summary;
    summary.hasRiders = apply::findFragment({bytes, size <= apply::kJobHeadSize, in.name()}).has_value();
    summary.comments = commentsOf(bytes.substr(std::min(bytes.find("%!"), bytes.size())), tailOf(job));
    return summary;
}

}  // namespace riders::app
