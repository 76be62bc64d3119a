#include "architecture/symbols.h"

#include <cxxabi.h>
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace architecture {

namespace {

namespace fs = std::filesystem;

std::string outputOf(const std::string &command)
{
    std::unique_ptr<FILE, int (*)(FILE *)> pipe(popen(command.c_str(), "r"), pclose);
    if (!pipe)
        throw std::runtime_error("cannot run " + command);
    std::string output;
    std::array<char, 65536> part;
    while (size_t count = fread(part.data(), 1, part.size(), pipe.get()))
        output.append(part.data(), count);
    if (pclose(pipe.release()) != 0)
        throw std::runtime_error("failed: " + command);
    return output;
}

// A list of files for a program that takes them with @, gone when this is.
class ListFile {
public:
    ListFile() : path_(fs::temp_directory_path() / "riders-objects-XXXXXX")
    {
        int file = mkstemp(path_.data());
        if (file < 0)
            throw std::runtime_error("cannot make " + path_);
        close(file);
    }
    ~ListFile() { unlink(path_.c_str()); }
    ListFile(const ListFile &) = delete;
    const std::string &path() const { return path_; }

private:
    std::string path_;
};

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
    ListFile list;
    std::ofstream names(list.path());
    for (const Compiled &one : compiled) {
        if (fs::exists(one.object))
            names << one.object << '\n';
        else
            symbols.missing.push_back(one.source);
        sources[one.object] = one.source;
    }
    names.close();
    std::istringstream lines(outputOf(nm + " -A -P @" + list.path()));
    for (std::string line; std::getline(lines, line);)
        addLine(symbols, sources, line);
    return symbols;
}

std::string readable(const std::string &symbol)
{
    int status = 0;
    std::unique_ptr<char, decltype(&free)> name(abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status),
                                                free);
    std::string whole = status == 0 ? name.get() : symbol;
    return whole.substr(0, whole.find('('));
}

}  // namespace architecture
