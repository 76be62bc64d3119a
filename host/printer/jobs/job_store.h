// The jobs that were accepted, on the disk: what is here is made, whatever is killed and whenever.
#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "io/bytes.h"
#include "printer/jobs/job_record.h"

namespace riders::printer {

// A folder for each job, with its record and its document, whole or not there. May be used on several threads.
class JobStore {
public:
    // In that folder, which is made where it is missing and is the user's alone; reads the jobs of an earlier run.
    // Throws io::Refusal, also where another process has it.
    explicit JobStore(const std::filesystem::path &folder);

    // Keeps a job: when this returns, it is on the disk. The document is that file, of which nothing is kept but
    // its bytes. Throws io::Refusal; nothing is kept then.
    void accept(const JobRecord &record, const std::filesystem::path &document);
    // Puts the record of a job that is kept in place of its earlier one. Throws io::Refusal.
    void update(const JobRecord &record);
    void forget(const JobKey &key);

    std::optional<JobRecord> find(const JobKey &key) const;
    // In order of their numbers, queue by queue.
    std::vector<JobRecord> all() const;
    // The next number in that queue that no job has had.
    int nextNumber(const std::string &queue) const;

    std::filesystem::path folderOf(const JobKey &key) const;
    std::filesystem::path documentOf(const JobKey &key) const { return folderOf(key) / "document"; }
    // What the program that makes films said of them.
    std::filesystem::path reportOf(const JobKey &key) const { return folderOf(key) / "films.json"; }

private:
    void read();

    std::filesystem::path folder_;
    io::OpenFile lock_;
    mutable std::mutex mutex_;
    std::map<JobKey, JobRecord> jobs_;
};

}  // namespace riders::printer
