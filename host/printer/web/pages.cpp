#include "printer/web/pages.h"

#include <array>
#include <charconv>
#include <ctime>

#include "html/template.h"
#include "html/url.h"
#include "io/decimal.h"

namespace riders::printer {

extern const std::string_view kPageFrame, kPageStyle, kPageParts, kRefresh;

namespace {

using html::escaped;

std::string page(const std::string &title, const std::string &body, bool changes)
{
    return html::filled(
        kPageFrame,
        {{"title", escaped(title)},
         {"refresh", changes ? html::part(kPageParts, "refresh", {{"script", std::string(kRefresh)}}) : ""},
         {"style", std::string(kPageStyle)},
         {"body", body}});
}

std::string timeText(std::time_t time)
{
    std::array<char, 32> text{};
    std::tm parts = {};
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", localtime_r(&time, &parts));
    return text.data();
}

std::string stateText(const JobRecord &record)
{
    switch (record.state) {
    case JobState::accepted:
        return "waiting or in work";
    case JobState::held:
        return "made, waiting for release";
    default:
        return inWords(record.state);
    }
}

std::string rowOf(const JobRecord &record)
{
    return html::part(kPageParts, "job-row",
                      {{"path", std::string(kJobPath) + "?job=" + html::urlOf(record.key.text())},
                       {"key", escaped(record.key.text())},
                       {"title", escaped(record.title)},
                       {"user", escaped(record.user)},
                       {"state", escaped(stateText(record))},
                       {"kind", inWords(record.state)},
                       {"time", timeText(record.accepted)}});
}

std::string filmRows(const JobOnPage &job)
{
    std::string rows;
    for (const FilmFile &film : job.films)
        rows += html::part(kPageParts, "film-row",
                           {{"path", pathOf(job.record.key, film.name)},
                            {"name", escaped(film.name)},
                            {"size", io::decimal(static_cast<double>(film.bytes) / 1024, 0)}});
    return rows.empty() ? html::part(kPageParts, "no-films") : html::part(kPageParts, "films", {{"rows", rows}});
}

std::string button(const JobOnPage &job, const char *action, const char *words)
{
    return html::part(kPageParts, "button",
                      {{"path", kActionPath},
                       {"session", escaped(job.session)},
                       {"job", escaped(job.record.key.text())},
                       {"action", action},
                       {"words", words}});
}

std::string buttons(const JobOnPage &job)
{
    std::string all;
    if (job.record.state == JobState::held)
        all += button(job, "release", "Release");
    if (job.record.state == JobState::accepted)
        all += button(job, "cancel", "Cancel");
    else
        all += button(job, "again", "Print again");
    return all;
}

// Where its films go, in words.
std::string endOf(const Queue &queue)
{
    if (queue.hold)
        return "held until they are released";
    return queue.printer.empty() ? "a folder" : "printed on " + queue.printer;
}

std::string changeForm(const JobOnPage &job)
{
    const Choices both = job.record.choices.over(job.queue.choices);
    const auto value = [&](const char *name) { return escaped(both.get(name)); };
    return html::part(kPageParts, "change",
                      {{"path", kActionPath},
                       {"session", escaped(job.session)},
                       {"job", escaped(job.record.key.text())},
                       {"screens", value("screens")},
                       {"frequency", value("frequency")},
                       {"angle", value("angle")},
                       {"shape", value("shape")},
                       {"dpi", value("dpi")},
                       {"marks", value("marks")}});
}

}  // namespace

std::string pathOf(const JobKey &key, const std::string &file)
{
    return std::string(kJobsPath) + "/" + html::urlOf(key.text()) + "/" + html::urlOf(file);
}

std::string jobsPage(const std::vector<JobRecord> &records)
{
    std::string rows;
    bool changes = false;
    for (const JobRecord &record : records) {
        rows += rowOf(record);
        changes |= record.state == JobState::accepted;
    }
    const std::string body =
        rows.empty() ? html::part(kPageParts, "no-jobs") : html::part(kPageParts, "jobs", {{"rows", rows}});
    return page("Films", body, changes);
}

std::string jobPage(const JobOnPage &job)
{
    const JobRecord &record = job.record;
    const std::string look =
        job.look ? html::part(kPageParts, "look", {{"path", pathOf(record.key, "look/proof.html")}}) : "";
    const std::string message =
        record.message.empty() ? "" : html::part(kPageParts, "message", {{"text", escaped(record.message)}});
    const std::string body = html::part(kPageParts, "job",
                                        {{"title", escaped(record.title)},
                                         {"key", escaped(record.key.text())},
                                         {"user", escaped(record.user)},
                                         {"state", escaped(stateText(record))},
                                         {"time", timeText(record.accepted)},
                                         {"choices", escaped(record.choices.over(job.queue.choices).inWords())},
                                         {"message", message},
                                         {"films", filmRows(job)},
                                         {"look", look},
                                         {"buttons", buttons(job)},
                                         {"change", changeForm(job)}});
    return page(record.title, body, record.state == JobState::accepted);
}

std::string queuesPage(const std::vector<const Queue *> &queues, const std::string &session)
{
    std::string rows;
    for (const Queue *const queue : queues)
        rows += html::part(kPageParts, "queue-row",
                           {{"name", escaped(queue->name)},
                            {"choices", escaped(queue->choices.inWords())},
                            {"end", escaped(endOf(*queue))}});
    return page("Queues",
                html::part(kPageParts, "queues",
                           {{"rows", rows}, {"path", kMakeQueuePath}, {"session", escaped(session)}}),
                false);
}

std::string refusalPage(const std::string &message)
{
    return page("Not done", html::part(kPageParts, "refusal", {{"text", escaped(message)}}), false);
}

JobKey keyFromText(std::string_view text)
{
    const std::size_t hyphen = text.rfind('-');
    if (hyphen == text.npos)
        return {};
    int number = 0;
    const auto [end, error] = std::from_chars(text.data() + hyphen + 1, text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number <= 0)
        return {};
    return {std::string(text.substr(0, hyphen)), number};
}

}  // namespace riders::printer
