#include "printer/job_line.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <thread>
#include <utility>

#include "io/litter.h"
#include "io/output.h"
#include "io/plain_text.h"
#include "io/refusal.h"
#include "printer/formats.h"
#include "printer/job_attributes.h"

namespace fs = std::filesystem;

namespace riders::printer {

namespace {

int coresOf(const ServiceRequest &request)
{
    return request.atOnce > 0 ? request.atOnce
                              : std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

void say(const std::string &words)
{
    std::cerr << "riders printer: " + io::plainText(words) + "\n";
}

// Says so when the thread ends: PAPPL is then done with its job, too.
class ThreadOfQueue {
public:
    ThreadOfQueue() = default;
    ~ThreadOfQueue() { leave(); }
    ThreadOfQueue(const ThreadOfQueue &) = delete;
    ThreadOfQueue &operator=(const ThreadOfQueue &) = delete;
    void belongTo(JobLine *line, const std::string &queue)
    {
        line_ = line;
        queue_ = queue;
    }
    void leave()
    {
        if (line_ != nullptr)
            std::exchange(line_, nullptr)->ended(queue_);
    }

private:
    JobLine *line_ = nullptr;
    std::string queue_;
};

thread_local ThreadOfQueue threadOfQueue;

// The jobs of a printer that PAPPL has, so that nothing is done with its lock held.
std::vector<pappl_job_t *> activeJobs(pappl_printer_t *printer)
{
    std::vector<pappl_job_t *> jobs;
    papplPrinterIterateActiveJobs(
        printer,
        [](pappl_job_t *job, void *data) { static_cast<std::vector<pappl_job_t *> *>(data)->push_back(job); },
        &jobs, 1, 0);
    return jobs;
}

pappl_printer_t *printerOf(pappl_system_t *system, const std::string &queue)
{
    return papplSystemFindPrinter(system, ("/ipp/print/" + queue).c_str(), 0, nullptr);
}

bool isHeldByUser(pappl_job_t *job)
{
    return papplJobGetAttribute(job, "job-hold-until") != nullptr ||
           papplJobGetAttribute(job, "job-hold-until-time") != nullptr;
}

}  // namespace

JobLine::JobLine(const ServiceRequest &request, bool sandbox)
    : request_(request), sandbox_(sandbox), store_(request.state / "jobs"),
      queues_(request.queues, request.state / "queues.toml"), atOnce_(coresOf(request))
{
}

// PAPPL removes the file that it is given, so it gets another name of the document. It would start the job at
// once, were the printer not paused. The number is PAPPL's choice where it is 0.
pappl_job_t *JobLine::hand(const JobRecord &record, int number)
{
    pappl_printer_t *const printer = printerOf(system_, record.key.queue);
    if (printer == nullptr)
        return nullptr;
    const fs::path spooled = io::unguessableName((request_.state / "spool/kept-").native());
    const fs::path document = store_.documentOf(record.key);
    if (link(document.c_str(), spooled.c_str()) != 0)
        io::copyFile(document, spooled);
    const bool paused = papplPrinterGetState(printer) == IPP_PSTATE_STOPPED;
    if (!paused)
        papplPrinterPause(printer);
    if (number > 0)
        papplPrinterSetNextJobID(printer, number);
    pappl_job_t *const job = papplJobCreateWithFile(printer, record.user.c_str(), keptText(record.format),
                                                    keptText(record.title), 0, nullptr, spooled.c_str());
    if (job != nullptr)
        papplJobHold(job, nullptr, record.holdUntil.empty() ? nullptr : record.holdUntil.c_str(), 0);
    if (!paused)
        papplPrinterResume(printer);
    return job;
}

void JobLine::takeUp()
{
    const auto records = store_.all();
    for (const JobRecord &record : records)
        if (record.state == JobState::accepted && hand(record, record.key.number) == nullptr)
            say(record.key.text() + " waits: there is no queue " + record.key.queue);
    for (const Queue *const queue : queues_.all()) {
        for (const JobRecord &record : records)
            if (record.state != JobState::accepted && record.key.queue == queue->name)
                removeUnfinished(record, *queue, request_.films);
        papplPrinterSetNextJobID(printerOf(system_, queue->name), store_.nextNumber(queue->name));
    }
}

void JobLine::begin()
{
    const std::lock_guard lock(mutex_);
    begun_ = true;
    std::thread([this] { watchGone(); }).detach();
    for (const Queue *const queue : queues_.all())
        advance(queue->name);
}

void JobLine::settle()
{
    const std::lock_guard lock(mutex_);
    if (stopping_)
        return;
    noteGone();
    for (const Queue *const queue : queues_.all()) {
        for (pappl_job_t *const job : activeJobs(printerOf(system_, queue->name)))
            if (papplJobGetState(job) == IPP_JSTATE_HELD && papplJobGetFilename(job) != nullptr &&
                !store_.find(keyOf(job)))
                keep(job, queue->name, papplJobGetFilename(job));
        advance(queue->name);
    }
}

void JobLine::keep(pappl_job_t *job, const std::string &queue, const fs::path &document)
{
    const JobKey key = keyOf(job);
    if (refused_.contains(key))
        return;
    try {
        JobRecord record = recordOf(job);
        if (document.extension() == ".ps")
            record.format = "application/postscript";  // as pixels are kept
        if (!isTaken(record.format)) {
            refuse(job, {IPP_STATUS_ERROR_DOCUMENT_FORMAT_NOT_SUPPORTED, "The document is of no known kind."});
            return;
        }
        store_.accept(record, document);
        papplJobSetReasons(job, PAPPL_JREASON_JOB_QUEUED,
                           isHeldByUser(job) ? PAPPL_JREASON_NONE : PAPPL_JREASON_JOB_HOLD_UNTIL_SPECIFIED);
    } catch (const io::Refusal &refusal) {
        refuse(job, {IPP_STATUS_ERROR_TEMPORARY, refusal.message});
        return;
    }
    forgetOldest(queue);
}

void JobLine::refuse(pappl_job_t *job, const Refused &refused)
{
    refused_[keyOf(job)] = refused;
    say("a job for " + keyOf(job).queue + " was refused: " + refused.why);
    papplJobSetMessage(job, "%s", refused.why.c_str());
    papplJobSetReasons(job, PAPPL_JREASON_ABORTED_BY_SYSTEM, PAPPL_JREASON_JOB_HOLD_UNTIL_SPECIFIED);
    papplJobCancel(job);
}

std::optional<JobLine::Refused> JobLine::refusalOf(const JobKey &key)
{
    const std::lock_guard lock(mutex_);
    const auto found = refused_.find(key);
    if (found == refused_.end())
        return {};
    return refused_.extract(found).mapped();
}

// Of those that have ended; the films stay.
void JobLine::forgetOldest(const std::string &queue)
{
    std::vector<JobKey> over;
    for (const JobRecord &record : store_.all())
        if (record.key.queue == queue && record.state != JobState::accepted && record.state != JobState::held)
            over.push_back(record.key);
    const std::size_t most = static_cast<std::size_t>(request_.mostKept);
    over.resize(over.size() > most ? over.size() - most : 0);
    try {
        for (const JobKey &key : over)
            store_.forget(key);
    } catch (const io::Refusal &refusal) {
        say(refusal.message);
    }
}

// The next in order, once PAPPL has no thread for the queue: of two releases at the same time it might start one
// job twice.
void JobLine::advance(const std::string &queue)
{
    if (!begun_ || stopping_ || busy_.contains(queue))
        return;
    pappl_job_t *next = nullptr;
    for (pappl_job_t *const job : activeJobs(printerOf(system_, queue))) {
        const ipp_jstate_t state = papplJobGetState(job);
        if (state == IPP_JSTATE_PENDING || state == IPP_JSTATE_PROCESSING)
            return;
        if (state == IPP_JSTATE_HELD && !isHeldByUser(job) && store_.find(keyOf(job)))
            next = next == nullptr || papplJobGetID(job) < papplJobGetID(next) ? job : next;
    }
    if (next == nullptr)
        return;
    busy_[queue] = papplJobGetID(next);
    papplJobRelease(next, nullptr);
}

void JobLine::ended(const std::string &queue)
{
    const std::lock_guard lock(mutex_);
    started_.erase({queue, busy_[queue]});
    busy_.erase(queue);
    noteGone();
    advance(queue);
}

void JobLine::gone(const JobKey &key, JobState state)
{
    const std::lock_guard lock(small_);
    gone_[key] = state;
    if (const auto working = inWork_.find(key); working != inWork_.end())
        eventfd_write(working->second, 1);
    changed_.notify_all();
}

void JobLine::noteGone()
{
    std::map<JobKey, JobState> keys;
    {
        const std::lock_guard lock(small_);
        keys.swap(gone_);
    }
    for (const auto &[key, state] : keys) {
        std::optional<JobRecord> record = store_.find(key);
        if (!record || record->state != JobState::accepted)
            continue;
        record->state = state;
        record->ended = std::time(nullptr);
        record->message = state == JobState::failed ? "the document cannot be read" : "";
        write(*record);
        // One that was released and has not come to be made.
        if (const auto busy = busy_.find(key.queue);
            busy != busy_.end() && busy->second == key.number && !started_.contains(key))
            busy_.erase(busy);
    }
}

// For as long as the process lives.
void JobLine::watchGone()
{
    for (;;) {
        {
            std::unique_lock lock(small_);
            changed_.wait(lock, [this] { return !gone_.empty(); });
        }
        settle();
    }
}

void JobLine::answering()
{
    threadOfQueue.leave();
}

bool JobLine::make(pappl_job_t *job, const fs::path &pixels)
{
    const JobKey key = keyOf(job);
    std::optional<JobRecord> record;
    {
        const std::lock_guard lock(mutex_);
        if (!started_.insert(key).second)
            pthread_exit(nullptr);  // PAPPL has started it twice; as far as it knows, the other thread does all
        threadOfQueue.belongTo(this, key.queue);
        busy_[key.queue] = key.number;
        const char *const received = papplJobGetFilename(job);
        if (!store_.find(key) && (received != nullptr || !pixels.empty()))
            keep(job, key.queue, pixels.empty() ? fs::path(received) : pixels);
        record = store_.find(key);
    }
    if (!record || record->state == JobState::canceled)
        return false;
    papplJobSetReasons(job, PAPPL_JREASON_JOB_PRINTING, PAPPL_JREASON_JOB_QUEUED);
    return film(job, *record, pixels.empty() ? store_.documentOf(key) : pixels);
}

// What is being made, for as long as it is.
struct JobLine::Working {
    Working(JobLine &of, JobKey working) : line(of), key(std::move(working)), end(eventfd(0, EFD_CLOEXEC))
    {
        const std::lock_guard lock(line.small_);
        line.inWork_[key] = end;
    }
    ~Working()
    {
        {
            const std::lock_guard lock(line.small_);
            line.inWork_.erase(key);
        }
        line.changed_.notify_all();
        close(end);
    }
    Working(const Working &) = delete;
    Working &operator=(const Working &) = delete;

