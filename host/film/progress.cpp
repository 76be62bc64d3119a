#include "film/progress.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>

#include "io/progress_lines.h"

namespace riders::film {
namespace {

constexpr int kBar = 24;
constexpr double kMinute = 60;

void put(const std::string &text)
{
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

std::string outOf(int done, int all, const std::string &what)
{
    return std::to_string(std::min(done, all)) + " of " + std::to_string(all) + " " + what + (all == 1 ? "" : "s");
}

std::string counted(long count, const std::string &what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

std::string timeToGo(double share, double seconds)
{
    constexpr double kTooEarly = 2;  // seconds
    if (share <= 0 || share >= 1 || seconds < kTooEarly)
        return {};
    const double left = seconds * (1 - share) / share;
    return left < 1.5 * kMinute ? counted(std::max(1L, std::lround(left)), "second")
                                : counted(std::lround(left / kMinute), "minute");
}

Progress::Progress(bool wanted)
    : shown_(wanted && isatty(STDERR_FILENO) != 0), told_(wanted && io::wantsProgressLines()), start_(Clock::now())
{
}

Progress::~Progress()
{
    if (shown_)
        put("\r\x1B[K");
}

void Progress::pageRead()
{
    const std::lock_guard lock(mutex_);
    ++read_;
    show(true);
}

void Progress::expect(int pages, int plates)
{
    const std::lock_guard lock(mutex_);
    pages_ = pages;
    plates_ = plates;
    start_ = Clock::now();
    show(true);
}

void Progress::rowsDone(int page, std::size_t rows, std::size_t allRows)
{
    const std::lock_guard lock(mutex_);
    ofPages_[page] = static_cast<double>(rows) / static_cast<double>(std::max<std::size_t>(1, allRows));
    show(false);
}

void Progress::pageFinished(int page, int plates)
{
    const std::lock_guard lock(mutex_);
    ++pagesDone_;
    platesDone_ += plates;
    ofPages_.erase(page);
    show(true);
}

std::string Progress::line() const
{
    if (pages_ == 0)
        return "reading page " + std::to_string(read_ + 1);
    double done = pagesDone_;
    for (const auto &[page, part] : ofPages_)
        done += part;
    const double share = std::min(1.0, done / pages_);
    const int filled = static_cast<int>(kBar * share);
    const std::string left = timeToGo(share, std::chrono::duration<double>(Clock::now() - start_).count());
    return "[" + std::string(static_cast<std::size_t>(filled), '#') +
           std::string(static_cast<std::size_t>(kBar - filled), '.') + "] " + outOf(pagesDone_, pages_, "page") +
           ", " + outOf(platesDone_, plates_, "plate") + (left.empty() ? "" : ", " + left + " to go");
}

void Progress::show(bool now)
{
    constexpr auto kBetween = std::chrono::milliseconds(100);
    if (now && told_)
        io::tellProgress(pages_ == 0 ? read_ : pagesDone_, pages_);
    if (!shown_ || (!now && Clock::now() - lastShown_ < kBetween))
        return;
    lastShown_ = Clock::now();
    put("\r\x1B[K" + line());
}

}  // namespace riders::film
