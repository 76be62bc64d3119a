#include "looking/report/report.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

#include "io/decimal.h"
#include "io/output.h"
#include "looking/facts/on_mesh.h"
#include "looking/facts/plate_patterns.h"
#include "looking/report/plate_row.h"
#include "looking/report/template.h"

namespace riders::looking {

extern const std::string_view kPage, kStyle;  // page.html and page.css

using io::decimal;

namespace {

std::string counted(size_t count, const std::string &what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string millimetres(double inches)
{
    return decimal(inches * 25.4, 0);
}

using Warnings = std::vector<std::string>;

bool contains(const Warnings &warnings, const std::string &warning)
{
    return std::find(warnings.begin(), warnings.end(), warning) != warnings.end();
}

// What all of several pages are warned of.
Warnings warningsOfAll(const std::vector<PageFacts> &pages)
{
    Warnings all;
    for (const std::string &warning : pages.size() > 1 ? pages[0].warnings : Warnings{})
        if (!contains(all, warning) && std::all_of(pages.begin(), pages.end(), [&](const PageFacts &page) {
                return contains(page.warnings, warning);
            }))
            all.push_back(warning);
    return all;
}

// The page's own.
Warnings warningsBeside(const PageFacts &page, const Warnings &ofAll)
{
    Warnings own;
    std::copy_if(page.warnings.begin(), page.warnings.end(), std::back_inserter(own),
                 [&](const std::string &warning) { return !contains(ofAll, warning); });
    return own;
}

std::string warningList(const Warnings &warnings)
{
    std::string items;
    for (const std::string &warning : warnings)
        items += part("warning", {{"warning", escaped(warning)}});
    return items.empty() ? "" : part("warnings", {{"items", items}});
}

std::string loupeMark(const PageFacts &page)
{
    if (page.rosette.empty() || page.width <= 0 || page.height <= 0)
        return "";
    const auto share = [](double a, double b) { return decimal(100 * a / b, 2); };
    return part("loupe-mark", {{"left", share(page.loupe.left, page.width)},
                               {"top", share(page.loupe.top, page.height)},
                               {"width", share(page.loupe.width, page.width)},
                               {"height", share(page.loupe.height, page.height)}});
}

std::string loupes(const PageFacts &page)
{
    if (page.rosette.empty())
        return page.leftOut.empty() ? part("no-ink") : "";
    std::string figures;
    for (const PlateFacts &plate : page.plates)
        if (!plate.picture.empty())
            figures += part("figure", {{"picture", escaped(plate.picture)}, {"plate", escaped(plate.name)}});
    return part("loupes", {{"rosette", escaped(page.rosette)}, {"figures", figures}});
}

std::string meshLines(const PageFacts &page)
{
    std::string items;
    for (const std::string &fact : factsOnMesh(page))
        items += part("item", {{"text", escaped(fact)}});
    return items.empty() ? "" : part("mesh", {{"threads", decimal(page.mesh, 1)}, {"items", items}});
}

std::string patternFigure(const PlatePattern &pattern, const PageFacts &page)
{
    return part("pattern", {{"picture", escaped(pattern.picture)},
                            {"plates", escaped(namesOf(pattern.plates, page.plates))},
                            {"side", decimal(pattern.shown, 1)},
                            {"period", decimal(pattern.millimetres, 2)},
                            {"kind", pattern.afar ? "pattern afar" : "pattern"},
                            {"how", pattern.afar ? part("afar") : ""}});
}

// Those that can be seen are also among the warnings.
std::string patterns(const PageFacts &page)
{
    std::string figures, light;
    for (const PlatePattern &pattern : page.patterns) {
        if (!pattern.picture.empty())
            figures += patternFigure(pattern, page);
        if (!pattern.light.empty() && !pattern.shared)
            light += part("light", {{"text", escaped(sentenceFor(pattern, page.plates))}});
    }
    return figures.empty() && light.empty() ? "" : part("patterns", {{"figures", figures}, {"light", light}});
}

std::string sheet(const PageFacts &page, const std::string &zooming)
{
    const std::string number = std::to_string(page.number), picture = escaped(page.picture);
    return zooming.empty() ? part("sheet", {{"picture", picture}, {"number", number}})
                           : part("sheet-to-zoom", {{"page", zooming}, {"picture", picture}, {"number", number}});
}

// `zooming`: the page that zooms, if there is one.
std::string pageSection(const PageFacts &page, const Warnings &ofAll, const std::string &zooming)
{
    std::string rows;
    for (const PlateFacts &plate : page.plates)
        rows += plateRow(plate, page.dpi);
    return part(
        "section",
        {{"number", std::to_string(page.number)},
         {"width", millimetres(page.width)},
         {"height", millimetres(page.height)},
         {"warnings", warningList(warningsBeside(page, ofAll))},
         {"sheet", sheet(page, zooming)},
         {"closer",
          zooming.empty() ? "" : part("closer", {{"page", zooming}, {"number", std::to_string(page.number)}})},
         {"loupe", loupeMark(page)},
         {"rows", rows},
         {"mesh", meshLines(page)},
         {"patterns", patterns(page)},
         {"loupes", loupes(page)}});
}

std::string summary(const LookFacts &facts, const Warnings &ofAll)
{
    size_t warnings = 0;
    std::string links;
    for (const PageFacts &page : facts.pages) {
        const size_t own = warningsBeside(page, ofAll).size();
        warnings += own;
        if (own > 0)
            links += (links.empty() ? "" : ", ") + part("page-link", {{"number", std::to_string(page.number)}});
    }
    std::string text;
    if (!ofAll.empty())
        text = part("warned-all", {{"count", counted(ofAll.size(), "warning")}, {"warnings", warningList(ofAll)}});
    if (warnings > 0)
        text += part("warned-pages", {{"count", counted(warnings, "warning")}, {"links", links}});
    return text.empty() ? part("nothing-to-warn-of") : text;
}

std::string words(const std::vector<std::string> &said)
{
    std::string lines;
    for (const std::string &line : said)
        lines += escaped(line) + "\n";
    return said.empty() ? "" : part("said", {{"lines", lines}});
}

}  // namespace

std::string proofMark()
{
    return part("mark");
}

std::string reportOf(const LookFacts &facts)
{
    const Warnings ofAll = warningsOfAll(facts.pages);
    std::string sections;
    for (const PageFacts &page : facts.pages)
        sections += pageSection(page, ofAll, hasTiles(page) ? escaped(facts.loupe) : "");
    return filled(kPage, {{"mark", proofMark()},
                          {"title", escaped(facts.job.substr(0, 200))},
                          {"style", std::string(kStyle)},
                          {"job", escaped(facts.job)},
                          {"pages", counted(facts.pages.size(), "page")},
                          {"dpi", escaped(facts.resolution)},
                          {"screened", facts.films ? part("films") : ""},
                          {"riders", facts.riders.empty() ? "as it is" : "with " + escaped(facts.riders)},
                          {"summary", summary(facts, ofAll)},
                          {"sections", sections},
                          {"words", words(facts.said)}});
}

void writeReport(const std::filesystem::path &file, const LookFacts &facts)
{
    io::writeFile(file, reportOf(facts));
}

}  // namespace riders::looking
