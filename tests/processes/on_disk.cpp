#include "processes/on_disk.h"

#include <set>

namespace fs = std::filesystem;

namespace {

bool isIn(const fs::path &path, const fs::path &folder)
{
    return path == folder || path.native().starts_with(folder.native() + "/");
}

class Disk {
public:
    explicit Disk(fs::path folder) : folder_(std::move(folder)) {}

    void take(const FileChange &change)
    {
        if (change.call == "fsync" || change.call == "fdatasync")
            synced(change.path);
        else if (change.call == "rename" || change.call == "link")
            named(change);
        else if (change.call == "unlink" || change.call == "rmdir" || change.call == "unlinkat")
            forget(change.path);
        else
            changed(change);
    }

    std::vector<std::string> atEnd()
    {
        for (const fs::path &path : namesNotSynced_)
            if (isSeen(path))
                found_.push_back("the names in " + path.string() + " are never synced");
        return found_;
    }

private:
    bool isSeen(const fs::path &path) const
    {
        if (!isIn(path, folder_))
            return false;
        for (const fs::path &part : path.lexically_relative(folder_))
            if (part.native().starts_with(".riders-") || part.native().starts_with("#"))
                return false;
        return true;
    }

    void synced(const fs::path &path)
    {
        notSynced_.erase(path);
        namesNotSynced_.erase(path);
    }

    void changed(const FileChange &change)
    {
        if (change.path.filename() == kNameless)
            return;
        const bool folder = change.call == "mkdir" || change.call == "mkdirat";
        if (isSeen(change.path) && !folder)
            found_.push_back(change.call + " of " + change.path.string() + " in its place");
        (folder ? namesNotSynced_ : notSynced_).insert(change.path);
        namesNotSynced_.insert(change.path.parent_path());
    }

    void named(const FileChange &change)
    {
        for (std::set<fs::path> *set : {&notSynced_, &namesNotSynced_}) {
            std::set<fs::path> kept;
            for (const fs::path &path : *set) {
                const bool moved = isIn(path, change.path);
                if (moved && isSeen(change.named))
                    found_.push_back(change.named.string() + " gets its name before " + path.string() +
                                     " is synced");
                if (!moved)
                    kept.insert(path);
                else
                    kept.insert(path == change.path ? change.named
                                                    : change.named / path.lexically_relative(change.path));
            }
            *set = kept;
        }
        namesNotSynced_.insert(change.named.parent_path());
    }

    void forget(const fs::path &path)
    {
        notSynced_.erase(path);
        namesNotSynced_.erase(path);
    }

    fs::path folder_;
    std::set<fs::path> notSynced_, namesNotSynced_;
    std::vector<std::string> found_;
};

}  // namespace

std::vector<std::string> notOnDisk(const std::vector<FileChange> &changes, const fs::path &folder)
{
    Disk disk(folder);
    for (const FileChange &change : changes)
        disk.take(change);
    return disk.atEnd();
}
