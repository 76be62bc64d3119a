#include "remaking/dialog_values.h"

#include <algorithm>
#include <cmath>

#include "make/menu_match.h"
#include "screens/number_text.h"
#include "screens/plate_screen.h"
#include "toolbox/host/text.h"

namespace riders::remaking {
namespace {

constexpr std::int16_t kWritten = 2;  // in the popups of annotation and error handler
constexpr std::size_t kLongestAnnotation = 254, kLongestShapeName = 63;
constexpr char kNamelessShape[] = "Its own dot shape";

// What the dialog for a value takes.
struct Range {
    double least, most;
    bool whole = false;
};
constexpr Range kFrequencies{1, 999}, kAngles{0, 360}, kFlatnesses{0.2, 200}, kSizes{4, 30, true};

// Nothing where the dialog would not take it. It has four decimals at most, as the text has.
std::optional<std::string> textOf(double value, const Range &range)
{
    const std::string text = screens::numberText(value);
    if (value < range.least || value > range.most || screens::numberFromText(text) != value ||
        (range.whole && value != std::floor(value)))
        return {};
    return text;
}

std::int16_t last(const std::vector<std::string> &items)
{
    return static_cast<std::int16_t>(items.size());
}

class Filling {
public:
    Filling(const DialogMenus &menus, char decimalPoint) : menus_(menus), decimalPoint_(decimalPoint) {}

    DialogValues values(const reading::Choices &choices)
    {
        for (const reading::ChosenScreen &screen : choices.screens)
            if (screen.plate == screens::kRestOfPlates)
                takeScreen(screen);
        if (choices.flatness)
            take("flatness", *choices.flatness, kFlatnesses, menus_.flatnesses, values_.flatness,
                 values_.flatnessText);
        if (choices.annotation)
            takeAnnotation(*choices.annotation);
        if (choices.errorHandler)
            values_.errorHandler = kWritten;
        return std::move(values_);
    }

private:
    // As an item of the menu, or else as its last one, "Other...", with the text.
    void take(const std::string &what, double value, const Range &range, const std::vector<std::string> &items,
              std::int16_t &item, std::string &text)
    {
        const std::optional<std::string> spelt = textOf(value, range);
        if (!spelt)
            return leaveOut("the " + what + " " + screens::numberText(value));
        const int found = make::itemWithValue(items, *spelt);
        item = found != 0 ? static_cast<std::int16_t>(found) : last(items);
        if (found == 0)
            text = separated(*spelt);
    }

    void takeScreen(const reading::ChosenScreen &screen)
    {
        if (screen.frequency)
            take("frequency", *screen.frequency, kFrequencies, menus_.frequencies, values_.frequency,
                 values_.frequencyText);
        if (screen.angle) {
            const double angle = *screen.angle < 0 ? std::fmod(*screen.angle, 360) + 360 : *screen.angle;
            take("angle", angle, kAngles, menus_.angles, values_.angle, values_.angleText);
        }
        if (screen.shape)
            takeShape(*screen.shape);
    }

    void takeShape(const reading::ChosenShape &shape)
    {
        if (shape.body.empty())
            return leaveOut("an empty dot shape");
        if (shape.kind == reading::ChosenShape::menu)
            values_.shape = static_cast<std::int16_t>(make::itemWithName(menus_.shapes, shape.name));
        if (shape.kind == reading::ChosenShape::menu && values_.shape > 1)
            return;
        values_.shape = last(menus_.shapes);
        values_.shapeBody = shape.body;
        values_.shapeName = toolbox::romanFromUtf8Lossy(shape.name.empty() ? kNamelessShape : shape.name)
                                .substr(0, kLongestShapeName);
    }

    void takeAnnotation(const reading::ChosenAnnotation &annotation)
    {
        const std::string text = toolbox::romanFromUtf8Lossy(annotation.text);
        if (text.empty() || text.size() > kLongestAnnotation)
            return leaveOut(text.empty() ? "an empty annotation" : "an annotation that is too long");
        values_.annotation = kWritten;
        values_.annotationText = text;
        values_.font = static_cast<std::int16_t>(make::itemWithName(menus_.fonts, annotation.font));
        if (values_.font == 0)
            leaveOut("the font " + annotation.font);
        if (!annotation.size)
            return;
        if (const std::optional<std::string> size = textOf(*annotation.size, kSizes))
            values_.sizeText = *size;
        else
            leaveOut("the size " + screens::numberText(*annotation.size));
    }

    std::string separated(std::string number) const
    {
        std::replace(number.begin(), number.end(), '.', decimalPoint_);
        return number;
    }
    void leaveOut(const std::string &what) { values_.leftOut.push_back(what); }

    const DialogMenus &menus_;
    const char decimalPoint_;
    DialogValues values_;
};

}  // namespace

DialogValues dialogValuesOf(const reading::Choices &choices, const DialogMenus &menus, char decimalPoint)
{
    return Filling(menus, decimalPoint).values(choices);
}

}  // namespace riders::remaking
