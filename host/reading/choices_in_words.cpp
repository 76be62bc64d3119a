#include "reading/choices_in_words.h"

#include "io/plain_text.h"
#include "screens/number_text.h"
#include "screens/plate_spelling.h"

namespace riders::reading {
namespace {

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

std::string lineOf(const ChosenAnnotation &annotation)
{
    return "annotation \"" + annotation.text + "\"" + (annotation.font.empty() ? "" : " in " + annotation.font) +
           (annotation.size ? ", " + screens::numberText(*annotation.size) + " points" : "");
}

}  // namespace

std::vector<std::string> choicesInLines(const Choices &choices)
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
    for (std::string &line : lines)
        line = io::plainText(line);
    return lines;
}

std::string choicesInWords(const Choices &choices)
{
    std::string text;
    for (const std::string &line : choicesInLines(choices))
        text += "  " + line + "\n";
    return text;
}

}  // namespace riders::reading
