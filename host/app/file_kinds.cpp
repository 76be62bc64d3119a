#include "app/file_kinds.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <string>

#include "apply/riders_file.h"
#include "io/bytes.h"
#include "io/refusal.h"
#include "plates/job/job_kind.h"

namespace riders::app {
namespace {

// Empty where it cannot be read.
std::string beginningOf(const std::filesystem::path &file, std::size_t bytes)
{
    try {
        const io::OpenFile in = io::openOrdinaryFile(file);
        std::string head(bytes, '\0');
        head.resize(io::readFully(in, head.data(), head.size()));
        return head;
    } catch (const io::Refusal &) {
        return {};
    }
}

bool endsLikeAJob(const std::filesystem::path &file)
{
    constexpr std::array<const char *, 6> endings = {".ps", ".eps", ".epsf", ".epsi", ".pdf", ".riders"};
    const std::string ending = file.extension();
    return std::any_of(endings.begin(), endings.end(),
                       [&](const char *known) { return strcasecmp(known, ending.c_str()) == 0; });
}

}  // namespace

bool isJobFile(const std::filesystem::path &file)
{
    if (endsLikeAJob(file))
        return true;
    const std::string head = beginningOf(file, plates::kJobHead);
    if (head.empty() || apply::isRidersFile(head))
        return !head.empty();
    try {
        plates::kindOfHead(head, file);
        return true;
    } catch (const io::Refusal &) {
        return false;
    }
}

bool isRidersFile(const std::filesystem::path &file)
{
    return apply::isRidersFile(beginningOf(file, apply::kMagicWithin));
}

}  // namespace riders::app
