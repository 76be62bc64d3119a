#include "commands/apply_commands.h"

#include <iostream>
#include <memory>

#include "apply/apply.h"
#include "commands/standard_input.h"
#include "io/plain_text.h"
#include "io/refusal.h"

namespace riders::commands {
namespace {

template <class Request>
struct FilesAsked {
    Request request;
    bool verbose = false;
};

template <class Request>
void addFiles(CLI::App &command, FilesAsked<Request> &asked)
{
    Request &request = asked.request;
    command.add_option("job", request.job, "The job; standard input when left out, or -")->type_name("JOB");
    command.add_option("-o,--output", request.out, "Where to; standard output when left out, or -")
        ->type_name("OUT");
    command.add_flag("--force", request.force, "Replace a file that is no PostScript job, too");
    command.add_flag("-v,--verbose", asked.verbose, "Say where the riders file is in the job");
}

template <class Request>
void openStandardFiles(Request &request)
{
    request.job = standardFileOr(request.job);
    request.out = standardFileOr(request.out);
}

// On standard error: the job may go to standard output.
void say(const std::string &name, const std::string &done, const apply::Fragment &fragment)
{
    std::cerr << name << ": " << io::plainText(done) << " line " << fragment.line << ", " << fragment.bytes
              << " bytes with the lines around it\n";
}

std::string applyTo(FilesAsked<apply::ApplyRequest> &asked, const std::string &name)
{
    apply::ApplyRequest &request = asked.request;
    openStandardFiles(request);
    const bool fromInput = request.riders == kStandardFile;
    if (fromInput && request.job.empty())
        throw io::Refusal("the riders file and the job cannot both come from standard input; name one of them");
    const std::string riders = fromInput ? "standard input" : request.riders.string();
    request.riders = standardFileOr(request.riders);
    const apply::Fragment added = apply::applyRiders(request);
    if (asked.verbose)
        say(name, riders + " is added in", added);
    return {};
}

std::string stripFrom(FilesAsked<apply::StripRequest> &asked, const std::string &name)
{
    openStandardFiles(asked.request);
    const apply::Fragment taken = apply::stripRiders(asked.request);
    if (asked.verbose)
        say(name, "the riders file is taken out of", taken);
    return {};
}

}  // namespace

void addApply(CLI::App &app, Chosen &chosen)
{
    const auto asked = std::make_shared<FilesAsked<apply::ApplyRequest>>();
    CLI::App *command = app.add_subcommand("apply", "Add a riders file to a PostScript job");
    command->add_option("riders", asked->request.riders, "The riders file; - for standard input")
        ->required()
        ->type_name("RIDERS");
    addFiles(*command, *asked);
    command->callback([asked, &chosen] {
        chosen.name = "riders apply";
        chosen.run = [asked, &chosen] { return applyTo(*asked, chosen.name); };
    });
}

void addStrip(CLI::App &app, Chosen &chosen)
{
    const auto asked = std::make_shared<FilesAsked<apply::StripRequest>>();
    CLI::App *command = app.add_subcommand("strip", "Take a riders file out of a job again");
    addFiles(*command, *asked);
    command->callback([asked, &chosen] {
        chosen.name = "riders strip";
        chosen.run = [asked, &chosen] { return stripFrom(*asked, chosen.name); };
    });
}

}  // namespace riders::commands
