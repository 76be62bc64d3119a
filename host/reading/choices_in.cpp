#include "reading/choices_in.h"

#include <algorithm>

#include "apply/riders_file.h"
#include "io/plain_text.h"
#include "reading/known_shapes.h"
#include "reading/written_in.h"
#include "screens/number_text.h"
#include "screens/plate_screen.h"
#include "toolbox/host/text.h"

namespace riders::reading {
namespace {

std::string_view withoutBlanksAtEnd(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
}

class Reading {
public:
    explicit Reading(const Written &written) : written_(written) {}

    Choices choices()
    {
        for (const WrittenEntry &entry : written_.entries)
            takeEntry(entry);
        ChosenScreen rest{
            screens::kRestOfPlates, number("frequency", written_.frequency), number("angle", written_.angle), {}};
        if (written_.shape)
            rest.shape = shape(screens::kRestOfPlates, *written_.shape);
        if (rest.frequency || rest.angle || rest.shape)
            choices_.screens.push_back(std::move(rest));
        choices_.flatness = number("flatness", written_.flatness);
        if (const auto &annotation = written_.annotation)
            choices_.annotation = {toolbox::utf8FromRoman(annotation->text),
                                   toolbox::utf8FromRoman(withoutBlanksAtEnd(annotation->font)),
                                   number("annotation's size", annotation->size.empty()
                                                                   ? std::nullopt
                                                                   : std::optional(annotation->size))};
        choices_.errorHandler = written_.errorHandler;
        return std::move(choices_);
    }

private:
    // The later entry for a plate counts.
    void takeEntry(const WrittenEntry &entry)
    {
        const std::string plate = io::plainText(entry.plate);
        auto at = std::find_if(choices_.screens.begin(), choices_.screens.end(),
                               [&](const ChosenScreen &screen) { return screen.plate == plate; });
        if (at == choices_.screens.end())
            at = choices_.screens.insert(at, {plate, {}, {}, {}});
        if (entry.element == WrittenEntry::frequency)
            at->frequency = number("frequency of " + plate, entry.value);
        else if (entry.element == WrittenEntry::angle)
            at->angle = number("angle of " + plate, entry.value);
        else
            at->shape = shape(entry.plate, entry.value);
    }

    std::optional<double> number(const std::string &what, const std::optional<std::string> &text)
    {
        if (!text)
            return {};
        const std::optional<double> value = screens::numberFromText(*text);
        if (!value)
            choices_.notes.push_back("its " + what + " is no number: \"" + io::plainText(text->substr(0, 40)) +
                                     "\"");
        return value;
    }

    ChosenShape shape(const std::string &plate, const std::string &body)
    {
        ChosenShape known = shapes_.called(body);
        if (known.kind == ChosenShape::own)
            for (const WrittenShapeName &name : written_.shapeNames)
                if (name.plate == plate)
                    known.name = name.file;
        return known;
    }

    const Written &written_;
    KnownShapes shapes_;
    Choices choices_;
};

}  // namespace

Choices choicesIn(std::string_view riders)
{
    const Written written = writtenIn(riders);
    Choices choices = Reading(written).choices();
    choices.whole = apply::isWholeRiders(riders);
    choices.exact = choices.notes.empty() && withoutBlanksAtEnd(ridersOf(written)) == withoutBlanksAtEnd(riders);
    return choices;
}

}  // namespace riders::reading
