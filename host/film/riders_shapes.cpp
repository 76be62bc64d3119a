#include "film/riders_shapes.h"

#include <algorithm>
#include <cstdlib>

namespace riders::film {
namespace {

// What a riders file has before and after the body of a dot shape.
constexpr std::string_view kForAll = "riderReadSpot ", kForPlate = " riderShapeOnPlate ",
                           kAfter = "%end-of-dot-shape%";
constexpr std::size_t kLongestHead = 300;  // a plate's name in hexadecimal, and the words after it

// The bytes of "<4379616E>"; empty for what is something else.
std::string nameFrom(const std::string &hex)
{
    if (hex.size() < 2 || hex.front() != '<' || hex.back() != '>')
        return {};
    std::string name;
    for (std::size_t at = 1; at + 2 < hex.size(); at += 2)
        name += static_cast<char>(std::strtol(hex.substr(at, 2).c_str(), nullptr, 16));
    return name;
}

}  // namespace

std::map<std::string, std::string> shapesInRiders(const std::string &riders)
{
    std::map<std::string, std::string> shapes;
    for (std::size_t at = 0; at < riders.size();) {
        const std::size_t line = at;
        at = std::min(riders.find('\n', line), riders.size()) + 1;
        const std::string head = riders.substr(line, std::min(at - line, kLongestHead));
        const std::size_t word = head.find(kForPlate);
        const bool all = head.starts_with(kForAll);
        const std::string plate = word == std::string::npos ? "" : nameFrom(head.substr(0, word));
        if (!all && plate.empty())
            continue;
        const std::size_t start = line + (all ? kForAll.size() : word + kForPlate.size());
        const std::size_t end = riders.find(kAfter, start);
        if (end == std::string::npos)
            break;
        shapes.emplace(all ? "" : plate, riders.substr(start, end - start));
        at = end;  // the body may hold anything
    }
    return shapes;
}

}  // namespace riders::film
