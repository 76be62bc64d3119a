#include "commands/film_words.h"

#include "io/decimal.h"
#include "io/json.h"
#include "io/plain_text.h"
#include "screens/number_text.h"

namespace riders::commands {
namespace {

using film::BlankPlate;
using film::PlateMade;
using Members = std::vector<std::pair<std::string, std::string>>;

std::string lineOf(const PlateMade &made)
{
    std::string line = made.file.string() + ": page " + std::to_string(made.page) + ", " + made.plate + ": " +
                       screens::numberText(made.asked.frequency) + " lpi at " +
                       screens::numberText(made.asked.angle) + "°, " + made.asked.shape.name;
    line += made.measured.found ? "; measured " + io::decimal(made.measured.frequency, 2) + " lpi at " +
                                      io::decimal(made.measured.angle, 2) + "°"
                                : "; no tint to measure it on";
    return io::plainText(line) + "\n";
}

std::string inJson(const screening::Resolution &resolution)
{
    return io::jsonArray({io::jsonNumber(resolution.across), io::jsonNumber(resolution.down)});
}

std::string measuredInJson(const plates::MeasuredScreen &measured)
{
    if (!measured.found)
        return "null";
    Members members = {{"frequency", io::jsonNumber(measured.frequency)},
                       {"angle", io::jsonNumber(measured.angle)},
                       {"ink", io::jsonNumber(measured.ink)}};
    if (!measured.shape.empty())
        members.emplace_back("shape", io::jsonText(measured.shape));
    return io::jsonObject(members);
}

std::string inJson(const PlateMade &made)
{
    std::vector<std::string> warnings;
    for (const std::string &warning : made.warnings)
        warnings.push_back(io::jsonText(warning));
    return io::jsonObject({{"file", io::jsonText(made.file.native())},
                           {"page", std::to_string(made.page)},
                           {"plate", io::jsonText(made.plate)},
                           {"asked", io::jsonObject({{"frequency", io::jsonNumber(made.asked.frequency)},
                                                     {"angle", io::jsonNumber(made.asked.angle)},
                                                     {"shape", io::jsonText(made.asked.shape.name)},
                                                     {"by", io::jsonText(made.asked.by)}})},
                           {"made", io::jsonObject({{"frequency", io::jsonNumber(made.frequency)},
                                                    {"angle", io::jsonNumber(made.angle)}})},
                           {"measured", measuredInJson(made.measured)},
                           {"pixels", io::jsonArray({std::to_string(made.columns), std::to_string(made.rows)})},
                           {"dpi", inJson(made.resolution)},
                           {"inches", io::jsonArray({io::jsonNumber(double(made.columns) / made.resolution.across),
                                                     io::jsonNumber(double(made.rows) / made.resolution.down)})},
                           {"warnings", io::jsonArray(warnings)}});
}

}  // namespace

std::string filmsInWords(const film::FilmsMade &made)
{
    std::string lines;
    for (const PlateMade &film : made.films)
        lines += lineOf(film);
    std::string blank;
    for (const BlankPlate &plate : made.blank)
        blank += (blank.empty() ? "" : ", ") + std::to_string(plate.page) + " " + io::plainText(plate.plate);
    if (!blank.empty())
        lines += "no film of plates without ink (page, plate): " + blank + "\n";
    return made.look.empty() ? lines : lines + "to look at: " + io::plainText(made.look.string()) + "\n";
}

std::string filmsInJson(const film::FilmsMade &made)
{
    std::vector<std::string> films, blank;
    for (const PlateMade &film : made.films)
        films.push_back(inJson(film));
    for (const BlankPlate &plate : made.blank)
        blank.push_back(
            io::jsonObject({{"page", std::to_string(plate.page)}, {"plate", io::jsonText(plate.plate)}}));
    Members members = {{"films", io::jsonArray(films)}, {"blank", io::jsonArray(blank)}};
    if (!made.look.empty())
        members.emplace_back("look", io::jsonText(made.look.native()));
    return io::jsonObject(members) + "\n";
}

std::string warningsInWords(const film::FilmsMade &made, const std::string &command)
{
    std::string lines;
    for (const PlateMade &film : made.films)
        for (const std::string &warning : film.warnings)
            lines += command + ": page " + std::to_string(film.page) + ", " + io::plainText(film.plate) + ": " +
                     io::plainText(warning) + "\n";
    return lines;
}

}  // namespace riders::commands
