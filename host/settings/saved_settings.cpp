#include "settings/saved_settings.h"

#include "io/lock.h"
#include "io/output.h"
#include "io/private_folder.h"
#include "io/refusal.h"
#include "io/sync.h"

namespace fs = std::filesystem;

namespace riders::settings {
namespace {

constexpr char kDecided[] = ".riders-settings";  // what counts, but may not be where it belongs yet
constexpr char kUndecided[] = ".riders-settings-";

bool isThere(const fs::path &file)
{
    std::error_code failed;
    const fs::file_status status = fs::symlink_status(file, failed);
    if (status.type() == fs::file_type::none)
        io::refuseErrno(file, failed.value());
    return fs::exists(status);
}

void copyIfThere(const fs::path &from, const fs::path &to, const fs::path &like = {})
{
    if (isThere(from))
        io::copyFile(from, to, like);
}

// A person may keep the file elsewhere, with a link here.
void putInPlace(const fs::path &from, const fs::path &to)
{
    if (!isThere(from))
        return;
    if (std::error_code ignored; fs::is_symlink(to, ignored))
        io::copyFile(from, to);
    else
        io::moveTo(from, to);
}

}  // namespace

SavedSettings::SavedSettings(fs::path folder, const std::string &name)
    : folder_(std::move(folder)), names_{name, "._" + name}
{
}

void SavedSettings::putDecidedInPlace() const
{
    const fs::path decided = folder_ / kDecided;
    if (!isThere(decided))
        return;
    for (const std::string &name : names_)
        putInPlace(decided / name, folder_ / name);
    io::syncFolder(folder_);
    std::error_code ignored;
    fs::remove_all(decided, ignored);
    io::syncFolder(folder_);
}

void SavedSettings::finishEarlier() const
{
    if (!isThere(folder_))
        return;
    const io::OpenFile locked = io::lockedFolder(folder_);
    putDecidedInPlace();
}

void SavedSettings::copyTo(const fs::path &copy) const
{
    if (!isThere(folder_))
        return;
    const io::OpenFile locked = io::lockedFolder(folder_);
    try {
        putDecidedInPlace();
    } catch (const io::Refusal &) {
        // They count where they are.
    }
    for (const std::string &name : names_) {
        const fs::path decided = folder_ / kDecided / name;
        copyIfThere(isThere(decided) ? decided : folder_ / name, copy / name);
    }
}

void SavedSettings::takeFrom(const fs::path &copy) const
{
    io::makeFolders(folder_);
    const io::OpenFile locked = io::lockedFolder(folder_);
    putDecidedInPlace();
    const io::PrivateFolder undecided(folder_, kUndecided);
    for (const std::string &name : names_)
        copyIfThere(copy / name, undecided.path() / name, folder_ / name);
    io::moveTo(undecided.path(), folder_ / kDecided);
    io::syncFolder(folder_);
    try {
        putDecidedInPlace();
    } catch (const io::Refusal &) {
        // They are saved all the same: whoever reads them next puts them in place.
    }
}

}  // namespace riders::settings
