#include "io/progress_lines.h"

#include <stdlib.h>
#include <unistd.h>

#include <charconv>
#include <string>

namespace riders::io {
namespace {

constexpr std::string_view kBeginning = "riders-progress ";

}  // namespace

bool wantsProgressLines()
{
    const char *wanted = getenv("RIDERS_PROGRESS");
    return wanted && std::string_view(wanted) == "lines";
}

void tellProgress(int done, int pages)
{
    const std::string line = std::string(kBeginning) + std::to_string(done) + " " + std::to_string(pages) + "\n";
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
}

std::optional<ToldProgress> toldProgress(std::string_view line)
{
    if (!line.starts_with(kBeginning))
        return {};
    line.remove_prefix(kBeginning.size());
    ToldProgress told;
    const char *const end = line.data() + line.size();
    const auto done = std::from_chars(line.data(), end, told.done);
    if (done.ec != std::errc() || done.ptr == end || *done.ptr != ' ')
        return {};
    const auto pages = std::from_chars(done.ptr + 1, end, told.pages);
    if (pages.ec != std::errc() || pages.ptr != end)
        return {};
    return told;
}

}  // namespace riders::io
