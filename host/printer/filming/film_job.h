// The films of one job, made by `riders film` in a process of its own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "printer/jobs/job_record.h"
#include "printer/queues/queue.h"

namespace riders::printer {

struct FilmingLimits {
    int seconds = 300;     // a page may take
    int megabytes = 2048;  // of memory of the interpreter
};

struct FilmingRequest {
    const JobRecord &record;
    const Queue &queue;
    std::filesystem::path document, report;
    std::filesystem::path films;  // the printer's folder
    std::filesystem::path cache;  // kept from job to job
    FilmingLimits limits;
    bool sandbox = false;
    int canceled = -1;  // a descriptor that can be read once the job is not wanted any more
};

struct Filmed {
    std::filesystem::path folder;  // with the films; empty where they were printed
    std::string warnings;          // line by line
};

// Thrown where the job was canceled.
struct Canceled {};

// Makes them; the folder with films has its name when they are whole, and does not exist before. Where it is there
// already, an earlier process has made them. Should the interpreter be killed, it is tried again. Throws
// io::Refusal, Canceled; nothing is left behind then.
Filmed makeFilmsOf(const FilmingRequest &request);

// The job's name as its films have it: of the title, what may be in the name of a file, without an extension.
std::string nameOfFilms(const std::string &title);
// The folder in which the films of that job are.
std::filesystem::path folderOfFilms(const JobRecord &record, const Queue &queue,
                                    const std::filesystem::path &films);
// Removes what a process that was killed, or could not do so itself, has left of a finished job beside its films.
void removeUnfinished(const JobRecord &record, const Queue &queue, const std::filesystem::path &films);
// Puts films that were held where they belong. Throws io::Refusal.
std::filesystem::path releaseFilms(const JobRecord &record, const Queue &queue,
                                   const std::filesystem::path &films);

}  // namespace riders::printer
