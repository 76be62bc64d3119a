#include "apply/earlier_file.h"

#include <algorithm>
#include <string>

#include "apply/riders_file.h"
#include "io/bytes.h"
#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::apply {
namespace {

constexpr std::size_t kStart = 4096;

// The first bytes of an ordinary file; none where there is no such file.
std::string startOf(const fs::path &file)
{
    std::error_code failed;
    const fs::file_status status = fs::status(file, failed);
    if (status.type() == fs::file_type::none)
        io::refuseErrno(file, failed.value());
    if (!fs::is_regular_file(status))
        return {};
    const io::OpenFile in = io::openOrdinaryFile(file);
    std::string start(kStart, '\0');
    start.resize(io::readFully(in, start.data(), start.size()));
    return start;
}

// As a job begins, maybe after what a printer driver sends before it.
bool beginsAsJob(const std::string &start)
{
    constexpr char endOfJob = 0x04;
    const std::string_view job =
        std::string_view(start).substr(std::min(start.find_first_not_of(endOfJob), start.size()));
    return job.starts_with("%!") || job.starts_with("\033%-12345X");
}

}  // namespace

void refuseUnlessRiders(const fs::path &out)
{
    const std::string start = startOf(out);
    if (!start.empty() && !isRidersFile(start))
        throw io::Refusal(out.string() +
                          ": exists and is no riders file; name another file, or replace it with --force");
}

void refuseUnlessJob(const fs::path &out)
{
    const std::string start = startOf(out);
    if (start.empty())
        return;
    if (isRidersFile(start))
        throw io::Refusal(
            out.string() +
            ": exists and is a riders file, not a job; name another file, or replace it with --force");
    if (!beginsAsJob(start))
        throw io::Refusal(out.string() +
                          ": exists and is no PostScript job; name another file, or replace it with --force");
}

}  // namespace riders::apply
