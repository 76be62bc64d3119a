#include <map>

#include "architecture/arrows.h"
#include "architecture/checks.h"
#include "architecture/type_definitions.h"

namespace architecture {

namespace {

// Folders below tests/ are separate programs, except for what they share; so are
// the benchmarks, the examples and the art. Everything else may meet in one
// program.
std::string program(const std::string &file)
{
    if (file.starts_with("tests/") && !file.starts_with("tests/support/"))
        return file.substr(0, file.find('/', 6));
    if (file.starts_with("bench/") || file.starts_with("examples/") || file.starts_with("tools/art/"))
        return file.substr(0, file.find('/'));
    return "";
}

bool meet(const std::string &one, const std::string &other)
{
    std::string first = program(one), second = program(other);
    return first.empty() || second.empty() || first == second;
}

}  // namespace

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
