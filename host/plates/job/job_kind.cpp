#include "plates/job/job_kind.h"

#include <algorithm>
#include <string_view>

#include "apply/riders_file.h"
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

// A job may begin with one; alone it prints nothing.
void refuseRidersAlone(const io::OpenFile &in, const std::string &head, const std::string &name)
{
    std::string bytes = head;
    bytes.resize(apply::kLongestRiders + 1);
    bytes.resize(head.size() + io::readFully(in, bytes.data() + head.size(), bytes.size() - head.size()));
    if (apply::isRidersAlone(bytes))
        throw io::Refusal(name + ": is a riders file, not a job; name the job, and the riders file with --riders");
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

JobKind kindOfJob(const fs::path &job, const std::string &shown)
{
    const std::string name = shown.empty() ? job.string() : shown;
    if (fs::is_directory(job))
        throw io::Refusal(name + ": is a folder, not a job");
    const io::OpenFile in = io::openInput(job);
    const std::string head = headOf(in);
    const JobKind kind = kindOfHead(head, name);
    if (apply::isRidersFile(head))
        refuseRidersAlone(in, head, name);
    return kind;
}

}  // namespace riders::plates
