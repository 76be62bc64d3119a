#include "plates/job/job_kind.h"

#include <algorithm>
#include <string_view>

#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::plates {
namespace {

constexpr std::string_view kUniversalExit = "\x1B%-12345X";

bool isEncapsulated(std::string_view head)
{
    const size_t start = std::min(head.find("%!"), head.size());
    const std::string_view line = head.substr(start, head.find_first_of("\r\n", start) - start);
    return line.find("EPSF-") != std::string_view::npos;
}

}  // namespace

JobKind kindOfHead(std::string_view head, const std::string &name)
{
    if (head.empty())
        throw io::Refusal(name + ": is empty");
    if (isWrapped(head))
        return JobKind::eps;
    const std::string_view text = head.substr(std::min(head.find_first_not_of("\x04 \t\r\n"), head.size()));
    if (text.starts_with("%!") || text.starts_with(kUniversalExit))
        return isEncapsulated(text) ? JobKind::eps : JobKind::postScript;
    if (head.find("%PDF-") != std::string_view::npos)
        return JobKind::pdf;
    throw io::Refusal(name + ": is neither PostScript nor EPS nor PDF");
}

std::string headOf(const io::OpenFile &job)
{
    std::string head(kJobHead, '\0');
    head.resize(io::readFully(job, head.data(), head.size()));
    return head;
}

bool isWrapped(std::string_view head)
{
    return head.starts_with("\xC5\xD0\xD3\xC6");
}

JobKind kindOfJob(const fs::path &job)
{
    if (fs::is_directory(job))
        throw io::Refusal(job.string() + ": is a folder, not a job");
    return kindOfHead(headOf(io::openInput(job)), job);
}

}  // namespace riders::plates
