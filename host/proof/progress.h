// How far the work has got, for a person at a terminal.
#pragma once

#include <mutex>
#include <string>

namespace riders::proof {

// A line on standard error that is written over and over, and removed at
// the end; nothing at all where it is not wanted, or standard error is not a terminal. Or told to another process
// (io/progress_lines.h). May be called
// from several threads.
class Progress {
public:
    explicit Progress(bool wanted);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void pageRead();                     // the job has ended a page
    void expect(int pages, int plates);  // known once all pages are read
    void pageRendered();
    void plateFinished();

private:
    void show();
    std::string line() const;

    std::mutex mutex_;
    const bool terminal_, told_;
    int read_ = 0, pages_ = 0, plates_ = 0, pagesDone_ = 0, platesDone_ = 0;
};

}  // namespace riders::proof
