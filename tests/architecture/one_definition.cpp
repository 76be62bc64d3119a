#include "architecture/one_definition.h"

#include <sstream>

#include "architecture/programs.h"

namespace architecture {

namespace {

// The compiler names files from where it runs; here from the top of the tree.
std::string fromTop(std::string line, const std::string &top)
{
    size_t place = line.find(top.substr(1) + "/");
    if (place != std::string::npos && line.find(' ') > place)
        line.erase(0, place + top.size());
    return line;
}

}  // namespace

Findings differingDefinitions(const std::string &compiler, const std::string &top,
                              const std::vector<Compiled> &compiled)
{
    std::vector<std::string> objects;
    Findings found;
    for (const Compiled &one : compiled) {
        objects.push_back(one.object);
        if (!one.keepsTypes)
            found.push_back(one.source + " is compiled without -flto, so its types cannot be compared");
    }
    TemporaryFolder folder;
    // Joined only, not made into code again.
    std::string options =
        " -r -flto -flinker-output=rel -Wodr -Wlto-type-mismatch -o " + folder.path() + "/joined.o ";
    std::istringstream lines(outputOf("LC_ALL=C " + compiler + options + listArgument(folder, objects)));
    for (std::string line; std::getline(lines, line);) {
        if (line.find(": warning: ") != std::string::npos)
            found.push_back(fromTop(line, top));
        else if (line.find(": note: ") != std::string::npos && !found.empty())
            found.back() += "\n    " + fromTop(line, top);
    }
    return found;
}

}  // namespace architecture
