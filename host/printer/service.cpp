#include "printer/service.h"

#include <pappl/pappl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <ctime>
#include <iostream>
#include <memory>
#include <thread>

#include "io/file_limit.h"
#include "io/refusal.h"
#include "io/remove_tree.h"
#include "io/sync.h"
#include "printer/authorization.h"
#include "printer/driver.h"
#include "printer/filming/sandbox.h"
#include "printer/job_attributes.h"
#include "printer/hooks.h"
#include "printer/web_pages.h"

namespace fs = std::filesystem;

namespace riders::printer {
namespace {

struct DeleteSystem {
    void operator()(pappl_system_t *system) const { papplSystemDelete(system); }
};
using System = std::unique_ptr<pappl_system_t, DeleteSystem>;

sigset_t ending()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
}

// PAPPL would wait for all jobs to be made. Here they are kept, and made by the next process.
void endOnSignal(JobLine &line)
{
    const sigset_t signals = ending();
    int signal = 0;
    sigwait(&signals, &signal);
    line.stop();
    _exit(0);
}

void prepareFolders(const ServiceRequest &request)
{
    for (const fs::path &folder : {request.state, request.state / "cache", request.state / "ssl"}) {
        io::makeFolders(folder);
        if (chmod(folder.c_str(), 0700) != 0)
            io::refuseErrno(folder, errno);
    }
    io::makeFolders(request.films);
}

// What is there belongs to a process that is dead: whatever it had received whole is kept elsewhere.
void emptySpool(const fs::path &spool)
{
    io::removeTree(spool);
    if (mkdir(spool.c_str(), 0700) != 0)
        io::refuseErrno(spool, errno);
}

bool findSandbox(const ServiceRequest &request)
{
    if (request.sandboxes == Sandboxes::never)
        return false;
    const std::string why = whySandboxesFail(request.state / "cache");
    if (why.empty())
        return true;
    if (request.sandboxes == Sandboxes::always)
        throw io::Refusal("no sandbox can be made for jobs: " + why);
    std::cerr << "riders printer: jobs run without a sandbox, protected by the interpreter only: " + why + "\n";
    return false;
}

void noteEvent(pappl_system_t *, pappl_printer_t *, pappl_job_t *job, pappl_event_t event, void *line)
{
    if (event != PAPPL_EVENT_JOB_COMPLETED || job == nullptr)
        return;
    if (papplJobIsCanceled(job) || papplJobGetState(job) == IPP_JSTATE_CANCELED)
        static_cast<JobLine *>(line)->gone(keyOf(job), JobState::canceled);
    else if (papplJobGetState(job) == IPP_JSTATE_ABORTED)
        static_cast<JobLine *>(line)->gone(keyOf(job), JobState::failed);
}

bool beginLine(pappl_system_t *, void *line)
{
    static_cast<JobLine *>(line)->begin();
    return false;
}

std::string hostName(pappl_system_t *system)
{
    std::array<char, 256> name{};
    return papplSystemGetHostName(system, name.data(), name.size()) == nullptr ? "localhost" : name.data();
}

System systemFor(const ServiceRequest &request)
{
    const pappl_soptions_t options = PAPPL_SOPTIONS_MULTI_QUEUE | PAPPL_SOPTIONS_WEB_INTERFACE |
                                     (request.listen.empty() ? PAPPL_SOPTIONS_NO_TLS : PAPPL_SOPTIONS_WEB_TLS);
    System system(papplSystemCreate(options, "Riders", request.port, "_print", (request.state / "spool").c_str(),
                                    "-", request.verbose ? PAPPL_LOGLEVEL_INFO : PAPPL_LOGLEVEL_ERROR,
                                    request.accounts.empty() ? nullptr : request.accounts.c_str(), false));
    if (!system)
        throw io::Refusal("the server cannot be set up");
    if (request.listen.empty())
        papplSystemSetDNSSDName(system.get(), nullptr);  // nobody else can print on it
    else
        cupsSetServerCredentials((request.state / "ssl").c_str(), hostName(system.get()).c_str(), 1);
    askForPassword(system.get(), request);
    return system;
}

void listen(pappl_system_t *system, const ServiceRequest &request)
{
    const std::string port = "port " + std::to_string(request.port);
    const bool all = request.listen == "*";
    if (!all && !papplSystemAddListeners(system, "localhost"))
        throw io::Refusal(port + " of this machine cannot be had; is another printer there?");
    if (!request.listen.empty() && !papplSystemAddListeners(system, all ? nullptr : request.listen.c_str()))
        throw io::Refusal(port + " of " + request.listen + " cannot be had");
}

void sayAddresses(const ServiceRequest &request, const QueueList &queues)
{
    const std::string port = std::to_string(request.port);
    for (const Queue *const queue : queues.all())
        std::cout << "ipp://localhost:" << port << "/ipp/print/" << queue->name << '\n';
    std::cout << "http://localhost:" << port << "/films\n" << std::flush;
}

}  // namespace

void serve(const ServiceRequest &request)
{
    umask(077);
    prepareFolders(request);
    JobLine line(request, findSandbox(request));
    emptySpool(request.state / "spool");
    io::limitFilesTo(request.mostMegabytes);  // a document that is longer is refused
    const sigset_t signals = ending();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    const System system = systemFor(request);
    line.serve(system.get());
    setDriver(system.get());
    for (const Queue *const queue : line.queues().all())
        servePrinter(system.get(), *queue, !request.listen.empty());
    listen(system.get(), request);
    papplSystemSetEventCallback(system.get(), noteEvent, &line);
    addPages(system.get(), line);
    line.takeUp();
    gJobLine = &line;
    papplSystemAddTimerCallback(system.get(), std::time(nullptr), 0, beginLine, &line);
    std::thread(endOnSignal, std::ref(line)).detach();
    sayAddresses(request, line.queues());
    papplSystemRun(system.get());
    line.stop();
    _exit(0);
}

}  // namespace riders::printer
