#include "io/trash.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <optional>
#include <string>

#include "io/bytes.h"
#include "io/refusal.h"
#include "io/sync.h"

namespace fs = std::filesystem;

namespace riders::io {
namespace {

struct Trash {
    fs::path folder;
    fs::path relativeTo;  // empty: paths in it are absolute
};

std::optional<struct stat> statusOf(const fs::path &path)
{
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0)
        return {};
    return status;
}

bool isOwnFolder(const fs::path &path)
{
    const auto status = statusOf(path);
    return status && S_ISDIR(status->st_mode) && status->st_uid == geteuid();
}

// The folder is then there, and nobody but the user may look into it. False where it cannot be made, or is
// another's.
bool makeOwnFolder(const fs::path &path)
{
    constexpr mode_t mine = 0700;
    return (mkdir(path.c_str(), mine) == 0 || errno == EEXIST) && isOwnFolder(path);
}

bool makeParts(const fs::path &trash)
{
    return makeOwnFolder(trash) && makeOwnFolder(trash / "files") && makeOwnFolder(trash / "info");
}

fs::path homeTrash()
{
    const char *data = getenv("XDG_DATA_HOME"), *home = getenv("HOME");
    if (data && *data == '/')
        return fs::path(data) / "Trash";
    return home && *home == '/' ? fs::path(home) / ".local/share/Trash" : fs::path();
}

// The one in the user's home, where that is on the same file system. The folder of the user's data is made where
// it is missing, as the desktop would.
std::optional<Trash> ownTrash(dev_t device)
{
    const fs::path trash = homeTrash();
    if (trash.empty())
        return {};
    std::error_code failed;
    fs::create_directories(trash.parent_path(), failed);
    struct stat status {};
    if (failed || stat(trash.parent_path().c_str(), &status) != 0 || status.st_dev != device || !makeParts(trash))
        return {};
    return Trash{trash, {}};
}

fs::path topOf(fs::path folder, dev_t device)
{
    while (folder.has_relative_path()) {
        const auto above = statusOf(folder.parent_path());
        if (!above || above->st_dev != device)
            break;
        folder = folder.parent_path();
    }
    return folder;
}

// An administrator makes .Trash for all users, sticky; without it each has a folder of their own.
std::optional<Trash> trashAtTop(const fs::path &top)
{
    const std::string user = std::to_string(geteuid());
    const auto shared = statusOf(top / ".Trash");
    if (shared && S_ISDIR(shared->st_mode) && shared->st_mode & S_ISVTX && makeParts(top / ".Trash" / user))
        return Trash{top / ".Trash" / user, top};
    if (makeParts(top / (".Trash-" + user)))
        return Trash{top / (".Trash-" + user), top};
    return {};
}

std::string escaped(const std::string &path)
{
    constexpr std::string_view plain = "-_.!~*'()/";
    std::string text;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (isalnum(byte) || plain.find(c) != plain.npos) {
            text += c;
            continue;
        }
        std::array<char, 4> code{};
        snprintf(code.data(), code.size(), "%%%02X", byte);
        text += code.data();
    }
    return text;
}

std::string infoOn(const fs::path &path)
{
    const time_t now = time(nullptr);
    struct tm local {};
    localtime_r(&now, &local);
    std::array<char, 32> when{};
    strftime(when.data(), when.size(), "%Y-%m-%dT%H:%M:%S", &local);
    return "[Trash Info]\nPath=" + escaped(path.string()) + "\nDeletionDate=" + when.data() + "\n";
}

// "film.riders", "film.2.riders", and so on: the first name that neither part of the trash has.
std::string nameIn(const Trash &trash, const fs::path &file, OpenFile &info)
{
    constexpr int most = 100000;
    constexpr mode_t mode = 0600;
    for (int i = 1; i < most; ++i) {
        std::string name = file.filename().string();
        if (i > 1)
            name = file.stem().string() + "." + std::to_string(i) + file.extension().string();
        if (statusOf(trash.folder / "files" / name))
            continue;
        const fs::path path = trash.folder / "info" / (name + ".trashinfo");
        const int opened = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
        if (opened >= 0) {
            info = OpenFile(opened, path);
            return name;
        }
        if (errno != EEXIST)
            refuseErrno(path, errno);
    }
    throw Refusal(trash.folder.string() + ": has no name for " + file.filename().string());
}

// The information comes first, so that nothing is in the trash without saying where it was.
void putInto(const Trash &trash, const fs::path &file)
{
    OpenFile info;
    const std::string name = nameIn(trash, file, info);
    try {
        writeAll(info, infoOn(trash.relativeTo.empty() ? file : file.lexically_relative(trash.relativeTo)));
        sync(info.descriptor(), info.name());
        info.close();
        const fs::path to = trash.folder / "files" / name;
        // Some file systems cannot promise to replace nothing; the name was free a moment ago.
        if (renameat2(AT_FDCWD, file.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) != 0 &&
            (errno != EINVAL || rename(file.c_str(), to.c_str()) != 0))
            refuseErrno(file, errno);
    } catch (const Refusal &) {
        unlink((trash.folder / "info" / (name + ".trashinfo")).c_str());
        throw;
    }
    syncFolder(trash.folder / "files");
}

}  // namespace

void moveToTrash(const fs::path &file)
{
    std::error_code failed;
    const fs::path folder = fs::canonical(fs::absolute(file, failed).parent_path(), failed);
    const fs::path path = folder / file.filename();
    const auto status = failed ? std::nullopt : statusOf(path);
    if (!status)
        refuseErrno(file, failed ? failed.value() : errno);
    std::optional<Trash> trash = ownTrash(status->st_dev);
    if (!trash)
        trash = trashAtTop(topOf(folder, status->st_dev));
    if (!trash)
        throw Refusal("there is no trash where " + file.string() + " is");
    putInto(*trash, path);
}

}  // namespace riders::io
