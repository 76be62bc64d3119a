#include <filesystem>
#include <map>

#include "architecture/arrows.h"
#include "architecture/checks.h"

namespace architecture {

namespace {

// The outermost folder.
std::string house(const std::string &path)
{
    return path.substr(0, path.find('/'));
}

bool isPublic(const std::string &path)
{
    return path.starts_with("include/") || path.starts_with(house(path) + "/include/");
}

bool mayKnow(const Room &from, const Room &to, const std::string &file)
{
    return from.knowsEverything || &from == &to || covers(from.mayKnow, to, file);
}

// The public headers that have each word.
using Declared = std::map<std::string, std::vector<std::string>>;

Declared declared(const Tree &tree)
{
    Declared found;
    for (const auto &[path, file] : tree.files)
        if (isPublic(path))
            for (const std::string &word : words(file.text))
                found[word].push_back(path);
    return found;
}

bool mayUse(const Table &table, const Declared &headers, const Arrow &arrow)
{
    const Room &from = *table.roomOf(arrow.from), &to = *table.roomOf(arrow.to);
    if (mayKnow(from, to, arrow.to) || mayKnow(from, to, unit(arrow.to) + ".h"))
        return true;
    auto found = headers.find(arrow.word);
    if (house(from.path) == house(to.path) || found == headers.end())
        return false;
    for (const std::string &header : found->second)
        if (const Room *room = table.roomOf(header);
            room && house(header) == house(to.path) && mayKnow(from, *room, header))
            return true;
    return false;
}

// Why an arrow is wrong, and what to do.
std::string refusal(const Table &table, const Room &from, const Room &to, const std::string &file)
{
    std::string document = "; see the table in " + table.document;
    if (house(from.path) == house(to.path) || isPublic(file))
        return from.path + " may not know " + to.path + document;
    return "it is private to " + house(to.path) + "/, and " + from.path +
           " may not look inside: use what is public, or name the file in the row of " + from.path + document;
}

bool exists(const Tree &tree, const std::string &path)
{
    namespace fs = std::filesystem;
    fs::path whole = fs::path(tree.top) / path;
    return path.ends_with("/") ? fs::is_directory(whole) && !fs::is_empty(whole) : fs::is_regular_file(whole);
}

bool known(const Table &table, const Tree &tree, const std::string &entry)
{
    if (entry.ends_with("/*"))
        return exists(tree, entry.substr(0, entry.size() - 1));
    for (const Room &room : table.rooms)
        if (room.path == entry)
            return true;
    return !entry.ends_with("/") && exists(tree, entry);
}

}  // namespace

Findings wrongRows(const Table &table, const Tree &tree)
{
    Findings found;
    for (const Room &room : table.rooms) {
        std::string place = at(table.document, room.line);
        if (!exists(tree, room.path))
            found.push_back(place + ": there is nothing in the room " + room.path +
                            "; take its row out of the table");
        for (const std::string &entry : room.mayKnow)
            if (!known(table, tree, entry))
                found.push_back(place + ": " + room.path + " may know " + entry +
                                ", which is neither a room with a row nor a file; mend the row");
    }
    return found;
}

Findings homelessFiles(const Table &table, const Tree &tree)
{
    Findings found;
    for (const auto &[path, file] : tree.files)
        if (!table.roomOf(path))
            found.push_back(path + " is in no room; move it to one, or give its folder a row in the table in " +
                            table.document);
    return found;
}

Findings lostIncludes(const Tree &tree)
{
    Findings found;
    for (const auto &[path, file] : tree.files)
        for (const Include &include : file.includes)
            if (include.at.quoted && include.target.empty())
                found.push_back(at(path, include.at.line) + " includes \"" + include.at.name +
                                "\", which is no file of the tree; a library's header stands between < and >");
    return found;
}

Findings wrongIncludes(const Table &table, const Tree &tree)
{
    Findings found;
    for (const Arrow &arrow : includeArrows(tree)) {
        const Room *from = table.roomOf(arrow.from), *to = table.roomOf(arrow.to);
        if (from && to && !mayKnow(*from, *to, arrow.to))
            found.push_back(at(arrow.from, arrow.line) + " " + arrow.text + ": " +
                            refusal(table, *from, *to, arrow.to));
    }
    return found;
}

Findings wrongUses(const Table &table, const Tree &tree, const Symbols &symbols)
{
    Findings found;
    const Declared headers = declared(tree);
    for (const Arrow &arrow : useArrows(tree, symbols)) {
        const Room *from = table.roomOf(arrow.from), *to = table.roomOf(arrow.to);
        if (from && to && !mayUse(table, headers, arrow))
            found.push_back(place(tree, arrow) + " " + arrow.text + ": " + refusal(table, *from, *to, arrow.to));
    }
    return found;
}

}  // namespace architecture
