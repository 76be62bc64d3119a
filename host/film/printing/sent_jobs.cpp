#include "film/printing/sent_jobs.h"

#include "io/interruption.h"
#include "io/refusal.h"

namespace riders::printing {
namespace {

using cups::libcups;

constexpr const char *kHold = "job-hold-until";
constexpr double kCancelSeconds = 10;

[[noreturn]] void refuse(const std::string &what)
{
    io::Interruption::check();
    throw io::Refusal(what + ": " + PrintServer::lastError());
}

}  // namespace

SentJobs::~SentJobs()
{
    if (released_)
        return;
    for (const int job : jobs_)
        cancel(job);
}

// On a connection of its own: the other may be within a document.
void SentJobs::cancel(int job) const
{
    try {
        const PrintServer server;
        // Also when a signal has come.
        libcups().setTimeout(server.connection(), kCancelSeconds, nullptr, nullptr);
        libcups().cancelJob(server.connection(), queue_.c_str(), job, 0);
    } catch (...) {  // NOLINT(bugprone-empty-catch): the server has gone, and with it what was held
    }
}

int SentJobs::begin(const std::string &title, std::vector<JobOption> options, const std::string &format)
{
    bool hold = false;
    for (JobOption &option : options)
        if (sameName(option.name, kHold) && sameName(option.value, "no-hold")) {
            option.value = "indefinite";
            hold = true;
        }
    int count = 0;
    cups_option_t *list = nullptr;
    for (const JobOption &option : options)
        count = libcups().addOption(option.name.c_str(), option.value.c_str(), count, &list);
    const int job = libcups().createJob(server_.connection(), queue_.c_str(), title.c_str(), count, list);
    libcups().freeOptions(count, list);
    if (job <= 0)
        refuse(queue_ + " takes no job");
    jobs_.push_back(job);
    if (hold)
        held_.push_back(job);
    if (libcups().startDocument(server_.connection(), queue_.c_str(), job, title.c_str(), format.c_str(), 1) !=
        HTTP_STATUS_CONTINUE)
        refuse(queue_ + " takes no " + format);
    return job;
}

void SentJobs::write(const void *bytes, std::size_t size)
{
    io::Interruption::check();
    if (libcups().writeRequestData(server_.connection(), static_cast<const char *>(bytes), size) !=
        HTTP_STATUS_CONTINUE)
        refuse("the print server stopped taking job " + std::to_string(jobs_.back()));
}

void SentJobs::end()
{
    if (libcups().finishDocument(server_.connection(), queue_.c_str()) > IPP_STATUS_OK_CONFLICTING)
        refuse("the print server did not take job " + std::to_string(jobs_.back()));
}

void SentJobs::release()
{
    io::Interruption::check();
    for (const int job : held_) {
        ipp_t *request = server_.request(IPP_OP_RELEASE_JOB, queue_);
        libcups().addInteger(request, IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", job);
        server_.send(request, "/jobs/");
    }
    released_ = true;
}

}  // namespace riders::printing
