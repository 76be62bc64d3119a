#include "commands/what_was_made.h"

#include "commands/plates_in_json.h"
#include "io/json.h"
#include "io/plain_text.h"
#include "screens/plate_spelling.h"

namespace riders::commands {

std::string madeInWords(const make::MakeRequest &request, const std::vector<screens::PlateScreen> &plates)
{
    std::vector<std::string> parts;
    for (const screens::PlateScreen &plate : plates) {
        const bool rest = plate.plate == screens::kRestOfPlates && plates.size() > 1;
        parts.push_back((rest ? "the rest " : "") + plateInWords(plate));
    }
    if (request.flatness)
        parts.push_back("flatness " + *request.flatness);
    if (request.annotation)
        parts.push_back("annotation \"" + *request.annotation + "\"" +
                        (request.font ? " in " + *request.font : "") +
                        (request.size ? ", " + *request.size + " points" : ""));
    if (request.errorHandler)
        parts.emplace_back("error handler");
    std::string line = request.output.filename().string() + ":";
    for (const std::string &part : parts)
        line += (&part == &parts.front() ? " " : "; ") + part;
    return io::plainText(line) + "\n";
}

std::string madeInJson(const make::MakeRequest &request, const std::vector<screens::PlateScreen> &plates,
                       const std::string &explained)
{
    std::vector<std::pair<std::string, std::string>> members = {{"file", io::jsonText(request.output.native())},
                                                                {"plates", platesInJson(plates)}};
    if (request.flatness)
        members.emplace_back("flatness", io::jsonText(*request.flatness));
    if (request.annotation)
        members.emplace_back("annotation", io::jsonText(*request.annotation));
    if (request.font)
        members.emplace_back("font", io::jsonText(*request.font));
    if (request.size)
        members.emplace_back("size", io::jsonText(*request.size));
    members.emplace_back("errorHandler", request.errorHandler ? "true" : "false");
    if (!explained.empty())
        members.emplace_back("explained", explained);
    return io::jsonObject(members) + "\n";
}

}  // namespace riders::commands
