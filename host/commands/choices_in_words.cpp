#include "commands/choices_in_words.h"

#include "commands/plates_in_json.h"
#include "io/json.h"
#include "io/plain_text.h"
#include "screens/number_text.h"
#include "screens/plate_spelling.h"

namespace riders::commands {
namespace {

using reading::Choices;
using reading::ChosenScreen;
using reading::ChosenShape;

std::string nameOf(const ChosenShape &shape)
{
    if (shape.kind != ChosenShape::own)
        return shape.name;
    if (!shape.name.empty())
        return shape.name + " (a spot function file)";
    return "a dot shape of its own" + (shape.about.empty() ? "" : " (" + shape.about + ")");
}

std::string lineOf(const ChosenScreen &screen, bool alone)
{
    const screens::PlateScreen plate{screen.plate, screen.frequency, screen.angle,
                                     screen.shape ? nameOf(*screen.shape) : ""};
    const bool rest = screen.plate == screens::kRestOfPlates;
    return (rest ? (alone ? "all plates " : "the rest ") : "") + plateInWords(plate);
}

std::string lineOf(const reading::ChosenAnnotation &annotation)
{
    return "annotation \"" + annotation.text + "\"" + (annotation.font.empty() ? "" : " in " + annotation.font) +
           (annotation.size ? ", " + screens::numberText(*annotation.size) + " points" : "");
}

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

std::string choicesInWords(const Choices &choices)
{
    std::vector<std::string> lines;
    for (const ChosenScreen &screen : choices.screens)
        lines.push_back(lineOf(screen, choices.screens.size() == 1));
    if (choices.flatness)
        lines.push_back("flatness " + screens::numberText(*choices.flatness));
    if (choices.annotation)
        lines.push_back(lineOf(*choices.annotation));
    if (choices.errorHandler)
        lines.emplace_back("error handler");
    if (lines.empty())
        lines.emplace_back("nothing is chosen");
    for (const std::string &note : choices.notes)
        lines.push_back(note);
    if (!choices.exact && choices.whole)
        lines.emplace_back("Not as this version of riders writes it: there may be more in it than could be read.");
    std::string text;
    for (const std::string &line : lines)
        text += "  " + io::plainText(line) + "\n";
    return text;
}

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
