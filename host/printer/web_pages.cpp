#include "printer/web_pages.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <memory>
#include <set>

#include "io/bytes.h"
#include "io/refusal.h"
#include "looking/tiles/tile_on_demand.h"
#include "printer/driver.h"
#include "printer/web/pages.h"

namespace fs = std::filesystem;

namespace riders::printer {
namespace {

constexpr std::size_t kMostJobsShown = 500;

bool send(pappl_client_t *client, http_status_t status, const std::string &bytes, const char *type = "text/html")
{
    if (!papplClientRespond(client, status, nullptr, type, 0, bytes.size()))
        return false;
    http_t *const http = papplClientGetHTTP(client);
    return httpWrite2(http, bytes.data(), bytes.size()) >= 0 && httpFlushWrite(http) >= 0;
}

// What a client sends: fields of a form, or the words after the question mark.
class Fields {
public:
    explicit Fields(pappl_client_t *client) : count_(papplClientGetForm(client, &fields_)) {}
    ~Fields() { cupsFreeOptions(count_, fields_); }
    Fields(const Fields &) = delete;
    Fields &operator=(const Fields &) = delete;

    std::string get(const char *name) const
    {
        const char *const value = cupsGetOption(name, count_, fields_);
        return value == nullptr ? "" : value;
    }
    bool areFromOurPage(pappl_client_t *client) { return papplClientIsValidForm(client, count_, fields_); }

private:
    cups_option_t *fields_ = nullptr;
    int count_;
};

bool showJobs(pappl_client_t *client, void *line)
{
    if (!papplClientHTMLAuthorize(client))
        return true;
    std::vector<JobRecord> records = static_cast<JobLine *>(line)->store().all();
    std::sort(records.begin(), records.end(), [](const JobRecord &one, const JobRecord &other) {
        return std::pair(one.accepted, one.key.number) > std::pair(other.accepted, other.key.number);
    });
    if (records.size() > kMostJobsShown)
        records.resize(kMostJobsShown);
    return send(client, HTTP_STATUS_OK, jobsPage(records));
}

const char *typeOf(const fs::path &file)
{
    const std::string ending = file.extension();
    if (ending == ".tif")
        return "image/tiff";
    if (ending == ".png")
        return "image/png";
    return ending == ".html" ? "text/html" : "application/octet-stream";
}

// JOB/FILE of the client's path, which is /films/JOB/FILE.
std::string jobAndFileAsked(pappl_client_t *client)
{
    const std::string path = papplClientGetURI(client);
    return path.substr(std::min(std::string(kJobsPath).size() + 1, path.size()));
}

std::string jobAsked(pappl_client_t *client)
{
    const std::string path = jobAndFileAsked(client);
    return path.substr(0, path.find('/'));
}

// The file in a job's folder of films that the client's path names. Only paths that were added to the server come
// here.
fs::path fileAsked(pappl_client_t *client, const JobLine &line)
{
    const std::string path = jobAndFileAsked(client);
    const std::size_t slash = std::min(path.find('/'), path.size());
    const auto record = line.store().find(keyFromText(path.substr(0, slash)));
    if (!record || record->films.empty() || path.find("..") != path.npos || slash + 1 >= path.size())
        return {};
    return fs::path(record->films) / path.substr(slash + 1);
}

// Calls it, and shows why it was refused, if it was.
template <class Action>
bool orRefuse(pappl_client_t *client, Action action)
{
    try {
        return action();
    } catch (const std::exception &error) {
        return send(client, HTTP_STATUS_BAD_REQUEST, refusalPage(error.what()));
    }
}

// The page that zooms, which gets its tiles not as files beside it, but made when it asks for them.
bool sendLoupe(pappl_client_t *client, const fs::path &file, const std::string &job)
{
    return orRefuse(client, [&] {
        std::string page = io::contentsOf(file);
        const std::string files = "\"tiles\": \"loupe/\"";
        const std::size_t at = page.find(files);
        if (at != page.npos)
            page.replace(at, files.size(), "\"tiles\": \"" + std::string(kTilePath) + "?job=" + job + "&tile=\"");
        return send(client, HTTP_STATUS_OK, page);
    });
}

bool sendTile(pappl_client_t *client, void *line)
{
    if (!papplClientHTMLAuthorize(client))
        return true;
    const Fields fields(client);
    const auto record = static_cast<JobLine *>(line)->store().find(keyFromText(fields.get("job")));
    const auto asked = looking::tileFromText(fields.get("tile"));
    try {
        if (record && !record->films.empty() && asked)
            return send(client, HTTP_STATUS_OK,
                        looking::tileOnDemand(fs::path(record->films) / "look/loupe", *asked), "image/png");
    } catch (const io::Refusal &) {  // there is none
    }
    return papplClientRespond(client, HTTP_STATUS_NOT_FOUND, nullptr, nullptr, 0, 0);
}

bool sendFile(pappl_client_t *client, void *line)
{
    if (!papplClientHTMLAuthorize(client))
        return true;
    const fs::path path = fileAsked(client, *static_cast<JobLine *>(line));
    if (path.filename() == "loupe.html" && path.parent_path().filename() == "look")
        return sendLoupe(client, path, jobAsked(client));
    std::ifstream file(path, std::ios::binary);
    std::error_code none;
    const std::uintmax_t size = fs::file_size(path, none);
    if (path.empty() || !file || none)
        return papplClientRespond(client, HTTP_STATUS_NOT_FOUND, nullptr, nullptr, 0, 0);
    if (!papplClientRespond(client, HTTP_STATUS_OK, nullptr, typeOf(path), 0, size))
        return false;
    http_t *const http = papplClientGetHTTP(client);
    std::array<char, 65536> bytes{};
    while (file.read(bytes.data(), bytes.size()), file.gcount() > 0)
        if (httpWrite2(http, bytes.data(), static_cast<std::size_t>(file.gcount())) < 0)
            return false;
    return httpFlushWrite(http) >= 0;
}

// Makes the files of a job's films known to the server, which finds no path that it does not know.
void addFiles(JobLine &line, const JobRecord &record)
{
    static std::mutex mutex;
    static std::set<std::string> added;
    const std::lock_guard lock(mutex);
    for (fs::recursive_directory_iterator entry(record.films), end; entry != end; ++entry) {
        if (entry->is_directory() && entry->path().filename() == "loupe") {  // tiles
            entry.disable_recursion_pending();
            continue;
        }
        const std::string name = entry->path().lexically_relative(record.films);
        const auto [path, isNew] = added.insert(std::string(kJobsPath) + "/" + record.key.text() + "/" + name);
        if (entry->is_regular_file() && isNew)
            papplSystemAddResourceCallback(line.system(), path->c_str(), typeOf(entry->path()), sendFile, &line);
    }
}

JobOnPage onPage(pappl_client_t *client, JobLine &line, const JobRecord &record)
{
    std::array<char, 128> session{};
    JobOnPage job{.record = record,
                  .queue = line.queues().find(record.key.queue),
                  .films = {},
                  .session = papplClientGetCSRFToken(client, session.data(), session.size())};
    std::error_code none;
    if (record.films.empty() || !fs::is_directory(record.films, none))
        return job;
    for (const fs::directory_entry &entry : fs::directory_iterator(record.films))
        if (entry.is_regular_file())
            job.films.push_back({entry.path().filename(), entry.file_size()});
    std::sort(job.films.begin(), job.films.end(),
              [](const FilmFile &one, const FilmFile &other) { return one.name < other.name; });
    job.look = fs::exists(fs::path(record.films) / "look/proof.html");
    addFiles(line, record);
    return job;
}

bool showJob(pappl_client_t *client, void *data)
{
    if (!papplClientHTMLAuthorize(client))
        return true;
    return orRefuse(client, [&] {
        JobLine &line = *static_cast<JobLine *>(data);
        const auto record = line.store().find(keyFromText(Fields(client).get("job")));
        if (!record)
            throw io::Refusal("There is no such job any more.");
        return send(client, HTTP_STATUS_OK, jobPage(onPage(client, line, *record)));
    });
}

Choices choicesIn(const Fields &fields)
{
    Choices choices;
    for (const char *name : {"screens", "frequency", "angle", "shape", "dpi", "marks"})
        choices.set(name, fields.get(name), ChosenBy::job);
    return choices;
}

void cancelJob(JobLine &line, const JobKey &key)
{
    pappl_printer_t *const printer =
        papplSystemFindPrinter(line.system(), ("/ipp/print/" + key.queue).c_str(), 0, nullptr);
    pappl_job_t *const job = printer == nullptr ? nullptr : papplPrinterFindJob(printer, key.number);
    if (job == nullptr)
        throw io::Refusal("There is no such job any more.");
    papplJobCancel(job);
    line.settle();
}

// The job to show then.
JobKey act(JobLine &line, const Fields &fields, const JobRecord &record)
{
    const std::string action = fields.get("action");
    if (action == "release")
        line.release(record.key);
    else if (action == "cancel")
        cancelJob(line, record.key);
    else if (action == "again")
        return line.again(record.key, record.choices);
    else if (action == "change")
        return line.again(record.key, choicesIn(fields));
    else
        throw io::Refusal("There is nothing called " + action + " to do.");
    return record.key;
}

void refuseForeign(pappl_client_t *client, Fields &fields)
{
    if (papplClientGetMethod(client) != HTTP_STATE_POST || !fields.areFromOurPage(client))
        throw io::Refusal("The form is too old, or not from this printer; go back and load the page again.");
}

bool doAction(pappl_client_t *client, void *data)
{
    if (!papplClientHTMLAuthorize(client))
        return true;
    return orRefuse(client, [&] {
        JobLine &line = *static_cast<JobLine *>(data);
        Fields fields(client);
        refuseForeign(client, fields);
        const auto record = line.store().find(keyFromText(fields.get("job")));
        if (!record)
            throw io::Refusal("There is no such job any more.");
        const JobKey shown = act(line, fields, *record);
        return papplClientRespondRedirect(client, HTTP_STATUS_SEE_OTHER,
                                          (std::string(kJobPath) + "?job=" + shown.text()).c_str());
    });
}

bool showQueues(pappl_client_t *client, void *data)
{
    if (!papplClientHTMLAuthorize(client))
        return true;
    std::array<char, 128> session{};
    papplClientGetCSRFToken(client, session.data(), session.size());
    return send(client, HTTP_STATUS_OK, queuesPage(static_cast<JobLine *>(data)->queues().all(), session.data()));
}

// As on the command line, but that no files can be named here.
Queue queueIn(const Fields &fields)
{
    Queue queue{.name = fields.get("name"), .choices = choicesIn(fields), .printer = fields.get("printer")};
    queue.hold = fields.get("hold") == "yes";
    checkQueue(queue);
    return queue;
}

bool makeQueue(pappl_client_t *client, void *data)
{
    if (!papplClientHTMLAuthorize(client))
        return true;
    return orRefuse(client, [&] {
        JobLine &line = *static_cast<JobLine *>(data);
        Fields fields(client);
        refuseForeign(client, fields);
        line.makeQueue(queueIn(fields), [&](const Queue &queue) {
            servePrinter(line.system(), queue, !line.request().listen.empty());
        });
        return papplClientRespondRedirect(client, HTTP_STATUS_SEE_OTHER, kQueuesPath);
    });
}

}  // namespace

void addPages(pappl_system_t *system, JobLine &line)
{
    papplSystemAddResourceCallback(system, kJobsPath, "text/html", showJobs, &line);
    papplSystemAddResourceCallback(system, kJobPath, "text/html", showJob, &line);
    papplSystemAddResourceCallback(system, kActionPath, "text/html", doAction, &line);
    papplSystemAddResourceCallback(system, kQueuesPath, "text/html", showQueues, &line);
    papplSystemAddResourceCallback(system, kMakeQueuePath, "text/html", makeQueue, &line);
    papplSystemAddResourceCallback(system, kTilePath, "image/png", sendTile, &line);
    papplSystemAddLink(system, "Jobs and films", kJobsPath, PAPPL_LOPTIONS_NAVIGATION);
}

}  // namespace riders::printer
