#include "source/resource_names.h"

#include <fstream>
#include <functional>
#include <map>
#include <regex>

namespace {

std::string quoted(const NamedNumber &each)
{
    return (each.type.empty() ? "reason " : "'" + each.type + "' ") + std::to_string(each.number);
}

void eachLine(const std::string &name, const std::function<void(const std::string &, const std::string &)> &use)
{
    std::ifstream in(std::string(RIDERS_SOURCE_DIR) + "/" + name);
    int number = 0;
    for (std::string line; std::getline(in, line);)
        use(line, name + ":" + std::to_string(++number));
}

// Rows of kDotShapes: the piece, and the reason if it is a number.
void eachShape(const std::function<void(const std::smatch &, const std::string &)> &use)
{
    static const std::regex row(R"(^\s+\{(\d+), (\w+)\},\s*(?://\s*(.*))?$)");
    eachLine("source/dotShapes.h", [&](const std::string &line, const std::string &place) {
        std::smatch found;
        if (std::regex_match(line, found, row))
            use(found, place);
    });
}

int firstFree(const std::vector<NamedNumber> &numbers, const NamedNumber &after)
{
    std::set<int> taken;
    for (const NamedNumber &each : numbers)
        if (each.type == after.type)
            taken.insert(each.number);
    int free = after.number;
    while (taken.contains(free))
        ++free;
    return free;
}

}  // namespace

std::vector<NamedNumber> namedResources()
{
    static const std::regex part(R"(^// '(....)'.*)"), entry(R"(^\s+(k\w+) = (\d+),.*)");
    std::vector<NamedNumber> all;
    std::string type;
    eachLine("source/resourceNumbers.h", [&](const std::string &line, const std::string &place) {
        std::smatch found;
        if (std::regex_match(line, found, part))
            type = found[1];
        else if (std::regex_match(line, found, entry))
            all.push_back({type, std::stoi(found[2]), found[1], place});
    });
    eachShape([&](const std::smatch &found, const std::string &place) {
        all.push_back({"TEXT", std::stoi(found[1]), "the dot shape \"" + found[3].str() + "\"", place});
    });
    return all;
}

std::vector<NamedNumber> definedResources()
{
    static const std::map<std::string, std::string> types = {
        {"strings", "STR#"}, {"string", "STR "}, {"menu", "MENU"}, {"dialog", "DLOG"},
        {"alert", "ALRT"},   {"text", "TEXT"},   {"sound", "snd "}};
    static const std::regex plain(R"(^(\w+) (\d+) .*)"), typed(R"(^colors '(....)' (\d+) .*)");
    std::vector<NamedNumber> all;
    for (const char *name : {"strings", "menus", "dialogs", "colors", "standardfile", "pieces", "about"})
        eachLine(std::string("resources/") + name + ".res",
                 [&](const std::string &line, const std::string &place) {
                     std::smatch found;
                     if (std::regex_match(line, found, typed))
                         all.push_back({found[1], std::stoi(found[2]), "", place});
                     else if (std::regex_match(line, found, plain) && types.contains(found[1]))
                         all.push_back({types.at(found[1]), std::stoi(found[2]), "", place});
                 });
    return all;
}

std::vector<NamedNumber> namedReasons()
{
    static const std::regex entry(R"(^\s+(k\w+) = (\d+),.*)");
    std::vector<NamedNumber> all;
    eachLine("source/reasons.h", [&](const std::string &line, const std::string &place) {
        std::smatch found;
        if (std::regex_match(line, found, entry))
            all.push_back({"", std::stoi(found[2]), found[1], place});
    });
    eachShape([&](const std::smatch &found, const std::string &place) {
        if (std::isdigit(static_cast<unsigned char>(found[2].str()[0])))
            all.push_back({"", std::stoi(found[2]), "the dot shape \"" + found[3].str() + "\"", place});
    });
    return all;
}

std::vector<std::string> numbersTaken(const std::vector<NamedNumber> &numbers)
{
    std::vector<std::string> sentences;
    std::map<std::pair<std::string, int>, NamedNumber> seen;
    for (const NamedNumber &each : numbers) {
        auto [first, isNew] = seen.insert({{each.type, each.number}, each});
        if (!isNew)
            sentences.push_back(each.place + ": " + quoted(each) + " is taken, by " + first->second.name + " at " +
                                first->second.place + ". Give " + each.name + " a free number, such as " +
                                std::to_string(firstFree(numbers, each)) + ".");
    }
    return sentences;
}
