// The jobs of one run at the print server.
#pragma once

#include <string>
#include <vector>

#include "film/printing/print_server.h"
#include "film/printing/print_plan.h"

namespace riders::printing {

// They are held until all of them are whole, so that nothing is printed of a run that fails: what was not released
// is cancelled.
class SentJobs {
public:
    SentJobs(const PrintServer &server, const std::string &queue) : server_(server), queue_(queue) {}
    ~SentJobs();
    SentJobs(const SentJobs &) = delete;
    SentJobs &operator=(const SentJobs &) = delete;

    // Creates one, whose only document follows in that format, and returns its number. Throws Refusal.
    int begin(const std::string &title, std::vector<JobOption> options, const std::string &format);
    // Some of the document's bytes. Throws Refusal, Interrupted.
    void write(const void *bytes, std::size_t size);
    void end();
    // Lets all be printed.
    void release();

private:
    void cancel(int job) const;

    const PrintServer &server_;
    const std::string queue_;
    std::vector<int> jobs_, held_;
    bool released_ = false;
};

}  // namespace riders::printing
