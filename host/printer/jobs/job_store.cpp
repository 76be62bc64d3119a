#include "printer/jobs/job_store.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <iostream>
#include <utility>

#include "io/lock.h"
#include "io/output.h"
#include "io/plain_text.h"
#include "io/refusal.h"
#include "io/remove_tree.h"
#include "io/sync.h"

namespace fs = std::filesystem;

namespace riders::printer {
namespace {

constexpr std::string_view kUnfinished = ".new-";

io::OpenFile openFolder(const fs::path &folder)
{
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        io::refuseErrno(folder, errno);
    return {descriptor, folder};
}

io::OpenFile lockedAtOnce(const fs::path &folder)
{
    io::OpenFile file = openFolder(folder);
    if (io::tryLock(file.descriptor()) == io::Lock::anothers)
        throw io::Refusal(folder.string() + ": another printer works with this folder");
    return file;
}

// A second name, where the file system knows any, and a copy otherwise.
void keepDocument(const fs::path &from, const fs::path &to)
{
    if (link(from.c_str(), to.c_str()) != 0)
        io::copyFile(from, to);
    if (chmod(to.c_str(), 0600) != 0)
        io::refuseErrno(to, errno);
}

}  // namespace

JobStore::JobStore(const fs::path &folder) : folder_(folder)
{
    io::makeFolders(folder);
    if (chmod(folder.c_str(), 0700) != 0)
        io::refuseErrno(folder, errno);
    lock_ = lockedAtOnce(folder);
    read();
}

// What cannot be read stays where it is, and is said.
void JobStore::read()
{
    for (const fs::directory_entry &entry : fs::directory_iterator(folder_)) {
        const std::string name = entry.path().filename();
        if (name.starts_with(kUnfinished)) {
            io::removeTree(entry.path());
            continue;
        }
        try {
            const JobRecord record = recordFromText(io::contentsOf(entry.path() / "record"));
            if (folderOf(record.key) != entry.path())
                throw io::Refusal("it belongs elsewhere");
            jobs_[record.key] = record;
        } catch (const io::Refusal &refusal) {
            std::cerr << "riders printer: " << io::plainText(entry.path().string() + ": " + refusal.message)
                      << '\n';
        }
    }
}

fs::path JobStore::folderOf(const JobKey &key) const
{
    return folder_ / key.text();
}

void JobStore::accept(const JobRecord &record, const fs::path &document)
{
    const fs::path unfinished = folder_ / (std::string(kUnfinished) + record.key.text());
    try {
        io::removeTree(unfinished);
        if (mkdir(unfinished.c_str(), 0700) != 0)
            io::refuseErrno(unfinished, errno);
        keepDocument(document, unfinished / "document");
        io::writeFile(unfinished / "record", textOf(record));
        io::syncTree(unfinished);
        io::moveTo(unfinished, folderOf(record.key));
        io::syncFolder(folder_);
    } catch (const io::Refusal &) {
        io::removeTree(unfinished);
        throw;
    }
    const std::lock_guard lock(mutex_);
    jobs_[record.key] = record;
}

void JobStore::update(const JobRecord &record)
{
    {
        const std::lock_guard lock(mutex_);
        jobs_[record.key] = record;
    }
    io::writeFile(folderOf(record.key) / "record", textOf(record));
}

void JobStore::forget(const JobKey &key)
{
    const fs::path going = folder_ / (std::string(kUnfinished) + key.text());
    io::moveTo(folderOf(key), going);
    io::removeTree(going);
    const std::lock_guard lock(mutex_);
    jobs_.erase(key);
}

std::optional<JobRecord> JobStore::find(const JobKey &key) const
{
    const std::lock_guard lock(mutex_);
    const auto found = jobs_.find(key);
    return found == jobs_.end() ? std::nullopt : std::optional(found->second);
}

std::vector<JobRecord> JobStore::all() const
{
    const std::lock_guard lock(mutex_);
    std::vector<JobRecord> records;
    for (const auto &[key, record] : jobs_)
        records.push_back(record);
    return records;
}

int JobStore::nextNumber(const std::string &queue) const
{
    const std::lock_guard lock(mutex_);
    int next = 1;
    for (const auto &[key, record] : jobs_)
        if (key.queue == queue)
            next = std::max(next, key.number + 1);
    return next;
}

}  // namespace riders::printer
