#include "commands/make_command.h"

#include <iostream>
#include <memory>

#include "commands/chosen_screens.h"
#include "commands/explained.h"
#include "commands/standard_input.h"
#include "commands/standard_output.h"
#include "commands/what_was_made.h"
#include "explain/explain.h"
#include "io/output.h"
#include "io/plain_text.h"
#include "io/private_folder.h"
#include "io/refusal.h"
#include "make/make.h"
#include "plugin/plugin.h"
#include "proof/request.h"
#include "reading/choices_in.h"
#include "reading/choices_in_words.h"
#include "screens/number_text.h"
#include "screens/screen_limits.h"

namespace riders::commands {

namespace {

struct MakeWords {
    ScreenWords screens;
    bool json = false, explain = false, quiet = false, verbose = false;
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

void putPeriods(make::MakeRequest &request)
{
    for (std::optional<std::string> *number :
         {&request.frequency, &request.angle, &request.flatness, &request.size})
        if (*number)
            *number = screens::withPeriod(**number);
}

std::string saidOf(const make::MakeRequest &request, const MakeWords &words,
                   const std::vector<screens::PlateScreen> &plates)
{
    const std::string explained = words.explain ? explainedMade(request, words, plates) : "";
    if (words.json)
        return madeInJson(request, plates, explained);
    const std::string whole =
        words.verbose ? reading::choicesInWords(reading::choicesIn(io::contentsOf(request.output))) : "";
    return (words.quiet ? "" : madeInWords(request, plates)) + whole + explained;
}

std::string makeFile(make::MakeRequest &request, const MakeWords &words, const std::string &name,
                     std::string &said)
{
    request.plugin = plugin::pluginBesideProgram();
    putPeriods(request);
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
    said = saidOf(request, words, plates);
    return {};
}

// The file goes to standard output, so what is said of it goes to standard error.
std::string makeOnStandardOutput(make::MakeRequest &request, const MakeWords &words, const std::string &name)
{
    if (words.json)
        throw io::Refusal("the riders file goes to standard output, where --json has no place");
    const io::PrivateFolder folder;
    request.output = folder.path() / "standard output";
    std::string said;
    if (std::string problem = makeFile(request, words, name, said); !problem.empty())
        return problem;
    io::Output out{std::filesystem::path()};
    io::writeAll(out.file(), io::contentsOf(request.output));
    out.finish();
    std::cerr << said;
    return {};
}

std::string run(make::MakeRequest &request, const MakeWords &words, const std::string &name)
{
    if (request.output == kStandardFile)
        return makeOnStandardOutput(request, words, name);
    std::string said;
    const std::string problem = makeFile(request, words, name, said);
    return problem.empty() ? printLines(said) : problem;
}

}  // namespace

void addMake(CLI::App &app, Chosen &chosen)
{
    const auto request = std::make_shared<make::MakeRequest>();
    const auto words = std::make_shared<MakeWords>();
    const CLI::Validator notEmpty(namesSomething, "");
    CLI::App *command = app.add_subcommand("make", "Make a riders file; what is not named is left to the printer");
    command
        ->add_option("-o,--output", request->output, "The riders file to make or replace; - for standard output")
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
    CLI::Option *json = command->add_flag("--json", words->json, "What was made, for programs");
    command->add_flag("-q,--quiet", words->quiet, "Say nothing but what goes wrong")->excludes(json);
    command->add_flag("-v,--verbose", words->verbose, "Also say all that is in the file")->excludes(json);
    command->add_flag("--save-settings", request->saveSettings, "Keep these choices as the saved settings");
    command->callback([request, words, &chosen] {
        chosen.name = "riders make";
        chosen.run = [request, words, &chosen] { return run(*request, *words, chosen.name); };
    });
}

}  // namespace riders::commands
