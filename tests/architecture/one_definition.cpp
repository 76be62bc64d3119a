#include "architecture/one_definition.h"

#include <filesystem>
#include <sstream>

#include "architecture/programs.h"

namespace architecture {

namespace {

// The compiler names files relative to where it runs, by way of where it ran
// earlier.
std::string fromTop(const std::string &line, const std::string &top)
{
    size_t end = line.find(':');
    std::string path = (std::filesystem::path(top) / line.substr(0, end)).lexically_normal();
    return (path.starts_with(top + "/") ? path.substr(top.size() + 1) : path) + line.substr(end);
}

}  // namespace

Findings differingDefinitions(const std::string &compiler, const std::string &top,
                              const std::vector<Compiled> &compiled)
{
    std::vector<std::string> objects;
    Findings found;
    for (const Compiled &one : compiled) {
        if (!std::filesystem::exists(one.object))
            continue;
        objects.push_back(one.object);
        if (!one.keepsTypes)
            found.push_back(one.source + " is compiled without -flto, so its types cannot be compared");
    }
    if (objects.empty())
        return found;
    TemporaryFolder folder;
    // Joined only, not compiled to code again.
    std::string options =
        " -r -flto -flinker-output=rel -Wodr -Wlto-type-mismatch -o " + folder.path() + "/joined.o ";
    std::istringstream lines(
        outputOf("cd " + top + " && LC_ALL=C " + compiler + options + listArgument(folder, objects)));
    for (std::string line; std::getline(lines, line);) {
        if (line.find(": warning: ") != std::string::npos)
            found.push_back(fromTop(line, top));
        else if (line.find(": note: ") != std::string::npos && !found.empty())
            found.back() += "\n    " + fromTop(line, top);
    }
    return found;
}

}  // namespace architecture
