#include "commands/make_command.h"

#include <iostream>
#include <memory>

#include "io/plain_text.h"
#include "make/make.h"
#include "plugin/plugin.h"

namespace riders::commands {

void addMake(CLI::App &app, Chosen &chosen)
{
    const auto request = std::make_shared<make::MakeRequest>();
    CLI::App *command = app.add_subcommand("make", "Make a riders file; what is not named is left to the printer");
    command->add_option("-o,--output", request->output, "The riders file to make or replace")
        ->required()
        ->type_name("FILE");
    command->add_option("--frequency", request->frequency, "Screen frequency, lines per inch")->type_name("LPI");
    command->add_option("--angle", request->angle, "Screen angle, degrees")->type_name("DEG");
    command->add_option("--spot", request->spot, "Dot shape by name (riders shapes lists them), or a spot function file")
        ->type_name("NAME|FILE");
    command->add_option("--flatness", request->flatness, "Flatness of curves, device pixels")->type_name("N");
    CLI::Option *annotation =
        command->add_option("--annotation", request->annotation, "A line of text for every page")
            ->type_name("TEXT");
    command->add_option("--font", request->font, "The annotation's font")->type_name("NAME")->needs(annotation);
    command->add_option("--size", request->size, "The annotation's size, points")
        ->type_name("PT")
        ->needs(annotation);
    command->add_flag("--error-handler", request->errorHandler, "Print PostScript errors on the page");
    command->add_flag("--save-settings", request->saveSettings, "Keep these choices as the saved settings");
    command->callback([request, &chosen] {
        chosen.name = "riders make";
        chosen.run = [request, &chosen] {
            request->plugin = plugin::pluginBesideProgram();
            const make::Made made = make::make(*request);
            if (!made.note.empty())
                std::cerr << chosen.name << ": " << io::plainText(made.note) << '\n';
            return made.problem;
        };
    });
}

}  // namespace riders::commands
