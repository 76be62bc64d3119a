#include "commands/plates_in_json.h"

#include "io/json.h"

namespace riders::commands {

std::vector<std::pair<std::string, std::string>> plateMembers(const screens::PlateScreen &plate)
{
    std::vector<std::pair<std::string, std::string>> members = {{"plate", io::jsonText(plate.plate)}};
    if (plate.frequency)
        members.emplace_back("frequency", io::jsonNumber(*plate.frequency));
    if (plate.angle)
        members.emplace_back("angle", io::jsonNumber(*plate.angle));
    if (!plate.shape.empty())
        members.emplace_back("shape", io::jsonText(plate.shape));
    return members;
}

std::string platesInJson(const std::vector<screens::PlateScreen> &plates)
{
    std::vector<std::string> values;
    values.reserve(plates.size());
    for (const screens::PlateScreen &plate : plates)
        values.push_back(io::jsonObject(plateMembers(plate)));
    return io::jsonArray(values);
}

}  // namespace riders::commands
