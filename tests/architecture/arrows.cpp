#include "architecture/arrows.h"

namespace architecture {

namespace {

std::string lastName(const std::string &name)
{
    return name.substr(name.find_last_of(": ~") + 1);
}

}  // namespace

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

std::string at(const std::string &file, int line)
{
    return line > 0 ? file + ":" + std::to_string(line) : file;
}

std::string place(const Tree &tree, const Arrow &arrow)
{
    int line = arrow.line > 0 ? arrow.line : lineOfWord(tree.files.at(arrow.from).text, arrow.word);
    return at(arrow.from, line);
}

std::string unit(const std::string &file)
{
    return file.substr(0, file.rfind('.'));
}

}  // namespace architecture
