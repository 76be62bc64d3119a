#include "commands/commands.h"

#include <signal.h>

#include <filesystem>
#include <iostream>
#include <new>

#include "app/start.h"
#include "commands/apply_commands.h"
#include "commands/film_command.h"
#include "commands/list_command.h"
#include "commands/make_command.h"
#include "commands/mesh_command.h"
#include "commands/play_command.h"
#include "commands/printer_command.h"
#include "commands/proof_command.h"
#include "commands/screens_command.h"
#include "commands/shapes_command.h"
#include "commands/show_command.h"
#include "commands/version.h"
#include "io/interruption.h"
#include "io/plain_text.h"
#include "plugin/plugin.h"

namespace riders::commands {

Commands::Commands(CLI::App &app)
{
    app.require_subcommand(0, 1);
    app.set_version_flag("--version", std::string("riders ") + kVersion, "Print the version");
    app.add_option("file", shownJob_, "A job (PostScript, EPS, PDF) or a riders file to open in the window")
        ->check(CLI::ExistingFile)
        ->type_name("FILE");
    addMake(app, chosen_);
    addApply(app, chosen_);
    addStrip(app, chosen_);
    addShow(app, chosen_);
    addPlay(app, chosen_, play_);
    addProof(app, chosen_);
    addFilm(app, chosen_);
    addMesh(app, chosen_);
    addList(app, chosen_);
    addScreens(app, chosen_);
    addShapes(app, chosen_);
    addPrinterCommand(app, chosen_);
    chosen_.run = [this] {
        return app::startOnDesktop({plugin::programFile(), plugin::pluginBesideProgram(), shownJob_});
    };
}

bool Commands::run()
{
    std::string problem;
    try {
        problem = chosen_.run();
    } catch (const io::Interrupted &interrupted) {
        raise(interrupted.signal);  // as if it had not been held back
        problem = interrupted.what();
    } catch (const std::bad_alloc &) {
        problem = "there is not enough memory";
    } catch (const std::filesystem::filesystem_error &error) {
        problem = error.path1().string() + ": " + error.code().message();
    } catch (const std::exception &error) {
        problem = error.what();
    }
    if (!problem.empty())
        std::cerr << chosen_.name << ": " << io::plainText(problem) << '\n';
    return problem.empty();
}

}  // namespace riders::commands
