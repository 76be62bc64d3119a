#include "commands/show_command.h"

#include <memory>

#include "apply/job_structure.h"
#include "apply/riders_file.h"
#include "commands/choices_in_json.h"
#include "commands/standard_output.h"
#include "io/json.h"
#include "io/refusal.h"
#include "reading/choices_in.h"
#include "reading/choices_in_words.h"
#include "reading/riders_in_job.h"

namespace riders::commands {
namespace {

using reading::Choices;
using reading::RidersInJob;

struct ShowRequest {
    std::string file;
    bool json = false;
};

// Of a riders file as much as one may have.
std::string startOf(const io::OpenFile &in)
{
    std::string start(reading::kStartOfJob, '\0');
    start.resize(io::readFully(in, start.data(), start.size()));
    if (!apply::isRidersFile(start))
        return start;
    const std::size_t read = start.size();
    start.resize(apply::kLongestRiders + 1);
    start.resize(read + io::readFully(in, start.data() + read, start.size() - read));
    return start;
}

std::string problemOf(const Choices &choices)
{
    return choices.whole ? "" : "is cut off: what it chose after that is lost; make it again";
}

std::string showRiders(const ShowRequest &request, const std::string &name, const std::string &riders)
{
    const Choices choices = reading::choicesIn(riders);
    const std::string failed =
        printLines(request.json ? io::jsonObject({{"file", io::jsonText(name)},
                                                  {"kind", io::jsonText("riders")},
                                                  {"riders", io::jsonArray({choicesInJson(choices, {})})}}) +
                                      "\n"
                                : name + ": a riders file\n" + reading::choicesInWords(choices));
    const std::string problem = problemOf(choices);
    return failed.empty() && !problem.empty() ? name + ": " + problem : failed;
}

// What apply would refuse and strip take out.
bool isJobsOwn(const RidersInJob &riders)
{
    return riders.marked && riders.document.empty() && riders.offset < apply::kJobHeadLimit;
}

std::string whereInWords(const RidersInJob &riders)
{
    std::string words = "line " + std::to_string(riders.line);
    if (!riders.document.empty())
        words += ", in the embedded document " + riders.document;
    if (!riders.marked)
        return words + ", without the lines around it that riders strip needs";
    if (riders.damaged)
        return words + ", damaged: riders strip takes nothing out";
    return isJobsOwn(riders) ? words : words + ", which riders strip leaves";
}

std::string inJson(const RidersInJob &riders, const Choices &choices)
{
    return choicesInJson(choices, {{"line", std::to_string(riders.line)},
                                   {"offset", std::to_string(riders.offset)},
                                   {"bytes", std::to_string(riders.riders.size())},
                                   {"document", riders.document.empty() ? "null" : io::jsonText(riders.document)},
                                   {"marked", riders.marked ? "true" : "false"},
                                   {"damaged", riders.damaged ? "true" : "false"},
                                   {"canBeStripped", isJobsOwn(riders) && !riders.damaged ? "true" : "false"}});
}

std::string showJob(const ShowRequest &request, const io::OpenFile &in, const std::string &start)
{
    std::string words, problem;
    std::vector<std::string> values;
    for (const RidersInJob &found : reading::ridersInJob(in, start)) {
        const Choices choices = reading::choicesIn(found.riders);
        values.push_back(inJson(found, choices));
        words += in.name() + ": a riders file in " + whereInWords(found) + "\n" + reading::choicesInWords(choices);
        if (problem.empty() && (found.damaged || !choices.whole))
            problem = in.name() + ": the riders file in line " + std::to_string(found.line) + " " +
                      (choices.whole ? "is damaged: it was changed after it was added" : problemOf(choices));
    }
    if (words.empty())
        words = in.name() + ": a job without a riders file\n";
    const std::string failed = printLines(request.json ? io::jsonObject({{"file", io::jsonText(in.name())},
                                                                         {"kind", io::jsonText("job")},
                                                                         {"riders", io::jsonArray(values)}}) +
                                                             "\n"
                                                       : words);
    return failed.empty() ? problem : failed;
}

bool isJob(const std::string &start)
{
    const std::size_t first = start.find_first_not_of("\x04 \t\r\n");
    return start.starts_with("\xC5\xD0\xD3\xC6") ||
           (first != start.npos &&
            (start.compare(first, 2, "%!") == 0 || start.compare(first, 9, "\x1B%-12345X") == 0));
}

std::string run(const ShowRequest &request)
{
    const io::OpenFile in = io::openInput(request.file == "-" ? "" : request.file);
    const std::string start = startOf(in);
    if (apply::isRidersAlone(start))
        return showRiders(request, in.name(), start);
    if (isJob(start) && start.find("%!KT1_Spot") != 0)
        return showJob(request, in, start);
    if (start.starts_with("%PDF-"))
        throw io::Refusal(in.name() + ": is a PDF, in which there are no riders files");
    throw io::Refusal(in.name() + ": is neither a riders file nor a PostScript job" +
                      (start.starts_with("%!KT1_Spot")
                           ? "; riders shapes shows what the dots of a spot function file are like"
                           : ""));
}

}  // namespace

void addShow(CLI::App &app, Chosen &chosen)
{
    const auto request = std::make_shared<ShowRequest>();
    CLI::App *command =
        app.add_subcommand("show", "Say what a riders file chooses, or which riders files a job has");
    command->add_option("file", request->file, "A riders file or a PostScript job; - for standard input")
        ->required()
        ->type_name("FILE");
    command->add_flag("--json", request->json, "For programs");
    command->callback([request, &chosen] {
        chosen.name = "riders show";
        chosen.run = [request] { return run(*request); };
    });
}

}  // namespace riders::commands
