#include "commands/screens_command.h"

#include <iostream>
#include <memory>

#include "commands/known_sets.h"
#include "commands/plates_in_json.h"
#include "commands/standard_output.h"
#include "io/json.h"
#include "io/plain_text.h"
#include "io/refusal.h"
#include "screens/plate_spelling.h"
#include "screens/screen_set.h"
#include "screens/set_file.h"

namespace riders::commands {
namespace {

struct ScreensRequest {
    std::string set;  // empty for all
    bool json = false;
};

std::string inJson(const std::string &name, const std::filesystem::path &file, const screens::ScreenSet &set)
{
    return io::jsonObject({{"set", io::jsonText(name)},
                           {"file", io::jsonText(file.native())},
                           {"name", io::jsonText(set.name)},
                           {"for", io::jsonText(set.use)},
                           {"source", io::jsonText(set.source)},
                           {"plates", platesInJson(screensOf(set))}});
}

std::string plateLine(const screens::PlateScreen &plate)
{
    const std::string words = plateInWords(plate);
    return "  " + (plate.plate == screens::kRestOfPlates ? "the rest " + words : words) + "\n";
}

std::string inWords(const std::string &name, const std::filesystem::path &file, const screens::ScreenSet &set,
                    bool whole)
{
    std::string text = name + ": " + set.name + "\n";
    if (!set.use.empty())
        text += "  For: " + set.use + "\n";
    if (whole && !set.source.empty())
        text += "  Source: " + set.source + "\n";
    if (whole)
        text += "  File: " + file.string() + "\n";
    for (const screens::PlateScreen &plate : screensOf(set))
        text += plateLine(plate);
    return text;
}

std::string showOne(const ScreensRequest &request)
{
    const std::filesystem::path file = screens::setFileNamed(request.set, setFolders());
    const screens::ScreenSet set = screens::setFromFile(file);
    const std::string name = file.stem();
    return printLines(request.json ? inJson(name, file, set) + "\n" : inWords(name, file, set, true));
}

// One that cannot be read does not hide the others.
std::string showAll(const ScreensRequest &request)
{
    std::string problem, words;
    std::vector<std::string> values;
    for (const auto &[name, file] : screens::setFiles(setFolders())) {
        try {
            const screens::ScreenSet set = screens::setFromFile(file);
            values.push_back(inJson(name, file, set));
            words += inWords(name, file, set, false);
        } catch (const io::Refusal &refusal) {
            problem += (problem.empty() ? "" : "; ") + refusal.message;
        }
    }
    const std::string failed = printLines(request.json ? io::jsonArray(values) + "\n" : words);
    return failed.empty() ? problem : failed;
}

}  // namespace

void addScreens(CLI::App &app, Chosen &chosen)
{
    const auto request = std::make_shared<ScreensRequest>();
    CLI::App *command = app.add_subcommand("screens", "List the sets of screens, or show one of them");
    command->add_option("set", request->set, "The set's name, or a file; all when left out")
        ->type_name("NAME|FILE");
    command->add_flag("--json", request->json, "For programs");
    command->callback([request, &chosen] {
        chosen.name = "riders screens";
        chosen.run = [request] { return request->set.empty() ? showAll(*request) : showOne(*request); };
    });
}

}  // namespace riders::commands
