#include "architecture/arrows.h"
#include "architecture/checks.h"
#include "architecture/graph.h"

namespace architecture {

namespace {

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

// Circles among the groups that `group` puts the files in; a file for which it
// returns "" is left out.
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

}  // namespace

Findings tableCircles(const Table &table)
{
    Graph graph;
    for (const Room &from : table.rooms)
        for (const Room &to : table.rooms)
            if (&from != &to && !from.knowsEverything && covers(from.mayKnow, to, to.path))
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

}  // namespace architecture
