#include "shapes/page.h"

#include <array>
#include <cmath>

#include "html/template.h"
#include "shapes/dot_pictures.h"
#include "shapes/growth.h"
#include "shapes/listing.h"

namespace riders::shapes {

extern const std::string_view kPage, kStyle, kParts;

namespace {

using html::escaped;

constexpr std::array<int, 5> kShownTints = {5, 25, 50, 75, 95};
constexpr double kSpread = 0.04;  // of a cell's side; page.html says so

std::string part(std::string_view id, html::Fillings fillings = {})
{
    return html::part(kParts, id, fillings);
}

std::string percent(double share)
{
    return std::to_string(std::lround(100 * share));
}

std::string figuresOf(const Growth &growth)
{
    std::string figures;
    for (const int tint : kShownTints)
        figures +=
            part("figure", {{"tint", std::to_string(tint)},
                            {"picture", asAddress(dotPicture(growth, {3, 3, 60, tint / 100.0, tint / 100.0}))}});
    return figures;
}

// Points of a path in a square of 100 by 100.
std::string curveOf(const Growth &spread)
{
    std::string curve;
    for (int tint = 0; tint <= 100; ++tint) {
        const long ink = std::lround(1000 * inkWithSpread(spread, tint / 100.0));
        curve += (curve.empty() ? "" : " ") + std::to_string(tint) + "," + std::to_string((1000 - ink) / 10) +
                 "." + std::to_string((1000 - ink) % 10);
    }
    return curve;
}

// A shape without light and dark ends, such as a line, is joined from the first, or never all.
std::string joiningInWords(const Joining &joining)
{
    constexpr double kFromFirst = 0.03, kNever = 0.97, kAtOnce = 0.02;
    if (joining.first > kNever)
        return "The dots stay apart up to solid ink.";
    if (joining.all < kFromFirst)
        return "The dots are joined from the first.";
    if (joining.all - joining.first < kAtOnce)
        return "The dots join at " + percent(joining.first) + " %.";
    std::string words = joining.first < kFromFirst
                            ? "The dots are joined " + joining.direction + " from the first"
                            : "The dots join " + joining.direction + " at " + percent(joining.first) + " %";
    return words + (joining.all > kNever ? "." : ", all at " + percent(joining.all) + " %.");
}

std::string notesIn(const std::vector<float> &values)
{
    std::string items;
    for (const std::string &note : notesOn(values))
        items += part("note", {{"note", escaped(note)}});
    return items.empty() ? "" : part("notes", {{"items", items}});
}

std::string titleOf(const ShownShape &shown)
{
    std::string title = shown.names.empty() ? shown.shape.name : "";
    for (const std::string &name : shown.names)
        title += (title.empty() ? "" : ", ") + name;
    return title;
}

std::string sectionOf(const ShownShape &shown)
{
    const Growth growth = growthOf(shown.trial.values);
    const Growth spread = spreadGrowth(growth, kSpread);
    return part("section", {{"id", escaped(shown.shape.name)},
                            {"name", escaped(titleOf(shown))},
                            {"about", escaped(aboutWithFile(shown.shape, shown.names))},
                            {"facts", joiningInWords(joiningOf(growth))},
                            {"notes", notesIn(shown.trial.values)},
                            {"figures", figuresOf(growth)},
                            {"curve", curveOf(spread)},
                            {"middle", percent(inkWithSpread(spread, 0.5))},
                            {"strip", asAddress(dotPicture(growth, {48, 2, 28, 0, 1}))}});
}

}  // namespace

std::string pageMark()
{
    return part("mark");
}

std::string pageOf(const std::vector<ShownShape> &shapes)
{
    std::string sections;
    for (const ShownShape &shown : shapes)
        sections += sectionOf(shown);
    return html::filled(
        kPage, {{"mark", pageMark()},
                {"title", shapes.size() == 1 ? part("one-title", {{"name", escaped(titleOf(shapes.front()))}})
                                             : part("many-title")},
                {"style", std::string(kStyle)},
                {"sections", sections}});
}

}  // namespace riders::shapes
