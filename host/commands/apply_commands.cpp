#include "commands/apply_commands.h"

#include <memory>

#include "apply/apply.h"

namespace riders::commands {

void addApply(CLI::App &app, Chosen &chosen)
{
    const auto request = std::make_shared<apply::ApplyRequest>();
    CLI::App *command = app.add_subcommand("apply", "Add a riders file to a PostScript job");
    command->add_option("riders", request->riders, "The riders file")->required()->type_name("RIDERS");
    command->add_option("job", request->job, "The job; standard input when left out")->type_name("JOB");
    command->add_option("-o,--output", request->out, "Where to; standard output when left out")->type_name("OUT");
    command->add_flag("--force", request->force, "Replace a file that is no PostScript job, too");
    command->callback([request, &chosen] {
        chosen.name = "riders apply";
        chosen.run = [request] {
            apply::applyRiders(*request);
            return std::string();
        };
    });
}

void addStrip(CLI::App &app, Chosen &chosen)
{
    const auto request = std::make_shared<apply::StripRequest>();
    CLI::App *command = app.add_subcommand("strip", "Take a riders file out of a job again");
    command->add_option("job", request->job, "The job; standard input when left out")->type_name("JOB");
    command->add_option("-o,--output", request->out, "Where to; standard output when left out")->type_name("OUT");
    command->add_flag("--force", request->force, "Replace a file that is no PostScript job, too");
    command->callback([request, &chosen] {
        chosen.name = "riders strip";
        chosen.run = [request] {
            apply::stripRiders(*request);
            return std::string();
        };
    });
}

}  // namespace riders::commands
