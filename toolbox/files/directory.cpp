#include "files/directory.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <system_error>
#include <thread>

#include "files/companion.h"
#include "files/names.h"

namespace fs = std::filesystem;

namespace toolbox::files {
namespace {

constexpr unsigned char invisible = 0x40;  // in the high byte of the Finder flags

struct CloseFolder {
    void operator()(DIR *folder) const { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

struct Name {
    std::string name;
    unsigned char kind;  // as readdir tells it, mostly without looking at the file
};

// Sorted: aliases are numbered in this order, whatever order the disk has.
std::vector<Name> namesIn(DIR *folder)
{
    std::vector<Name> names;
    while (const dirent *entry = readdir(folder))
        names.push_back({entry->d_name, entry->d_type});
    std::sort(names.begin(), names.end(), [](const Name &a, const Name &b) { return a.name < b.name; });
    return names;
}

// The entries of one folder, seen from its descriptor: with many files, finding each by its path takes long.
class Listing {
public:
    Listing(const fs::path &folder, FolderTypes types)
        : folder_(folder), types_(types), open_(opendir(folder.c_str()))
    {
        if (open_)
            names_ = namesIn(open_.get());
    }

    std::vector<FolderEntry> entries() const
    {
        std::vector<FolderEntry> entries;
        std::vector<std::size_t> plain;  // entries whose type is in the file itself
        for (const Name &name : names_) {
            const std::optional<bool> isFolder = name.name.starts_with(".") ? std::nullopt : whetherFolder(name);
            const bool companion = isFolder && !*isFolder && hasCompanion(name.name);
            const std::optional<OSType> type = companion ? typeFromCompanion(name.name) : OSType{0};
            if (!isFolder || !type)
                continue;
            if (!*isFolder && !companion && types_ == FolderTypes::included)
                plain.push_back(entries.size());
            entries.push_back({name.name, macNameFor(folder_, name.name), *isFolder, *type});
        }
        lookInto(plain, entries);
        return entries;
    }

private:
    // Most of the time goes into the system's calls, which two threads can make at once. A few files are not worth
    // a thread.
    void lookInto(const std::vector<std::size_t> &plain, std::vector<FolderEntry> &entries) const
    {
        const auto look = [&](std::size_t from, std::size_t to) {
            for (std::size_t i = from; i < to; ++i)
                entries[plain[i]].type = plainTypeIn(dirfd(open_.get()), entries[plain[i]].linuxName);
        };
        constexpr std::size_t manyFiles = 1000;
        std::size_t shared =
            plain.size() < manyFiles || std::thread::hardware_concurrency() < 2 ? 0 : plain.size() / 2;
        std::thread other;
        try {
            if (shared > 0)
                other = std::thread(look, 0, shared);
        } catch (const std::system_error &) {
            shared = 0;  // no thread to be had
        }
        look(shared, plain.size());
        if (other.joinable())
            other.join();
    }

    // Nothing for what is neither folder nor file.
    std::optional<bool> whetherFolder(const Name &name) const
    {
        if (name.kind == DT_DIR || name.kind == DT_REG)
            return name.kind == DT_DIR;
        struct stat status;
        if (fstatat(dirfd(open_.get()), name.name.c_str(), &status, 0) != 0)
            return std::nullopt;
        return S_ISDIR(status.st_mode) || S_ISREG(status.st_mode) ? std::optional(S_ISDIR(status.st_mode))
                                                                  : std::nullopt;
    }

    bool hasCompanion(const std::string &name) const
    {
        const std::string companion = companionName(name);
        const auto found =
            std::lower_bound(names_.begin(), names_.end(), companion,
                             [](const Name &each, const std::string &wanted) { return each.name < wanted; });
        return found != names_.end() && found->name == companion;
    }

    // The type, or nothing for an invisible file. A file without a companion has no flags.
    std::optional<OSType> typeFromCompanion(const std::string &name) const
    {
        std::string info;
        readFinderInfo(folder_ / name, info);
        if (static_cast<unsigned char>(info[8]) & invisible)
            return std::nullopt;
        return types_ == FolderTypes::included ? typeIn(info) : OSType{0};
    }

    const fs::path &folder_;
    FolderTypes types_;
    OpenFolder open_;
    std::vector<Name> names_;
};

// With what they are sorted by worked out once for each.
std::vector<FolderEntry> sorted(std::vector<FolderEntry> entries, FolderOrder order)
{
    struct Place {
        std::string key;
        std::size_t entry;
    };
    std::vector<Place> places;
    for (const FolderEntry &entry : entries) {
        const bool first = order == FolderOrder::foldersFirst && entry.isFolder;
        places.push_back({(first ? '0' : '1') + sortingKey(entry.macName), places.size()});
    }
    std::sort(places.begin(), places.end(), [&](const Place &a, const Place &b) {
        if (const int keys = a.key.compare(b.key))
            return keys < 0;
        const int names = compareNames(entries[a.entry].macName, entries[b.entry].macName);
        return names != 0 ? names < 0 : a.entry < b.entry;
    });
    std::vector<FolderEntry> inOrder;
    inOrder.reserve(entries.size());
    for (const Place &place : places)
        inOrder.push_back(std::move(entries[place.entry]));
    return inOrder;
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
    return sorted(Listing(folder, types).entries(), order);
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
