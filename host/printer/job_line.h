// Jobs from the moment at which they have been received whole until their films are made: each is kept on the disk
// before its sender hears that it was accepted, and those of a queue are made one after the other, in the order in
// which they came.
//
// PAPPL alone would forget what was in work when it was killed, and start the newest job first. So a job that
// comes is held (see hooks.cpp), and released here when its turn has come.
#pragma once

#include <pappl/pappl.h>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <semaphore>
#include <set>
#include <string>

#include "printer/jobs/job_store.h"
#include "printer/queues/queue_list.h"
#include "printer/service_request.h"

namespace riders::printer {

class JobLine {
public:
    JobLine(const ServiceRequest &request, bool sandbox);

    // Where the line's jobs are printed. Called before any job comes.
    void serve(pappl_system_t *system) { system_ = system; }
    pappl_system_t *system() const { return system_; }
    // Gives PAPPL the jobs of an earlier run that have not been made. The system does not run yet.
    void takeUp();
    // From now on jobs are made.
    void begin();

    // Keeps every job that has been received whole and is not kept yet. Called on any thread before an answer is
    // sent to a client; the caller holds no lock of PAPPL's.
    void settle();
    // Why a job could not be kept, once; nothing where it could.
    struct Refused {
        ipp_status_t status = IPP_STATUS_ERROR_TEMPORARY;
        std::string why = {};
    };
    std::optional<Refused> refusalOf(const JobKey &key);

    // Makes the films of a job, on the thread on which PAPPL processes it; false where that failed. Where its
    // pages came as pixels, they are in that PostScript file, which is copied.
    bool make(pappl_job_t *job, const std::filesystem::path &pixels);
    // The answer to a client whose job was processed while it came is about to be sent.
    void answering();
    // The thread that PAPPL started for a job of that queue is about to end.
    void ended(const std::string &queue);
    // PAPPL says that a job is no longer wanted (canceled), or that it could not even be read (failed). May be
    // called with PAPPL's locks held.
    void gone(const JobKey &key, JobState state);

    // Prints a job that is kept once more, with those choices. Throws io::Refusal.
    JobKey again(const JobKey &key, const Choices &choices);
    // Puts films that were held where they belong. Throws io::Refusal.
    void release(const JobKey &key);

    // Has one more queue, now and when it is started again; `serve` makes it known to PAPPL. Throws io::Refusal.
    void makeQueue(const Queue &queue, const std::function<void(const Queue &)> &serve);

    // Ends the films in work, and waits for that; no job is begun, and no answer sent, from then on.
    void stop();

    const JobStore &store() const { return store_; }
    const QueueList &queues() const { return queues_; }
    const ServiceRequest &request() const { return request_; }

private:
    struct Working;

    void keep(pappl_job_t *job, const std::string &queue, const std::filesystem::path &document);
    void advance(const std::string &queue);
    bool film(pappl_job_t *job, JobRecord record, const std::filesystem::path &document);
    bool finish(pappl_job_t *job, JobRecord &record, JobState state, const std::string &message);
    void refuse(pappl_job_t *job, const Refused &refused);
    void write(const JobRecord &record);
    void forgetOldest(const std::string &queue);
    void noteGone();
    void watchGone();
    pappl_job_t *hand(const JobRecord &record, int number);

    const ServiceRequest &request_;
    const bool sandbox_;
    JobStore store_;
    QueueList queues_;
    pappl_system_t *system_ = nullptr;

    std::recursive_mutex mutex_;  // before any lock of PAPPL's
    bool begun_ = false;
    std::atomic<bool> stopping_ = false;
    std::map<std::string, int> busy_;  // queues for which PAPPL has a thread, or is to have one: for that job
    std::set<JobKey> started_;         // jobs with a thread
    std::map<JobKey, Refused> refused_;

    std::mutex small_;  // for a moment only, also with PAPPL's locks held
    std::condition_variable changed_;
    std::map<JobKey, JobState> gone_;
    std::map<JobKey, int> inWork_;  // and the descriptor that ends it

    std::counting_semaphore<> atOnce_;
};

}  // namespace riders::printer
