#include <algorithm>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "architecture/arrows.h"
#include "architecture/checks.h"

namespace architecture {

namespace {

// A call of riders_room, with the rooms as they are in the table.
struct Linked {
    int line = 0;
    std::set<std::string> rooms;
};

std::string withoutHashComments(const std::string &text)
{
    static const std::regex comment("#[^\n]*");
    return std::regex_replace(text, comment, "");
}

std::map<std::string, Linked> linkedRooms(const std::string &text, const std::string &folder)
{
    static const std::regex form(R"(riders_room\(([^)]*)\))");
    std::map<std::string, Linked> found;
    std::string code = withoutHashComments(text);
    for (std::sregex_iterator call(code.begin(), code.end(), form), none; call != none; ++call) {
        std::istringstream words((*call)[1]);
        std::string word, part;
        words >> word;
        Linked &linked = found[folder + word + "/"];
        linked.line = 1 + static_cast<int>(std::count(code.begin(), code.begin() + call->position(), '\n'));
        while (words >> word)
            if (word == "KNOWS" || word == "LINKS" || word == "PIXELS")
                part = word;
            else if (part == "KNOWS")
                linked.rooms.insert(folder + word + "/");
    }
    return found;
}

// All rooms that come with a room.
std::set<std::string> reached(const std::map<std::string, Linked> &all, const std::string &from)
{
    std::set<std::string> found;
    std::vector<std::string> open{from};
    while (!open.empty()) {
        auto room = all.find(open.back());
        open.pop_back();
        if (room == all.end())
            continue;
        for (const std::string &next : room->second.rooms)
            if (found.insert(next).second)
                open.push_back(next);
    }
    return found;
}

// What is wrong with the links of the room of this row, and what to do.
Findings wrongLinksOf(const Room &row, const std::map<std::string, Linked> &all, const std::string &document)
{
    Findings found;
    const std::set<std::string> links = reached(all, row.path);
    for (const std::string &room : all.at(row.path).rooms)
        if (std::find(row.mayKnow.begin(), row.mayKnow.end(), room) == row.mayKnow.end())
            found.push_back(row.path + " links " + room + ", which is not in its row in " + document +
                            "; take it from after KNOWS, or put it in the row");
    for (const std::string &room : row.mayKnow)
        if (all.contains(room) && !links.contains(room))
            found.push_back(row.path + " does not link " + room + ", which is in its row in " + document +
                            "; put it after KNOWS, or take it out of the row");
    return found;
}

}  // namespace

Findings wrongLinks(const Table &table, const std::string &file, const std::string &text)
{
    Findings found;
    const std::map<std::string, Linked> all = linkedRooms(text, file.substr(0, file.rfind('/') + 1));
    for (const auto &[path, linked] : all) {
        const Room *row = table.roomOf(path);
        Findings wrong = row && row->path == path
                             ? wrongLinksOf(*row, all, table.document)
                             : Findings{path + " is not in the table in " + table.document + "; give it a row"};
        for (const std::string &finding : wrong)
            found.push_back(at(file, linked.line) + ": " + finding);
    }
    return found;
}

}  // namespace architecture
