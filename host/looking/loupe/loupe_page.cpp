#include "looking/loupe/loupe_page.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "html/template.h"
#include "io/decimal.h"
#include "io/json.h"
#include "io/output.h"

namespace riders::looking {

extern const std::string_view kLoupePage, kLoupeStyle, kLoupeScript;  // loupe.html, loupe.css, loupe.js
extern const std::string_view kViewer, kViewerStyle, kViewerLicence;  // Leaflet's

namespace {

std::string base64(const std::vector<bool> &bits)
{
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::size_t bytes = (bits.size() + 7) / 8;
    std::string text;
    for (std::size_t i = 0; i < (bytes + 2) / 3 * 4; ++i) {
        unsigned digit = 0;
        for (std::size_t bit = 6 * i; bit < 6 * i + 6; ++bit)
            digit = digit << 1 | (bit < bits.size() && bits[bit] ? 1U : 0U);
        text += 6 * i < 8 * bytes ? digits[digit] : '=';
    }
    return text;
}

std::string levelsOf(const TileSet &tiles)
{
    std::vector<std::string> levels;
    for (const TileLevel &level : tiles.levels)
        levels.push_back(io::jsonObject({{"across", std::to_string(level.across)},
                                         {"down", std::to_string(level.down)},
                                         {"inked", io::jsonText(base64(level.inked))}}));
    return io::jsonArray(levels);
}

bool isOfLines(const PlateFacts &plate)
{
    return plate.measured.lines || plate.asked.shape.starts_with("Line");
}

// null where nobody asked for a screen, or where it has no dots.
std::string gridOf(const PlateFacts &plate, double dpi)
{
    const plates::AskedFor &asked = plate.asked;
    if (!plate.gridAt || !asked.frequency || !asked.angle)
        return "null";
    return io::jsonObject({{"frequency", io::jsonNumber(*asked.frequency)},
                           {"angle", io::jsonNumber(*asked.angle)},
                           {"x", io::jsonNumber(plate.gridAt->x * dpi)},
                           {"y", io::jsonNumber(plate.gridAt->y * dpi)},
                           {"lines", isOfLines(plate) ? "true" : "false"},
                           {"words", io::jsonText(io::decimal(*asked.frequency, 2) + " lpi, " +
                                                  io::decimal(*asked.angle, 2) + "°")}});
}

std::string sheetOf(const PageFacts &page)
{
    std::vector<std::string> plates;
    const TileSet *size = nullptr;
    for (const PlateFacts &plate : page.plates) {
        if (plate.tiles.folder.empty())
            continue;
        size = &plate.tiles;
        plates.push_back(io::jsonObject({{"name", io::jsonText(plate.name)},
                                         {"colour", io::jsonText(hexColour(plate.ink))},
                                         {"folder", folderInLoupe(plate.tiles.folder)},
                                         {"grid", gridOf(plate, page.dpi)},
                                         {"levels", levelsOf(plate.tiles)}}));
    }
    if (size == nullptr)
        return {};
    std::vector<std::string> place;
    for (const double inches : {page.loupe.left, page.loupe.top, page.loupe.width, page.loupe.height})
        place.push_back(io::jsonNumber(inches * page.dpi));
    return io::jsonObject({{"number", std::to_string(page.number)},
                           {"width", std::to_string(size->width)},
                           {"height", std::to_string(size->height)},
                           {"dpi", io::jsonNumber(page.dpi)},
                           {"place", io::jsonArray(place)},
                           {"plates", io::jsonArray(plates)}});
}

// Nothing in it ends the element that it is in.
std::string inElement(std::string json)
{
    for (std::size_t at = 0; (at = json.find('<', at)) != json.npos; at += 6)
        json.replace(at, 1, "\\u003c");
    return json;
}

std::string sheetsOf(const LookFacts &facts, const LoupeLinks &links)
{
    std::vector<std::string> pages;
    for (const PageFacts &page : facts.pages)
        if (std::string sheet = sheetOf(page); !sheet.empty())
            pages.push_back(std::move(sheet));
    return inElement(io::jsonObject({{"tile", std::to_string(kTileSide)},
                                     {"tiles", io::jsonText(links.tiles)},
                                     {"pages", io::jsonArray(pages)}}));
}

}  // namespace

std::string folderInLoupe(const std::string &folder)
{
    return io::jsonText(folder);
}

std::string loupeOf(const LookFacts &facts, const LoupeLinks &links)
{
    return html::filled(kLoupePage, {{"title", html::escaped(facts.job.substr(0, 200))},
                                     {"job", html::escaped(facts.job)},
                                     {"back", html::escaped(links.back)},
                                     {"style", std::string(kLoupeStyle)},
                                     {"viewer-style", std::string(kViewerStyle)},
                                     {"viewer-licence", std::string(kViewerLicence)},
                                     {"viewer", std::string(kViewer)},
                                     {"sheets", sheetsOf(facts, links)},
                                     {"script", std::string(kLoupeScript)}});
}

void writeLoupe(const std::filesystem::path &file, const LookFacts &facts, const LoupeLinks &links)
{
    io::writeFile(file, loupeOf(facts, links));
}

}  // namespace riders::looking
