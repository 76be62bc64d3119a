#include "architecture/symbols.h"

#include "architecture/programs.h"

#include <cxxabi.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <sstream>

namespace architecture {

namespace {

void addLine(Symbols &symbols, const std::map<std::string, std::string> &sources, const std::string &line)
{
    size_t colon = line.find(": ");
    if (colon == std::string::npos)
        return;
    auto source = sources.find(line.substr(0, colon));
    std::istringstream rest(line.substr(colon + 2));
    std::string name;
    char kind = 0;
    rest >> name >> kind;
    if (source == sources.end())
        return;
    if (kind == 'U')
        symbols.wanted[source->second].insert(name);
    else if (std::string("TDBRGSC").find(kind) != std::string::npos)
        symbols.homes[name].insert(source->second);
}

}  // namespace

Symbols readSymbols(const std::string &nm, const std::vector<Compiled> &compiled)
{
    Symbols symbols;
    std::map<std::string, std::string> sources;
    std::vector<std::string> objects;
    for (const Compiled &one : compiled) {
        sources[one.object] = one.source;
        if (std::filesystem::exists(one.object))
            objects.push_back(one.object);
        else
            symbols.missing.push_back(one.source);
    }
    TemporaryFolder folder;
    std::istringstream lines(objects.empty() ? "" : outputOf(nm + " -A -P " + listArgument(folder, objects)));
    for (std::string line; std::getline(lines, line);)
        addLine(symbols, sources, line);
    return symbols;
}

std::string readable(const std::string &symbol)
{
    int status = 0;
    std::unique_ptr<char, decltype(&free)> plain(abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status),
                                                 free);
    std::string whole = status == 0 ? plain.get() : symbol;
    std::string name = whole.substr(0, whole.find('('));
    return name.substr(0, name.find("[abi:"));
}

}  // namespace architecture
