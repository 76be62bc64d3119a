#include "architecture/checks.h"

#include <filesystem>

#include "architecture/graph.h"

namespace architecture {

namespace {

std::string at(const std::string &file, int line)
{
    return line > 0 ? file + ":" + std::to_string(line) : file;
}

// The outermost folder.
std::string house(const std::string &path)
{
    return path.substr(0, path.find('/'));
}

bool isPublic(const std::string &path)
{
    return path.starts_with("include/") || path.starts_with(house(path) + "/include/");
}

// A file with the header or source file of its name.
std::string unit(const std::string &file)
{
    return file.substr(0, file.rfind('.'));
}

bool mayKnow(const Room &from, const Room &to, const std::string &file)
{
    return from.knowsEverything || &from == &to || covers(from.mayKnow, to, file);
}

bool mayUse(const Table &table, const Room &from, const Room &to, const std::string &file)
{
    if (mayKnow(from, to, file) || mayKnow(from, to, unit(file) + ".h"))
        return true;
    if (house(from.path) == house(to.path))
        return false;
    for (const Room &other : table.rooms)
        if (isPublic(other.path) && house(other.path) == house(to.path) && mayKnow(from, other, other.path))
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

struct Arrow {
    std::string from, to;  // files
    int line = 0;
    std::string text;  // what it does, for a sentence
    std::string word;  // where the line is not known, what stands on it
};

std::vector<Arrow> includeArrows(const Tree &tree)
{
    std::vector<Arrow> arrows;
    for (const auto &[path, file] : tree.files)
        for (const Include &include : file.includes)
            if (!include.target.empty())
                arrows.push_back(
                    {path, include.target, include.at.line, "includes \"" + include.at.name + "\"", ""});
    return arrows;
}

std::string lastName(const std::string &name)
{
    return name.substr(name.find_last_of(": ") + 1);
}

// Uses of what has a home. Of what has several, because they are for different
// programs, none is known to be meant.
std::vector<Arrow> useArrows(const Tree &tree, const Symbols &symbols)
{
    std::vector<Arrow> arrows;
    for (const auto &[source, wanted] : symbols.wanted)
        for (const std::string &symbol : wanted) {
            auto home = symbols.homes.find(symbol);
            if (home == symbols.homes.end() || home->second.size() != 1 || !tree.files.contains(source))
                continue;
            std::string name = readable(symbol), lives = *home->second.begin();
            arrows.push_back({source, lives, 0, "uses " + name + ", which lives in " + lives, lastName(name)});
        }
    return arrows;
}

std::vector<Arrow> allArrows(const Tree &tree, const Symbols &symbols)
{
    std::vector<Arrow> arrows = includeArrows(tree);
    for (const Arrow &arrow : useArrows(tree, symbols))
        arrows.push_back(arrow);
    return arrows;
}

// Where a file does it. Of a use, its first mention.
std::string place(const Tree &tree, const Arrow &arrow)
{
    int line = arrow.line > 0 ? arrow.line : lineOfWord(tree.files.at(arrow.from).text, arrow.word);
    return at(arrow.from, line);
}

std::string sentence(const Tree &tree, const std::string &kind, const std::vector<std::string> &path,
                     const std::map<std::string, std::map<std::string, Arrow>> &by)
{
    std::string whole = kind;
    for (size_t i = 0; i < path.size(); ++i)
        whole += (i == 0 ? " " : " -> ") + path[i];
    for (size_t i = 0; i + 1 < path.size(); ++i) {
        const Arrow &arrow = by.at(path[i]).at(path[i + 1]);
        whole += "\n    " + place(tree, arrow) + " " + arrow.text;
    }
    return whole + "\n    take one of these out, or move what both need to a place of its own";
}

// Circles among what `group` makes of the files; nothing where it gives "".
template <class Group>
Findings circlesOf(const Tree &tree, const std::vector<Arrow> &arrows, const std::string &kind, Group group)
{
    Graph graph;
    std::map<std::string, std::map<std::string, Arrow>> by;
    for (const Arrow &arrow : arrows) {
        std::string from = group(arrow.from), to = group(arrow.to);
        if (from.empty() || to.empty() || from == to)
            continue;
        graph[from].insert(to);
        by[from].emplace(to, arrow);
    }
    Findings found;
    for (const std::vector<std::string> &path : circles(graph))
        found.push_back(sentence(tree, kind, path, by));
    return found;
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

Findings circlesInTable(const Table &table)
{
    Graph graph;
    for (const Room &from : table.rooms)
        for (const Room &to : table.rooms)
            if (&from != &to && !from.knowsEverything && mayKnow(from, to, to.path))
                graph[from.path].insert(to.path);
    Findings found;
    for (const std::vector<std::string> &path : circles(graph)) {
        std::string whole = table.document + ": the table lets rooms know each other in a circle: ";
        for (size_t i = 0; i < path.size(); ++i)
            whole += (i == 0 ? "" : " -> ") + path[i];
        found.push_back(whole + "; take one of these out of its row");
    }
    return found;
}

// Headers of the C++ standard library and those it has from C.
bool isStandard(const std::string &header)
{
    static const std::set<std::string> names = {"algorithm",
                                                "any",
                                                "array",
                                                "atomic",
                                                "barrier",
                                                "bit",
                                                "bitset",
                                                "cassert",
                                                "cctype",
                                                "cerrno",
                                                "cfenv",
                                                "cfloat",
                                                "charconv",
                                                "chrono",
                                                "cinttypes",
                                                "climits",
                                                "clocale",
                                                "cmath",
                                                "codecvt",
                                                "compare",
                                                "complex",
                                                "concepts",
                                                "condition_variable",
                                                "coroutine",
                                                "csetjmp",
                                                "csignal",
                                                "cstdarg",
                                                "cstddef",
                                                "cstdint",
                                                "cstdio",
                                                "cstdlib",
                                                "cstring",
                                                "ctime",
                                                "cuchar",
                                                "cwchar",
                                                "cwctype",
                                                "deque",
                                                "exception",
                                                "execution",
                                                "filesystem",
                                                "format",
                                                "forward_list",
                                                "fstream",
                                                "functional",
                                                "future",
                                                "initializer_list",
                                                "iomanip",
                                                "ios",
                                                "iosfwd",
                                                "iostream",
                                                "istream",
                                                "iterator",
                                                "latch",
                                                "limits",
                                                "list",
                                                "locale",
                                                "map",
                                                "memory",
                                                "memory_resource",
                                                "mutex",
                                                "new",
                                                "numbers",
                                                "numeric",
                                                "optional",
                                                "ostream",
                                                "queue",
                                                "random",
                                                "ranges",
                                                "ratio",
                                                "regex",
                                                "scoped_allocator",
                                                "semaphore",
                                                "set",
                                                "shared_mutex",
                                                "source_location",
                                                "span",
                                                "sstream",
                                                "stack",
                                                "stdexcept",
                                                "stop_token",
                                                "streambuf",
                                                "string",
                                                "string_view",
                                                "strstream",
                                                "syncstream",
                                                "system_error",
                                                "thread",
                                                "tuple",
                                                "type_traits",
                                                "typeindex",
                                                "typeinfo",
                                                "unordered_map",
                                                "unordered_set",
                                                "utility",
                                                "valarray",
                                                "variant",
                                                "vector",
                                                "version",
                                                "assert.h",
                                                "ctype.h",
                                                "errno.h",
                                                "fenv.h",
                                                "float.h",
                                                "inttypes.h",
                                                "limits.h",
                                                "locale.h",
                                                "math.h",
                                                "setjmp.h",
                                                "signal.h",
                                                "stdarg.h",
                                                "stddef.h",
                                                "stdint.h",
                                                "stdio.h",
                                                "stdlib.h",
                                                "string.h",
                                                "time.h",
                                                "uchar.h",
                                                "wchar.h",
                                                "wctype.h"};
    return names.contains(header);
}

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

// Folders below tests/ are programs of their own, but for what they share; so
// are the benchmarks, the examples and the art. All else may meet in one program.
std::string program(const std::string &file)
{
    if (file.starts_with("tests/") && !file.starts_with("tests/support/"))
        return file.substr(0, file.find('/', 6));
    if (file.starts_with("bench/") || file.starts_with("examples/") || file.starts_with("tools/art/"))
        return house(file);
    return "";
}

bool meet(const std::string &one, const std::string &other)
{
    std::string first = program(one), second = program(other);
    return first.empty() || second.empty() || first == second;
}

}  // namespace

Findings wrongRows(const Table &table, const Tree &tree)
{
    Findings found = circlesInTable(table);
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
    for (const Arrow &arrow : useArrows(tree, symbols)) {
        const Room *from = table.roomOf(arrow.from), *to = table.roomOf(arrow.to);
        if (from && to && !mayUse(table, *from, *to, arrow.to))
            found.push_back(place(tree, arrow) + " " + arrow.text + ": " + refusal(table, *from, *to, arrow.to));
    }
    return found;
}

Findings fileCircles(const Tree &tree, const Symbols &symbols)
{
    return circlesOf(tree, allArrows(tree, symbols), "files know each other in a circle:", unit);
}

Findings roomCircles(const Table &table, const Tree &tree, const Symbols &symbols)
{
    return circlesOf(tree, allArrows(tree, symbols),
                     "rooms know each other in a circle:", [&](const std::string &file) {
                         const Room *room = table.roomOf(file);
                         return room && !room->knowsEverything ? room->path : "";
                     });
}

Findings typesTwice(const Tree &tree)
{
    std::map<std::string, std::vector<std::pair<std::string, int>>> places;
    Findings found;
    for (const auto &[path, file] : tree.files)
        for (const TypeDefinition &type : typeDefinitions(file.text)) {
            auto &earlier = places[type.name];
            for (const auto &[other, line] : earlier)
                if (other != path && meet(other, path))
                    found.push_back(
                        at(path, type.line) + " defines " + type.name + ", and so does " + at(other, line) +
                        ": in one program these are one type; rename one, or give each room its namespace");
            earlier.push_back({path, type.line});
        }
    return found;
}

}  // namespace architecture
