#include "commands/choices_in_json.h"

#include "commands/plates_in_json.h"
#include "io/json.h"

namespace riders::commands {
namespace {

using reading::Choices;
using reading::ChosenScreen;
using reading::ChosenShape;

const char *kindOf(const ChosenShape &shape)
{
    if (shape.kind == ChosenShape::own)
        return "own";
    return shape.kind == ChosenShape::menu ? "menu" : "installed";
}

std::string inJson(const ChosenScreen &screen)
{
    auto members = plateMembers({screen.plate, screen.frequency, screen.angle, {}});
    if (const auto &shape = screen.shape) {
        members.emplace_back("shape", shape->name.empty() ? "null" : io::jsonText(shape->name));
        members.emplace_back("shapeKind", io::jsonText(kindOf(*shape)));
        if (shape->kind == ChosenShape::own)
            members.emplace_back("spotFunction", io::jsonText(shape->body));
    }
    return io::jsonObject(members);
}

}  // namespace

std::string choicesInJson(const Choices &choices, std::vector<std::pair<std::string, std::string>> members)
{
    std::vector<std::string> plates, notes;
    for (const ChosenScreen &screen : choices.screens)
        plates.push_back(inJson(screen));
    for (const std::string &note : choices.notes)
        notes.push_back(io::jsonText(note));
    members.emplace_back("plates", io::jsonArray(plates));
    members.emplace_back("flatness", choices.flatness ? io::jsonNumber(*choices.flatness) : "null");
    members.emplace_back(
        "annotation",
        choices.annotation
            ? io::jsonObject(
                  {{"text", io::jsonText(choices.annotation->text)},
                   {"font", io::jsonText(choices.annotation->font)},
                   {"size", choices.annotation->size ? io::jsonNumber(*choices.annotation->size) : "null"}})
            : "null");
    members.emplace_back("errorHandler", choices.errorHandler ? "true" : "false");
    members.emplace_back("whole", choices.whole ? "true" : "false");
    members.emplace_back("exact", choices.exact ? "true" : "false");
    members.emplace_back("notes", io::jsonArray(notes));
    return io::jsonObject(members);
}

}  // namespace riders::commands
