#include "screens/set_names.h"

#include <strings.h>

#include <system_error>
#include <vector>

#include "io/nearest.h"
#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::screens {
namespace {

constexpr const char *kExtension = ".toml";

void addFiles(std::map<std::string, fs::path> &files, const fs::path &folder)
{
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
        if (at->path().extension() == kExtension && !at->path().filename().string().starts_with('.'))
            files.emplace(at->path().stem().string(), at->path());
    if (error && fs::exists(folder))
        throw io::Refusal(folder.string() + ": " + error.message());
}

}  // namespace

std::map<std::string, fs::path> setFiles(const SetFolders &folders)
{
    std::map<std::string, fs::path> files;
    addFiles(files, folders.own);
    addFiles(files, folders.installed);
    return files;
}

fs::path setFileNamed(const std::string &nameOrFile, const SetFolders &folders)
{
    std::error_code ignored;
    if (nameOrFile.find('/') != std::string::npos)
        return nameOrFile;
    const std::map<std::string, fs::path> files = setFiles(folders);
    for (const auto &[name, file] : files)
        if (strcasecmp(name.c_str(), nameOrFile.c_str()) == 0)
            return file;
    if (fs::is_regular_file(nameOrFile, ignored))
        return nameOrFile;
    std::vector<std::string> names;
    for (const auto &[name, file] : files)
        names.push_back(name);
    throw io::Refusal("there is no set of screens and no file \"" + nameOrFile +
                      "\"; riders screens lists the sets" + io::didYouMean(nameOrFile, names));
}

}  // namespace riders::screens
