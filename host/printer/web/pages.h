// The pages of the printer's jobs, in HTML.
#pragma once

#include <string>
#include <vector>

#include "printer/jobs/job_record.h"
#include "printer/queues/queue.h"

namespace riders::printer {

// Where in the server they are.
inline constexpr const char *kJobsPath = "/films", *kJobPath = "/films/job", *kActionPath = "/films/do",
                            *kQueuesPath = "/films/queues", *kMakeQueuePath = "/films/make-queue";
inline constexpr const char *kTilePath = "/films/tile";
// A file of a job's films.
std::string pathOf(const JobKey &key, const std::string &file);

struct FilmFile {
    std::string name;
    std::uintmax_t bytes = 0;
};

struct JobOnPage {
    const JobRecord &record;
    const Queue &queue;
    std::vector<FilmFile> films;
    bool look = false;    // there is a page to look at
    std::string session;  // what forms have to send back
};

// All jobs, the newest first.
std::string jobsPage(const std::vector<JobRecord> &records);
// One job and what can be done with it.
std::string jobPage(const JobOnPage &job);
// The queues, and a form that makes another one; the session is what it has to send back.
std::string queuesPage(const std::vector<const Queue *> &queues, const std::string &session);
std::string refusalPage(const std::string &message);

// films-17, or a key with an empty queue where the text is something else.
JobKey keyFromText(std::string_view text);

}  // namespace riders::printer
