#include "printer/troubled_run.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

#include "printer/own_service.h"
#include "support/local_port.h"

namespace fs = std::filesystem;

namespace printer_tests {
namespace {

const std::vector<std::string> kOptions = {"--queue", "films:dpi=150", "--sandbox", "never"};
constexpr int kMostSeconds = 20;  // more than any harness lets the printer live

template <class Condition>
void waitFor(Condition condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(kMostSeconds);
    while (!condition() && std::chrono::steady_clock::now() < end)
        usleep(5000);
}

std::string recordIn(const fs::path &folder)
{
    const fs::path record = folder / "record";
    return fs::exists(record) ? contentsOf(record) : "";
}

bool has(const std::string &record, const char *line)
{
    return record.find(std::string("\n") + line) != record.npos;
}

std::vector<fs::path> entriesOf(const fs::path &folder)
{
    std::vector<fs::path> entries;
    if (fs::exists(folder))
        entries.assign(fs::directory_iterator(folder), {});
    return entries;
}

const std::map<std::string, std::string> &rightFilms()
{
    static const auto films = filmsOf(kJob, "job", {"--dpi=150"});
    return films;
}

void noteWrongFilms(const fs::path &films, std::size_t made, std::vector<std::string> &wrong)
{
    const std::vector<fs::path> folders = entriesOf(films);
    for (const fs::path &entry : folders)
        if (entry.filename().native().starts_with("."))
            wrong.push_back(entry.filename().string() + " is left");
        else if (filmsIn(entry) != rightFilms())
            wrong.push_back("the films in " + entry.filename().string() + " are not right");
    if (folders.size() != made)
        wrong.push_back(std::to_string(made) + " jobs were made, and there are " + std::to_string(folders.size()) +
                        " folders");
}

}  // namespace

TroubledRun::TroubledRun() : client_(freeLocalPort())
{
    writeFile(folder_ / "job.ps", kJob);
    rightFilms();
}

std::vector<std::string> TroubledRun::command() const
{
    std::vector<std::string> command = {RIDERS_BINARY_DIR "/riders-printer",
                                        "--port",
                                        std::to_string(client_.port()),
                                        "--state",
                                        folder_ / "state",
                                        "--films",
                                        folder_ / "films"};
    command.insert(command.end(), kOptions.begin(), kOptions.end());
    return command;
}

void TroubledRun::with(const std::function<void()> &run)
{
    std::atomic<bool> ended = false;
    std::thread printer([&] {
        run();
        ended = true;
    });
    const auto goesOn = [&] { return !ended; };
    send(goesOn);
    endPrinter(goesOn);
    printer.join();
}

void TroubledRun::send(const std::function<bool()> &goesOn)
{
    waitFor([&] { return !goesOn() || acceptsAtLocalPort(client_.port()); });
    if (!goesOn())
        return;
    answer_ = client_.send(folder_ / "job.ps", "job");
    if (!accepted())
        return;
    const fs::path kept = folder_ / "state/jobs" / ("films-" + std::to_string(answer_.job));
    const auto begin = std::chrono::steady_clock::now();
    waitFor([&] {
        const std::string record = recordIn(kept);
        if (!goesOn() || has(record, "state=made") || has(record, "state=failed"))
            return true;
        // It may be unable to write that down.
        return std::chrono::steady_clock::now() - begin > std::chrono::seconds(3) &&
               client_.stateOf(answer_.job) > IPP_JSTATE_PROCESSING;
    });
}

void TroubledRun::endPrinter(const std::function<bool()> &goesOn) const
{
    pid_t printer = 0;
    waitFor([&] { return !goesOn() || (printer = printerIn(folder())) > 0; });
    if (printer > 0)
        kill(printer, SIGTERM);
    waitFor([&] { return !goesOn(); });
    if (goesOn() && printer > 0)
        kill(printer, SIGKILL);
}

std::vector<std::string> TroubledRun::wrongs(bool mayFail) const
{
    OwnService next(folder(), kOptions);
    const fs::path jobs = folder() / "state/jobs";
    std::vector<std::string> wrong;
    const auto isMade = [&](const fs::path &job) { return has(recordIn(job), "state=made"); };
    next.waitUntil([&] {
        const std::vector<fs::path> all = entriesOf(jobs);
        return std::none_of(all.begin(), all.end(),
                            [](const fs::path &job) { return has(recordIn(job), "state=accepted"); });
    });
    const Answer another = next.send(folder() / "job.ps", "job");
    if (another.status != IPP_STATUS_OK)
        wrong.push_back("the next job is refused: " + another.message);
    else
        next.waitFor(another.job, IPP_JSTATE_COMPLETED);
    const int status = next.end(SIGTERM);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        wrong.push_back("the next printer does not end as it should");
    std::size_t made = 0;
    for (const fs::path &job : entriesOf(jobs)) {
        if (isMade(job))
            ++made;
        else if (const std::string record = recordIn(job);
                 !mayFail || !has(record, "state=failed") || !has(record, "message="))
            wrong.push_back(job.filename().string() + " was not made: " + record);
    }
    if (accepted() && !fs::exists(jobs / ("films-" + std::to_string(answer_.job))))
        wrong.push_back("the job that was accepted is lost");
    noteWrongFilms(folder() / "films", made, wrong);
    return wrong;
}

}  // namespace printer_tests
