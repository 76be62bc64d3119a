#include "commands/make_command.h"

#include <iostream>
#include <memory>

#include "commands/chosen_screens.h"
#include "commands/explained.h"
#include "commands/standard_output.h"
#include "commands/what_was_made.h"
#include "explain/explain.h"
#include "io/plain_text.h"
#include "io/refusal.h"
#include "make/make.h"
#include "plugin/plugin.h"
#include "proof/request.h"
#include "screens/screen_limits.h"

namespace riders::commands {

namespace {

struct MakeWords {
    ScreenWords screens;
    bool json = false, explain = false;
    int dpi = 1200;
};

// The file is there by now, whatever becomes of this.
std::string explainedMade(const make::MakeRequest &request, const MakeWords &words,
                          const std::vector<screens::PlateScreen> &plates)
{
    try {
        const auto reached = inOrder(explain::explain(request.output, words.dpi), plates);
        return words.json ? explainedInJson(reached, words.dpi) : explainedInWords(reached, plates, words.dpi);
    } catch (const io::Refusal &refusal) {
        throw io::Refusal("the riders file is made, but cannot be explained: " + refusal.message);
    }
}

// An empty variable in a script would otherwise choose nothing, silently.
std::string run(make::MakeRequest &request, const MakeWords &words, const std::string &name)
{
    request.plugin = plugin::pluginBesideProgram();
    const std::vector<screens::PlateScreen> plates = chooseScreens(words.screens, request);
    for (const screens::PlateScreen &plate : plates)
        if (const std::string meant = screens::processInkMeant(plate.plate); !meant.empty())
            std::cerr << name << ": " << io::plainText(plate.plate)
                      << " is taken for a spot ink of that name; the process ink is called " << meant << '\n';
    const make::Made made = make::make(request);
    if (!made.note.empty())
        std::cerr << name << ": " << io::plainText(made.note) << '\n';
    if (!made.problem.empty())
        return made.problem;
    const std::string explained = words.explain ? explainedMade(request, words, plates) : "";
    return printLines(words.json ? madeInJson(request, plates, explained)
                                 : madeInWords(request, plates) + explained);
}

}  // namespace

void addMake(CLI::App &app, Chosen &chosen)
{
    const auto request = std::make_shared<make::MakeRequest>();
    const auto words = std::make_shared<MakeWords>();
    const CLI::Validator notEmpty(namesSomething, "");
    CLI::App *command = app.add_subcommand("make", "Make a riders file; what is not named is left to the printer");
    command->add_option("-o,--output", request->output, "The riders file to make or replace")
        ->required()
        ->type_name("FILE");
    command->add_option("--frequency", request->frequency, "Screen frequency, lines per inch")->type_name("LPI");
    command->add_option("--angle", request->angle, "Screen angle, degrees")->type_name("DEG");
    command
        ->add_option("--spot", request->spot,
                     "Dot shape by name (riders shapes lists them), or a spot function file")
        ->check(notEmpty)
        ->type_name("NAME|FILE");
    command
        ->add_option("--screens", words->screens.set,
                     "A set of screens (riders screens lists them), or its file; "
                     "--frequency then scales it")
        ->check(notEmpty)
        ->type_name("NAME|FILE");
    command
        ->add_option("--plate", words->screens.plates,
                     "The screen of one plate, as in Cyan:133@15,Round; may be "
                     "given again")
        ->type_name("NAME:LPI@ANGLE,SHAPE")
        ->allow_extra_args(false);
    command->add_option("--flatness", request->flatness, "Flatness of curves, device pixels")->type_name("N");
    CLI::Option *annotation =
        command->add_option("--annotation", request->annotation, "A line of text for every page")
            ->type_name("TEXT");
    command->add_option("--font", request->font, "The annotation's font")->type_name("NAME")->needs(annotation);
    command->add_option("--size", request->size, "The annotation's size, points")
        ->type_name("PT")
        ->needs(annotation);
    command->add_flag("--error-handler", request->errorHandler, "Print PostScript errors on the page");
    CLI::Option *explain =
        command->add_flag("--explain", words->explain, "Also say what the screens become on a device");
    command->add_option("--dpi", words->dpi, "The device's resolution; 1200 when left out")
        ->check(CLI::Range(proof::kLeastProofDpi, proof::kMostProofDpi))
        ->type_name("N")
        ->needs(explain);
    command->add_flag("--force", request->force, "Replace a file that is no riders file, too");
    command->add_flag("--json", words->json, "What was made, for programs");
    command->add_flag("--save-settings", request->saveSettings, "Keep these choices as the saved settings");
    command->callback([request, words, &chosen] {
        chosen.name = "riders make";
        chosen.run = [request, words, &chosen] { return run(*request, *words, chosen.name); };
    });
}

}  // namespace riders::commands