    JobLine &line;
    const JobKey key;
    const int end;
};

bool JobLine::film(pappl_job_t *job, JobRecord record, const fs::path &document)
{
    atOnce_.acquire();
    bool done = false;
    {
        const Working working(*this, record.key);
        try {
            if (papplJobIsCanceled(job) || stopping_)
                throw Canceled();
            const Queue &queue = queues_.find(record.key.queue);
            const Filmed filmed = makeFilmsOf({.record = record,
                                               .queue = queue,
                                               .document = document,
                                               .report = store_.reportOf(record.key),
                                               .films = request_.films,
                                               .cache = request_.state / "cache",
                                               .limits = request_.limits,
                                               .sandbox = sandbox_,
                                               .canceled = working.end});
            record.films = filmed.folder;
            done = finish(job, record, queue.hold ? JobState::held : JobState::made, filmed.warnings);
        } catch (const Canceled &) {
            if (!stopping_)
                finish(job, record, JobState::canceled, "");
        } catch (const std::exception &error) {
            finish(job, record, JobState::failed, error.what());
        }
    }
    atOnce_.release();
    // What is not made is made by the next process; nobody is to hear otherwise from this one.
    while (stopping_)
        pause();
    return done;
}

// Where that fails, the next process makes the job again, or finds its films.
void JobLine::write(const JobRecord &record)
{
    try {
        store_.update(record);
    } catch (const io::Refusal &refusal) {
        say(record.key.text() + ": " + refusal.message);
    }
}

bool JobLine::finish(pappl_job_t *job, JobRecord &record, JobState state, const std::string &message)
{
    record.state = state;
    record.ended = std::time(nullptr);
    record.message = message;
    write(record);
    const bool done = state == JobState::made || state == JobState::held;
    if (state == JobState::failed)
        papplJobSetReasons(job, PAPPL_JREASON_ABORTED_BY_SYSTEM, PAPPL_JREASON_JOB_PRINTING);
    else
        papplJobSetReasons(job, PAPPL_JREASON_NONE, PAPPL_JREASON_JOB_PRINTING);
    if (!message.empty())
        papplJobSetMessage(job, "%s", message.c_str());
    say(record.key.text() + " (" + record.title + "): " + inWords(state) +
        (message.empty() ? "" : ": " + message) + (done && !record.films.empty() ? ", in " + record.films : ""));
    return done;
}

JobKey JobLine::again(const JobKey &key, const Choices &choices)
{
    const std::lock_guard lock(mutex_);
    std::optional<JobRecord> record = store_.find(key);
    if (!record)
        throw io::Refusal("there is no job " + key.text() + " any more");
    record->state = JobState::accepted;
    record->choices = choices;
    record->accepted = std::time(nullptr);
    record->ended = 0;
    record->message = record->films = record->holdUntil = "";
    pappl_job_t *const job = hand(*record, 0);
    if (job == nullptr)
        throw io::Refusal("the job cannot be printed again");
    record->key.number = papplJobGetID(job);
    try {
        store_.accept(*record, store_.documentOf(key));
    } catch (const io::Refusal &) {
        papplJobCancel(job);
        throw;
    }
    advance(key.queue);
    return record->key;
}

void JobLine::makeQueue(const Queue &queue, const std::function<void(const Queue &)> &serve)
{
    const std::lock_guard lock(mutex_);
    const Queue &added = queues_.add(queue);
    try {
        serve(added);
        papplPrinterSetNextJobID(printerOf(system_, queue.name), store_.nextNumber(queue.name));
    } catch (const io::Refusal &) {
        queues_.takeBack();
        throw;
    }
}

void JobLine::release(const JobKey &key)
{
    const std::lock_guard lock(mutex_);
    std::optional<JobRecord> record = store_.find(key);
    if (!record || record->state != JobState::held)
        throw io::Refusal("the films of " + key.text() + " are not held");
    record->films = releaseFilms(*record, queues_.find(key.queue), request_.films);
    record->state = JobState::made;
    store_.update(*record);
}

void JobLine::stop()
{
    mutex_.lock();  // for good: what is being kept is kept, and nobody hears of what is not
    stopping_ = true;
    std::unique_lock lock(small_);
    for (const auto &[key, end] : inWork_)
        eventfd_write(end, 1);
    changed_.wait(lock, [this] { return inWork_.empty(); });
}

}  // namespace riders::printer
