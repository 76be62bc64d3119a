#include "commands/list_command.h"

#include <memory>

#include "commands/known_sets.h"
#include "commands/standard_output.h"
#include "io/json.h"
#include "make/offers.h"
#include "plugin/plugin.h"
#include "screens/set_names.h"
#include "screens/shapes.h"

namespace riders::commands {
namespace {

struct ListRequest {
    std::string what;
    bool json = false;
};

std::vector<std::string> shapeNames()
{
    std::vector<std::string> names;
    for (const screens::Shape &shape : screens::installedShapes())
        for (std::string &name : screens::namesOf(shape))
            names.push_back(std::move(name));
    return names;
}

std::vector<std::string> setNames()
{
    std::vector<std::string> names;
    for (const auto &[name, file] : screens::setFiles(setFolders()))
        names.push_back(name);
    return names;
}

std::vector<std::string> listed(const std::string &what)
{
    if (what == "shapes")
        return shapeNames();
    if (what == "screens")
        return setNames();
    const make::Offered menu = what == "fonts"    ? make::Offered::fonts
                               : what == "angles" ? make::Offered::angles
                                                  : make::Offered::frequencies;
    return make::offersOf(menu, plugin::pluginBesideProgram());
}

std::string run(const ListRequest &request)
{
    const bool numbers = request.what == "frequencies" || request.what == "angles";
    std::string lines;
    std::vector<std::string> values;
    for (const std::string &name : listed(request.what)) {
        lines += name + "\n";
        values.push_back(numbers ? name : io::jsonText(name));
    }
    return printLines(request.json ? io::jsonArray(values) + "\n" : lines);
}

}  // namespace

void addList(CLI::App &app, Chosen &chosen)
{
    const auto request = std::make_shared<ListRequest>();
    CLI::App *command =
        app.add_subcommand("list", "List the names that other commands take, one on a line, for scripts");
    command
        ->add_option("what", request->what,
                     "shapes, sets of screens, or what the dialogs offer: fonts, frequencies, angles")
        ->required()
        ->check(CLI::IsMember({"shapes", "screens", "fonts", "frequencies", "angles"}));
    command->add_flag("--json", request->json, "For programs");
    command->callback([request, &chosen] {
        chosen.name = "riders list";
        chosen.run = [request] { return run(*request); };
    });
}

}  // namespace riders::commands
