#include "architecture/tree.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace architecture {

namespace {

namespace fs = std::filesystem;

std::string folderOf(const std::string &path)
{
    size_t slash = path.rfind('/');
    return slash == std::string::npos ? "" : path.substr(0, slash);
}

// The path from the top of the tree, "." for that; empty where it is outside the
// tree or in the build folder.
std::string inTree(const std::string &path, const std::string &top)
{
    std::string clean = fs::path(path).lexically_normal().string();
    if (clean == top || clean == top + "/")
        return ".";
    if (!clean.starts_with(top + "/"))
        return "";
    clean.erase(0, top.size() + 1);
    return clean.starts_with("build/") ? "" : clean;
}

void addNew(std::vector<std::string> &all, const std::vector<std::string> &more)
{
    for (const std::string &one : more)
        if (std::find(all.begin(), all.end(), one) == all.end())
            all.push_back(one);
}

// For each file the folders to look in; and for each folder those of all files
// in it and below.
std::map<std::string, std::vector<std::string>> lookedInBy(const std::vector<Compiled> &compiled)
{
    std::map<std::string, std::vector<std::string>> found;
    for (const Compiled &one : compiled) {
        addNew(found[one.source], one.lookedIn);
        for (std::string path = one.source; !path.empty();) {
            path = folderOf(path);
            addNew(found[path], one.lookedIn);
        }
    }
    return found;
}

std::string target(const IncludeLine &line, const std::string &file,
                   const std::map<std::string, std::vector<std::string>> &lookedIn, const Tree &tree)
{
    std::string own = (fs::path(folderOf(file)) / line.name).lexically_normal().string();
    if (line.quoted && tree.files.contains(own))
        return own;
    std::string path = file;
    while (!path.empty() && !lookedIn.contains(path))
        path = folderOf(path);
    if (auto folders = lookedIn.find(path); folders != lookedIn.end())
        for (const std::string &folder : folders->second)
            if (std::string there = (fs::path(folder) / line.name).lexically_normal().string();
                tree.files.contains(there))
                return there;
    return "";
}

void readFiles(Tree &tree)
{
    for (auto entry = fs::recursive_directory_iterator(tree.top); entry != fs::recursive_directory_iterator();
         ++entry) {
        std::string name = entry->path().filename().string();
        if (entry->is_directory() && (name[0] == '.' || entry->path() == tree.top + "/build"))
            entry.disable_recursion_pending();
        else if (entry->is_regular_file() && (name.ends_with(".h") || name.ends_with(".cpp")))
            tree.files[inTree(entry->path().string(), tree.top)].text = readFile(entry->path().string());
    }
}

// The value of a line `"key": "value"`, as CMake writes it.
bool valueOf(const std::string &line, const std::string &key, std::string &value)
{
    std::string start = "\"" + key + "\": \"";
    size_t from = line.find(start), to = line.rfind('"');
    if (from == std::string::npos)
        return false;
    value.clear();
    for (size_t at = from + start.size(); at < to; ++at)
        value += line[at] == '\\' ? line[++at] : line[at];
    return true;
}

// The path from the top of the tree of a file that is compiled. What the build in
// `folder` makes of a file of the tree, x.ps.cpp of x.ps, counts as lying beside it.
std::string sourceInTree(const std::string &path, const std::string &folder, const std::string &top)
{
    if (!path.starts_with(folder + "/"))
        return inTree(path, top);
    std::string made = path.substr(folder.size() + 1), from = made.substr(0, made.rfind('.'));
    return fs::is_regular_file(fs::path(top) / from) ? made : "";
}

Compiled compiledBy(const std::string &command, const std::string &folder, const std::string &top)
{
    Compiled found;
    std::istringstream text(command);
    std::vector<std::string> words{std::istream_iterator<std::string>(text), {}};
    for (size_t i = 0; i < words.size(); ++i) {
        std::string looked;
        if (words[i].starts_with("-I"))
            looked = words[i].substr(2);
        else if (i + 1 < words.size() && words[i] == "-iquote")
            looked = words[i + 1];
        else if (i + 1 < words.size() && words[i] == "-o")
            found.object = fs::path(folder) / words[i + 1];
        found.keepsTypes |= words[i] == "-flto";
        if (std::string path = inTree(looked, top); !path.empty())
            addNew(found.lookedIn, {path});
    }
    return found;
}

}  // namespace

Tree readTree(const std::string &top, const std::vector<Compiled> &compiled)
{
    Tree tree{top, {}, compiled};
    readFiles(tree);
    std::map<std::string, std::vector<std::string>> lookedIn = lookedInBy(compiled);
    for (auto &[path, file] : tree.files)
        for (const IncludeLine &line : includeLines(file.text))
            file.includes.push_back({line, target(line, path, lookedIn, tree)});
    return tree;
}

std::vector<Compiled> readCompileCommands(const std::string &file, const std::string &top)
{
    std::vector<Compiled> found;
    std::istringstream lines(readFile(file));
    std::string folder, command, source;
    for (std::string line; std::getline(lines, line);) {
        if (valueOf(line, "directory", folder) || valueOf(line, "command", command) ||
            !valueOf(line, "file", source))
            continue;
        std::string path = sourceInTree(source, folder, top);
        if (path.empty())
            continue;
        found.push_back(compiledBy(command, folder, top));
        found.back().source = path;
    }
    return found;
}

std::string readFile(const std::string &path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace architecture
