#include "files/directory.h"

#include <sys/stat.h>

#include <algorithm>
#include <optional>

#include "files/companion.h"
#include "files/names.h"

namespace fs = std::filesystem;

namespace toolbox::files {
namespace {

constexpr unsigned char invisible = 0x40;  // in the high byte of the Finder flags

using Names = std::vector<std::string>;

// Sorted: aliases are numbered in this order, whatever order the disk has.
Names namesIn(const fs::path &folder)
{
    Names names;
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed))
        names.push_back(entry->path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

// The type, or nothing for an invisible file. A file without a companion has no
// flags.
std::optional<OSType> typeOf(const fs::path &path, bool hasCompanion, FolderTypes types)
{
    if (!hasCompanion && types == FolderTypes::leftOut)
        return OSType{0};
    std::string info;
    readFinderInfo(path, info);
    if (static_cast<unsigned char>(info[8]) & invisible)
        return std::nullopt;
    return types == FolderTypes::included ? typeIn(info) : OSType{0};
}

std::optional<FolderEntry> entryFor(const fs::path &folder, const std::string &linuxName, const Names &all,
                                    FolderTypes types)
{
    fs::path path = folder / linuxName;
    struct stat status;
    if (linuxName.starts_with(".") || stat(path.c_str(), &status) != 0)
        return std::nullopt;
    if (S_ISDIR(status.st_mode))
        return FolderEntry{linuxName, macNameFor(folder, linuxName), true, 0};
    if (!S_ISREG(status.st_mode))
        return std::nullopt;
    bool hasCompanion = std::binary_search(all.begin(), all.end(), companionOf(path).filename().string());
    std::optional<OSType> type = typeOf(path, hasCompanion, types);
    if (!type)
        return std::nullopt;
    return FolderEntry{linuxName, macNameFor(folder, linuxName), false, *type};
}

fs::path tidy(const fs::path &folder)
{
    std::error_code failed;
    fs::path canonical = fs::weakly_canonical(folder, failed);
    return failed ? folder : canonical;
}

}  // namespace

std::vector<FolderEntry> listFolder(const fs::path &folder, FolderOrder order, FolderTypes types)
{
    Names names = namesIn(folder);
    std::vector<FolderEntry> entries;
    for (const std::string &name : names)
        if (auto entry = entryFor(folder, name, names, types))
            entries.push_back(std::move(*entry));
    std::stable_sort(entries.begin(), entries.end(), [&](const FolderEntry &a, const FolderEntry &b) {
        if (order == FolderOrder::foldersFirst && a.isFolder != b.isFolder)
            return a.isFolder;
        return compareNames(a.macName, b.macName) < 0;
    });
    return entries;
}

fs::path parentOf(const fs::path &folder)
{
    fs::path whole = tidy(folder);
    return whole.has_relative_path() ? whole.parent_path() : fs::path();
}

std::string folderName(const fs::path &folder)
{
    fs::path whole = tidy(folder);
    if (!whole.has_relative_path())
        return "/";
    return macNameFor(whole.parent_path(), whole.filename().string());
}

bool nameTaken(const fs::path &folder, std::string_view macName)
{
    fs::path path;
    struct stat status;
    return pathFor(folder, macName, Match::literal, path) == noErr && lstat(path.c_str(), &status) == 0;
}

bool nameUsable(std::string_view macName)
{
    std::string ignored;
    return linuxNameOf(macName, ignored) == noErr;
}

}  // namespace toolbox::files
