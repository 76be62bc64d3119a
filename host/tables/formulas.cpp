#include "tables/formulas.h"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <numbers>
#include <string_view>
#include <vector>

#include "meter/spots.h"

namespace riders::tables {

// Embedded from resources/shapes and resources/ps, so that a shape is known by its text, whatever its name.
extern const std::string_view kCosineDot, kCross, kDiamond, kDouble, kDoubleDot, kEllipse, kEllipseA, kEllipseB,
    kEllipseC, kInvertedDouble, kInvertedDoubleDot, kInvertedEllipseA, kInvertedEllipseC, kInvertedSimpleDot,
    kLine, kLineX, kLineY, kRhomboid, kRound, kSimpleDot, kSquare, kMenuEllipse, kMenuEuclidean, kMenuLine;

namespace {

// Of sines, one wave or half of one to a side of the cell.
double dottedTwice(double x, double y)
{
    return (std::sin(2 * std::numbers::pi * x) + std::sin(2 * std::numbers::pi * y)) / 2;
}

double doubled(double x, double y)
{
    return (std::sin(std::numbers::pi * x) + std::sin(2 * std::numbers::pi * y)) / 2;
}

const meter::NamedSpot *spotNamed(const std::string &name)
{
    for (const auto *spots : {&meter::namedSpots(), &meter::rarerSpots()})
        for (const meter::NamedSpot &spot : *spots)
            if (strcasecmp(spot.name, name.c_str()) == 0)
                return &spot;
    return nullptr;
}

struct Formula {
    std::string body;
    screening::SpotFunction value;
};

// Without the line that says what file it is, and comments; with single blanks.
std::string bare(std::string_view text)
{
    constexpr std::string_view kMagic = "%!KT1_Spot";
    if (text.starts_with(kMagic))
        text.remove_prefix(std::min(text.find('\r'), text.size()));
    std::string code;
    bool inComment = false;
    for (const char c : text) {
        const bool lineEnd = c == '\r' || c == '\n';
        inComment = !lineEnd && (inComment || c == '%');
        if (!inComment && std::isspace(static_cast<unsigned char>(c)) == 0)
            code += c;
        else if (!code.empty() && code.back() != ' ')
            code += ' ';
    }
    return code.substr(0, code.find_last_not_of(' ') + 1);
}

std::vector<Formula> allFormulas()
{
    std::vector<Formula> formulas = {
        {bare(kLineX), [](double x, double) { return x; }},
        {bare(kDouble), doubled},
        {bare(kInvertedDouble), [](double x, double y) { return -doubled(x, y); }},
        {bare(kDoubleDot), dottedTwice},
        {bare(kInvertedDoubleDot), [](double x, double y) { return -dottedTwice(x, y); }},
    };
    // What the file Round holds is Euclidean in the menu.
    for (const auto &[text, name] : {std::pair(kSimpleDot, "Round"),
                                     {kRound, "Euclidean"},
                                     {kMenuEuclidean, "Euclidean"},
                                     {kEllipse, "Ellipse"},
                                     {kMenuEllipse, "Ellipse"},
                                     {kLine, "Line"},
                                     {kMenuLine, "Line"},
                                     {kSquare, "Square"},
                                     {kDiamond, "Diamond"},
                                     {kCross, "Cross"},
                                     {kCosineDot, "CosineDot"},
                                     {kRhomboid, "Rhomboid"},
                                     {kInvertedSimpleDot, "InvertedSimpleDot"},
                                     {kEllipseA, "EllipseA"},
                                     {kInvertedEllipseA, "InvertedEllipseA"},
                                     {kEllipseB, "EllipseB"},
                                     {kEllipseC, "EllipseC"},
                                     {kInvertedEllipseC, "InvertedEllipseC"},
                                     {kLineY, "LineY"}})
        formulas.push_back({bare(text), formulaNamed(name)});
    return formulas;
}

}  // namespace

std::optional<std::string> builtInShape(const std::string &name)
{
    const meter::NamedSpot *const spot = spotNamed(name);
    return spot ? std::optional<std::string>(spot->name) : std::nullopt;
}

screening::SpotFunction formulaNamed(const std::string &name)
{
    return spotNamed(name)->value;
}

std::optional<screening::SpotFunction> formulaOf(const std::string &body)
{
    static const std::vector<Formula> formulas = allFormulas();
    const std::string asked = bare(body);
    for (const Formula &formula : formulas)
        if (formula.body == asked)
            return formula.value;
    return {};
}

}  // namespace riders::tables
