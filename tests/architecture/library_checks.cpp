#include "architecture/arrows.h"
#include "architecture/checks.h"
#include "architecture/standard_headers.h"

namespace architecture {

namespace {

std::string wrongLibrary(const Table &table, const Room &room, const std::string &file, const std::string &header)
{
    std::string reason = " is of no library in the table of libraries";
    for (const Library &library : table.libraries)
        for (const std::string &pattern : library.headers)
            if (matches(pattern, header)) {
                if (covers(library.rooms, room, file))
                    return "";
                reason = " is " + library.name + "'s, which " + room.path + " may not use";
            }
    return reason + "; see " + table.document;
}

}  // namespace

Findings wrongLibraries(const Table &table, const Tree &tree)
{
    Findings found;
    for (const auto &[path, file] : tree.files)
        for (const Include &include : file.includes) {
            const Room *room = table.roomOf(path);
            if (!room || include.at.quoted || !include.target.empty() || isStandard(include.at.name))
                continue;
            if (std::string reason = wrongLibrary(table, *room, path, include.at.name); !reason.empty())
                found.push_back(at(path, include.at.line) + " includes <" + include.at.name + ">, which" + reason);
        }
    return found;
}

}  // namespace architecture
