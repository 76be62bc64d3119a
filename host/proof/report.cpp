#include "proof/report.h"

#include <cmath>

#include "io/output.h"
#include "proof/output_folder.h"
#include "proof/plate_names.h"
#include "proof/report_style.h"

namespace riders::proof {
namespace {

std::string counted(size_t count, const std::string &what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string percent(double share)
{
    return decimal(share * 100, 1) + "&nbsp;%";
}

std::string millimetres(const PageFacts &page)
{
    return decimal(page.width * 25.4, 0) + " × " + decimal(page.height * 25.4, 0) + " mm";
}

std::string anchor(const PageFacts &page)
{
    return "page-" + std::to_string(page.number);
}

std::string screen(const std::optional<double> &frequency, const std::optional<double> &angle, int digits)
{
    std::string text = frequency ? decimal(*frequency, digits) + "&nbsp;lpi" : "";
    if (frequency && angle)
        text += ", ";
    return "<span class=\"values\">" + text + (angle ? decimal(*angle, digits) + "°" : "") + "</span>";
}

std::string askedCell(const AskedFor &asked)
{
    const bool known = asked.frequency || asked.angle;
    std::string values = known ? screen(asked.frequency, asked.angle, 2) : "";
    if (!asked.shape.empty())
        values += (known ? ", " : "") + escaped(asked.shape);
    if (!asked.binding)
        return "nothing<small>the interpreter’s own" + (values.empty() ? "" : ", " + values) + "</small>";
    return (values.empty() ? "the job’s own" : values) + "<small>by " + escaped(asked.by) + "</small>";
}

std::string difference(const PlateFacts &plate)
{
    std::string text;
    const auto add = [&text](double value, int digits, const char *unit) {
        const std::string size = decimal(std::abs(value), digits);
        const std::string sign = size == "0" ? "±" : value < 0 ? "−" : "+";
        text += (text.empty() ? "" : ", ") + sign + size + unit;
    };
    if (plate.asked.frequency)
        add((plate.measured.frequency / *plate.asked.frequency - 1) * 100, 2, "&nbsp;%");
    if (plate.asked.angle)
        add(std::remainder(plate.measured.angle - *plate.asked.angle, 90), 2, "°");
    return text;
}

bool isOff(const PlateFacts &plate)
{
    PageFacts alone;
    alone.plates = {plate};
    alone.plates[0].tints = {};
    return !warningsFor(alone).empty();
}

std::string measuredCell(const PlateFacts &plate)
{
    if (plate.film.empty())
        return "";
    if (!plate.measured.found)
        return plate.tints.tint ? "no screen found" : "solid ink only";
    const std::string values = screen(plate.measured.frequency, plate.measured.angle, 2);
    const std::string apart = plate.asked.binding ? difference(plate) : "";
    const std::string shape =
        plate.measured.shape.empty() ? "<small>shape not told</small>" : ", " + escaped(plate.measured.shape);
    return (isOff(plate) ? "<span class=\"off\">" + values + "</span>" : values) + shape +
           (apart.empty() ? "" : "<small>" + apart + "</small>");
}

std::string inkCell(const PlateFacts &plate)
{
    if (plate.film.empty())
        return "no ink";
    std::string text;
    if (plate.tints.tint)
        text = plate.tints.least == plate.tints.most
                   ? percent(plate.tints.least)
                   : percent(plate.tints.least) + " to " + percent(plate.tints.most);
    if (plate.tints.solid)
        text += text.empty() ? "solid" : ", and solid";
    if (plate.measured.found && plate.evenTint > 0)
        text +=
            "<small>" + percent(plate.evenTint) + " is " + percent(plate.measured.ink) + " on the film</small>";
    return text.empty() ? "a trace" : text;
}

std::string levelsCell(const PlateFacts &plate, double dpi)
{
    if (!plate.measured.found)
        return "";
    const double side = dpi / plate.measured.frequency;
    return decimal(std::floor(side * side) + 1, 0);
}

std::string cell(const char *label, const std::string &html)
{
    return "<td data-label=\"" + std::string(label) + "\">" + (html.empty() ? "–" : html) + "</td>";
}

std::string plateRow(const PlateFacts &plate, double dpi)
{
    const std::string film = plate.film.empty() ? "" : "<a href=\"" + escaped(plate.film) + "\">TIFF</a>";
    return std::string(plate.film.empty() ? "<tr class=\"bare\">" : "<tr>") +
           "<th scope=\"row\"><span class=\"swatch\" style=\"background:" + hexColour(plate.ink) +
           "\"></span>" + escaped(plate.name) + "</th>" +
           cell("Asked for", plate.film.empty() ? "" : askedCell(plate.asked)) +
           cell("Measured", measuredCell(plate)) + cell("Ink", inkCell(plate)) +
           cell("Grey levels", levelsCell(plate, dpi)) + cell("Film", film) + "</tr>\n";
}

std::string plateTable(const PageFacts &page, double dpi)
{
    std::string rows;
    for (const PlateFacts &plate : page.plates)
        rows += plateRow(plate, dpi);
    return "<table>\n<thead><tr><th>Plate</th><th>Asked for</th><th>Measured</th><th>Ink</th>"
           "<th>Grey levels a cell</th><th>Film</th></tr></thead>\n<tbody>\n" +
           rows + "</tbody>\n</table>\n";
}

std::string warningList(const PageFacts &page)
{
    std::string items;
    for (const std::string &warning : page.warnings)
        items += "<li>" + escaped(warning) + "</li>\n";
    return items.empty() ? "" : "<ul class=\"warnings\">\n" + items + "</ul>\n";
}

// Where the loupe is held, drawn on the page's picture.
std::string loupeMark(const PageFacts &page)
{
    if (page.rosette.empty() || page.width <= 0 || page.height <= 0)
        return "";
    const auto part = [](double a, double b) { return decimal(100 * a / b, 2) + "%"; };
    return "<i style=\"left:" + part(page.loupe.left, page.width) + ";top:" + part(page.loupe.top, page.height) +
           ";width:" + part(page.loupe.width, page.width) + ";height:" + part(page.loupe.height, page.height) +
           "\"></i>";
}

std::string image(const std::string &file, const std::string &alt)
{
    return "<img src=\"" + escaped(file) + "\" alt=\"" + escaped(alt) + "\" loading=\"lazy\">";
}

std::string loupes(const PageFacts &page)
{
    if (page.rosette.empty())
        return "<p class=\"soft\">This page has no ink.</p>\n";
    std::string text = "<h3>All inks, 8 to 1</h3>\n<figure class=\"rosette\"><a href=\"" + escaped(page.rosette) +
                       "\">" + image(page.rosette, "25 mm of the page in all inks, 8 to 1") +
                       "</a><figcaption>25 mm of the page, as marked above.</figcaption></figure>\n"
                       "<h3>Each plate, 8 to 1</h3>\n<p class=\"soft\">The middle of its place; click for all 25 "
                       "mm.</p>\n<div class=\"loupes\">\n";
    for (const PlateFacts &plate : page.plates)
        if (!plate.picture.empty())
            text += "<figure><a href=\"" + escaped(plate.picture) + "\">" +
                    image(plate.picture, "25 mm of the plate " + plate.name + ", 8 to 1") + "</a><figcaption>" +
                    escaped(plate.name) + "</figcaption></figure>\n";
    return text + "</div>\n";
}

std::string pageSection(const PageFacts &page, double dpi)
{
    const std::string title = "Page " + std::to_string(page.number);
    return "<section id=\"" + anchor(page) + "\">\n<div class=\"heading\"><h2>" + title +
           "</h2><span class=\"soft\">" + millimetres(page) + "</span></div>\n" + warningList(page) +
           "<div class=\"top\">\n<div class=\"sheet\">" + image(page.picture, title) + loupeMark(page) +
           "</div>\n<div>\n" + plateTable(page, dpi) + "</div>\n</div>\n" + loupes(page) + "</section>\n";
}

std::string summary(const ProofFacts &facts)
{
    size_t warnings = 0;
    std::string links;
    for (const PageFacts &page : facts.pages) {
        warnings += page.warnings.size();
        if (!page.warnings.empty())
            links += (links.empty() ? "" : ", ") + std::string("<a href=\"#") + anchor(page) + "\">page " +
                     std::to_string(page.number) + "</a>";
    }
    return warnings == 0 ? "<p>Nothing to warn of.</p>\n"
                         : "<p class=\"off\">" + counted(warnings, "warning") + ": " + links + "</p>\n";
}

std::string words(const std::vector<std::string> &said)
{
    if (said.empty())
        return "";
    std::string lines;
    for (const std::string &line : said)
        lines += escaped(line) + "\n";
    return "<section class=\"short\"><h2>What the interpreter said</h2>\n<pre>" + lines + "</pre></section>\n";
}

}  // namespace

std::string escaped(const std::string &text)
{
    std::string html;
    for (const char c : plainText(text)) {
        switch (c) {
        case '&':
            html += "&amp;";
            break;
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '"':
            html += "&quot;";
            break;
        case '\'':
            html += "&#39;";
            break;
        default:
            html += c;
        }
    }
    return html;
}

std::string reportOf(const ProofFacts &facts)
{
    std::string html =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n" + std::string(kProofMark) +
        "\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>Proof of " +
        escaped(facts.job.substr(0, 200)) + "</title>\n<style>" + kReportStyle + "</style>\n</head>\n<body>\n";
    html += "<header>\n<h1>Proof of " + escaped(facts.job) + "</h1>\n<p class=\"soft\">" +
            counted(facts.pages.size(), "page") + " at " + decimal(facts.dpi, 0) + " dpi, " +
            (facts.riders.empty() ? "as it is" : "with " + escaped(facts.riders)) + "</p>\n" + summary(facts) +
            "</header>\n<main>\n";
    for (const PageFacts &page : facts.pages)
        html += pageSection(page, facts.dpi);
    html += words(facts.said) + "</main>\n";
    return html +
           "<footer class=\"soft\"><p>Frequencies and angles are measured on the films. Angles turn clockwise "
           "on the upright sheet. Colours are those of inks on white paper, about.</p></footer>\n"
           "</body>\n</html>\n";
}

void writeReport(const std::filesystem::path &file, const ProofFacts &facts)
{
    io::Output out(file);
    io::writeAll(out.file(), reportOf(facts));
    out.finish();
}

}  // namespace riders::proof
