#include "proof/progress.h"

#include <unistd.h>

#include <algorithm>

#include "io/progress_lines.h"

namespace riders::proof {
namespace {

constexpr int kBar = 24;

void put(const std::string &text)
{
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

std::string outOf(int done, int all, const std::string &what)
{
    return std::to_string(std::min(done, all)) + " of " + std::to_string(all) + " " + what + (all == 1 ? "" : "s");
}

}  // namespace

Progress::Progress(bool wanted)
    : terminal_(wanted && isatty(STDERR_FILENO)), told_(wanted && io::wantsProgressLines())
{
}

Progress::~Progress()
{
    if (terminal_)
        put("\r\x1B[K");
}

void Progress::pageRead()
{
    std::lock_guard lock(mutex_);
    ++read_;
    show();
}

void Progress::expect(int pages, int plates)
{
    std::lock_guard lock(mutex_);
    pages_ = pages;
    plates_ = plates;
    show();
}

void Progress::pageRendered()
{
    std::lock_guard lock(mutex_);
    ++pagesDone_;
    show();
}

void Progress::plateFinished()
{
    std::lock_guard lock(mutex_);
    ++platesDone_;
    show();
}

std::string Progress::line() const
{
    if (pages_ == 0)
        return "reading page " + std::to_string(read_ + 1);
    const int all = std::max(1, pages_ + plates_);
    const int filled = std::min(kBar, kBar * (pagesDone_ + platesDone_) / all);
    return "[" + std::string(static_cast<size_t>(filled), '#') +
           std::string(static_cast<size_t>(kBar - filled), '.') + "] " + outOf(pagesDone_, pages_, "page") + ", " +
           outOf(platesDone_, plates_, "plate");
}

void Progress::show()
{
    if (told_)
        io::tellProgress(pages_ == 0 ? read_ : pagesDone_, pages_);
    if (terminal_)
        put("\r\x1B[K" + line());
}

}  // namespace riders::proof
