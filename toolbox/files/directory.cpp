#include "files/directory.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
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

    // Those whose type is in the file itself are added to `plain`, by their index; it is not looked at here.
    std::vector<FolderEntry> entries(std::vector<std::size_t> &plain) const
    {
        std::vector<FolderEntry> entries;
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
        return entries;
    }

    int descriptor() const { return dirfd(open_.get()); }

private:
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

// Looks into files for their types. Nearly all of the time goes into the system's calls: of many files another
// thread takes some at a time while their names are sorted, and both take the rest.
class Looking {
public:
    Looking(int folder, const std::vector<std::size_t> &plain, std::vector<FolderEntry> &entries)
        : folder_(folder), plain_(plain), entries_(entries)
    {
        constexpr std::size_t manyFiles = 1000;
        if (plain.size() < manyFiles || std::thread::hardware_concurrency() < 2)
            return;
        try {
            other_ = std::thread([this] { look(); });
        } catch (const std::system_error &) {
            // No thread is to be had: finish() does it all.
        }
    }
    ~Looking() { finish(); }
    Looking(const Looking &) = delete;
    Looking &operator=(const Looking &) = delete;

    void finish()
    {
        look();
        if (other_.joinable())
            other_.join();
    }

private:
    void look()
    {
        constexpr std::size_t atOnce = 32;
        for (std::size_t from; (from = next_.fetch_add(atOnce)) < plain_.size();)
            for (std::size_t i = from; i < std::min(from + atOnce, plain_.size()); ++i)
                entries_[plain_[i]].type = plainTypeIn(folder_, entries_[plain_[i]].linuxName);
    }

    int folder_;
    const std::vector<std::size_t> &plain_;
    std::vector<FolderEntry> &entries_;
    std::atomic<std::size_t> next_ = 0;
    std::thread other_;
};

struct Place {
    std::string key;
    std::size_t entry;
};

// With what they are sorted by worked out once for each.
std::vector<Place> inOrder(const std::vector<FolderEntry> &entries, FolderOrder order)
{
    std::vector<Place> places;
    places.reserve(entries.size());
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
    return places;
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
    const Listing listing(folder, types);
    std::vector<std::size_t> plain;
    std::vector<FolderEntry> entries = listing.entries(plain), sorted;
    if (entries.empty())
        return entries;
    Looking looking(listing.descriptor(), plain, entries);
    const std::vector<Place> places = inOrder(entries, order);
    looking.finish();
    sorted.reserve(entries.size());
    for (const Place &place : places)
        sorted.push_back(std::move(entries[place.entry]));
    return sorted;
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
