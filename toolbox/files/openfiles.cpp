#include "files/openfiles.h"

#include <sys/stat.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace fs = std::filesystem;

namespace toolbox::files {
namespace {

constexpr std::int16_t largest = std::numeric_limits<std::int16_t>::max();

bool isSame(const OpenFile &open, const struct stat &file)
{
    return open.device == file.st_dev && open.inode == file.st_ino;
}

}  // namespace

std::int16_t OpenFiles::add(OpenFile file)
{
    if (files_.size() >= static_cast<std::size_t>(largest))
        return 0;
    // In turn, so that the number of a closed file stays free as long as possible.
    do
        last_ = last_ == largest ? std::int16_t{1} : static_cast<std::int16_t>(last_ + 1);
    while (files_.contains(last_));
    names_[last_] = file.name;
    files_.emplace(last_, std::move(file));
    return last_;
}

OpenFile *OpenFiles::find(std::int16_t refNum)
{
    auto found = files_.find(refNum);
    return found == files_.end() ? nullptr : &found->second;
}

std::string OpenFiles::nameOf(std::int16_t refNum) const
{
    auto found = names_.find(refNum);
    return found == names_.end() ? std::string() : found->second;
}

void OpenFiles::remove(std::int16_t refNum)
{
    files_.erase(refNum);
}

void OpenFiles::clear()
{
    *this = {};
}

bool OpenFiles::isOpen(const struct stat &file) const
{
    return std::any_of(files_.begin(), files_.end(), [&](auto &entry) { return isSame(entry.second, file); });
}

bool OpenFiles::isOpenForWriting(const struct stat &file) const
{
    return std::any_of(files_.begin(), files_.end(),
                       [&](auto &entry) { return entry.second.writable && isSame(entry.second, file); });
}

void OpenFiles::made(const fs::path &path, const struct stat &file)
{
    made_[path] = {file.st_dev, file.st_ino};
}

bool OpenFiles::isStillTheOneMade(const fs::path &path, const struct stat &file)
{
    auto found = made_.extract(path);
    return !found || found.mapped() == std::pair(file.st_dev, file.st_ino);
}

void OpenFiles::moved(const struct stat &file, const fs::path &path, const std::string &name)
{
    for (auto &[refNum, open] : files_) {
        if (!isSame(open, file))
            continue;
        open.path = path;
        open.name = name;
        names_[refNum] = name;
    }
}

OpenFiles &openFiles()
{
    static OpenFiles all;
    return all;
}

}  // namespace toolbox::files
