#include "commands/shapes_command.h"

#include <iostream>
#include <memory>

#include "commands/standard_output.h"
#include "io/json.h"
#include "io/plain_text.h"
#include "shapes/fix_shape.h"
#include "shapes/listing.h"
#include "shapes/show_shapes.h"

namespace riders::commands {
namespace {

struct Asked {
    shapes::ShowRequest request;
    bool page = false, json = false, fix = false, force = false;
};

std::string list(bool json)
{
    const std::vector<screens::Shape> installed = screens::installedShapes();
    if (installed.empty())
        return "no dot shapes are installed";
    return printLines(json ? shapes::listingInJson(installed) : shapes::listing(installed));
}

std::string inJson(const shapes::Shown &shown)
{
    std::vector<std::string> notes;
    for (const std::string &note : shown.notes)
        notes.push_back(io::jsonText(note));
    const std::string none = "null";
    return io::jsonObject({{"works", shown.problem.empty() ? "true" : "false"},
                           {"problem", shown.problem.empty() ? none : io::jsonText(shown.problem)},
                           {"notes", io::jsonArray(notes)},
                           {"page", shown.problem.empty() ? io::jsonText(shown.page.string()) : none}}) +
           "\n";
}

std::string fix(const Asked &asked, const std::string &name)
{
    const shapes::Fixed fixed = shapes::fixShape({asked.request.shape, asked.request.page, asked.force});
    if (asked.json)
        return printLines(io::jsonObject({{"file", io::jsonText(fixed.copy.native())},
                                          {"changed", fixed.changed ? "true" : "false"}}) +
                          "\n");
    if (!fixed.changed)
        std::cerr << name << ": " << io::plainText(asked.request.shape) << " needs no change\n";
    return printPath(fixed.copy);
}

std::string show(const Asked &asked, const std::string &name)
{
    const shapes::Shown shown = shapes::showShapes(asked.request);
    std::string problem;
    if (asked.json)
        problem = printLines(inJson(shown));
    if (!problem.empty() || !shown.problem.empty())
        return problem.empty() ? shown.problem : problem;
    if (asked.json)
        return {};
    for (const std::string &note : shown.notes)
        std::cerr << name << ": " << io::plainText(note) << '\n';
    return printPath(shown.page);
}

}  // namespace

void addShapes(CLI::App &app, Chosen &chosen)
{
    const auto asked = std::make_shared<Asked>();
    CLI::App *command = app.add_subcommand("shapes", "List the dot shapes, or try one and show its dots");
    CLI::Option *shape =
        command->add_option("shape", asked->request.shape, "A dot shape by name, or a spot function file: try it")
            ->type_name("NAME|FILE");
    CLI::Option *fixing =
        command
            ->add_flag(
                "--fix", asked->fix,
                "Make a copy of the file that the settings dialog takes: its first line ends in a carriage return")
            ->needs(shape);
    command->add_flag("--force", asked->force, "Replace a file that is no spot function file, too")->needs(fixing);
    command->add_flag("--page", asked->page, "Make a page that shows all dot shapes");
    command
        ->add_option("-o,--output", asked->request.page,
                     "The page; shapes.html, or the shape's name and -shape.html, when left out. With --fix the "
                     "copy; the file's name and -fixed when left out")
        ->type_name("FILE");
    command->add_flag("--json", asked->json, "Write the results as JSON");
    command
        ->add_option("--seconds", asked->request.limits.seconds,
                     "How long the interpreter may take for some values; 20 when left out")
        ->check(CLI::Range(1, 3600))
        ->type_name("N");
    command->callback([asked, &chosen] {
        chosen.name = "riders shapes";
        chosen.run = [asked, &chosen] {
            if (asked->fix)
                return fix(*asked, chosen.name);
            const bool showing = asked->page || !asked->request.shape.empty() || !asked->request.page.empty();
            return showing ? show(*asked, chosen.name) : list(asked->json);
        };
    });
}

}  // namespace riders::commands
