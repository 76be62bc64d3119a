#include "commands/print_words.h"

#include "commands/film_words.h"
#include "io/json.h"
#include "io/plain_text.h"

namespace riders::commands {
namespace {

using printing::JobSent;
using printing::PrintPlan;
using printing::QueueKind;

std::string kindInWords(const printing::Queue &queue)
{
    switch (queue.kind) {
    case QueueKind::rasterDriver:
        return "CUPS raster for the driver " + queue.driver;
    case QueueKind::pwg:
        return "PWG raster, one bit a pixel";
    case QueueKind::postScript:
        break;
    }
    return "PostScript, an image of one bit a pixel";
}

std::string platesOf(const JobSent &job)
{
    std::string names;
    for (const std::string &plate : job.plates)
        names += (names.empty() ? "" : ", ") + io::plainText(plate);
    return names;
}

std::string copiesOf(const PrintPlan &plan)
{
    return plan.copies == 1 ? "" : ", " + std::to_string(plan.copies) + " of each";
}

std::string lineOf(const PrintPlan &plan, const JobSent &job)
{
    const std::string what = "page " + std::to_string(job.page) + " (" + platesOf(job) + ") on " +
                             io::plainText(job.on.choice) + copiesOf(plan) + "\n";
    if (plan.dryRun)
        return "would print " + what;
    return plan.queue.name + "-" + std::to_string(job.number) + ": " + what;
}

std::string inJson(const JobSent &job, const PrintPlan &plan)
{
    std::vector<std::string> plates;
    for (const std::string &plate : job.plates)
        plates.push_back(io::jsonText(plate));
    return io::jsonObject({{"jobId", plan.dryRun ? "null" : std::to_string(job.number)},
                           {"title", io::jsonText(job.title)},
                           {"page", std::to_string(job.page)},
                           {"plates", io::jsonArray(plates)},
                           {"media", io::jsonText(job.on.choice)},
                           {"copies", std::to_string(plan.copies)}});
}

}  // namespace

std::string printInWords(const PrintPlan &plan, const std::vector<JobSent> &sent)
{
    std::string lines;
    if (plan.dryRun) {
        lines = io::plainText(plan.queue.name + " (" + plan.queue.model + ")" +
                              (plan.doubts.empty() || plan.queue.isGutenprint() ? " keeps each pixel"
                                                                                : " may keep each pixel") +
                              "; it would be sent " + kindInWords(plan.queue) + " (" + plan.format + "), " +
                              printing::inWords(plan.resolution.dpi) + " dpi") +
                "\n";
        for (const printing::JobOption &option : plan.options)
            lines += "  " + io::plainText(option.name + "=" + option.value) + "\n";
    }
    for (const JobSent &job : sent)
        lines += lineOf(plan, job);
    return lines;
}

std::string printInJson(const PrintPlan &plan, const std::vector<JobSent> &sent, const film::FilmsMade &made)
{
    std::vector<std::string> jobs, doubts, options;
    for (const JobSent &job : sent)
        jobs.push_back(inJson(job, plan));
    for (const std::string &doubt : plan.doubts)
        doubts.push_back(io::jsonText(doubt));
    for (const printing::JobOption &option : plan.options)
        options.push_back(
            io::jsonObject({{"name", io::jsonText(option.name)}, {"value", io::jsonText(option.value)}}));
    const screening::Resolution &dpi = plan.resolution.dpi;
    const std::string printer =
        io::jsonObject({{"queue", io::jsonText(plan.queue.name)},
                        {"model", io::jsonText(plan.queue.model)},
                        {"format", io::jsonText(plan.format)},
                        {"dpi", io::jsonArray({io::jsonNumber(dpi.across), io::jsonNumber(dpi.down)})},
                        {"dryRun", plan.dryRun ? "true" : "false"},
                        {"doubts", io::jsonArray(doubts)},
                        {"options", io::jsonArray(options)}});
    return io::jsonObject({{"printer", printer},
                           {"jobs", io::jsonArray(jobs)},
                           {"films", io::jsonArray(filmsAsJson(made))}}) +
           "\n";
}

std::string doubtsInWords(const PrintPlan &plan, const std::string &command)
{
    std::string lines;
    for (const std::string &doubt : plan.doubts)
        lines += command + ": " + io::plainText(plan.queue.name + ": " + doubt) + "\n";
    return lines;
}

}  // namespace riders::commands
