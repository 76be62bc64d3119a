// A line on the terminal that says how far the films are.
#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>

namespace riders::film {

// On standard error, if that is a terminal and the line is wanted; or told to another process
// (io/progress_lines.h). From any thread.
class Progress {
public:
    explicit Progress(bool wanted);
    // Takes the line away.
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void pageRead();                                                 // in the survey
    void expect(int pages, int plates);                              // how much there is to do
    void rowsDone(int page, std::size_t rows, std::size_t allRows);  // of a page in work
    void pageFinished(int page, int plates);

private:
    using Clock = std::chrono::steady_clock;

    void show(bool now);
    std::string line() const;

    const bool shown_, told_;
    std::mutex mutex_;
    int read_ = 0, pages_ = 0, plates_ = 0, pagesDone_ = 0, platesDone_ = 0;
    std::map<int, double> ofPages_;  // 0 to 1, how much of those in work is done
    Clock::time_point start_, lastShown_;
};

// "40 seconds", "12 minutes": of work that is done to that share after so many seconds; empty where it is too
// early to say.
std::string timeToGo(double share, double seconds);

}  // namespace riders::film
