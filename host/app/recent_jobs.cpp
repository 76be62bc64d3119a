#include "app/recent_jobs.h"

#include <algorithm>
#include <set>
#include <utility>

#include "io/bytes.h"
#include "io/output.h"
#include "io/plain_text.h"
#include "io/refusal.h"
#include "toolbox/host/folders.h"

namespace fs = std::filesystem;

namespace riders::app {
namespace {

constexpr std::size_t kMost = 9;

fs::path keptIn()
{
    return toolbox::folders::preferences() / "Recent Jobs";
}

}  // namespace

// A line each, of the bytes of its path. One with a line end in it is not kept.
void RecentJobs::read()
{
    if (std::exchange(known_, true))
        return;
    std::string all;
    try {
        all = io::contentsOf(keptIn());
    } catch (const io::Refusal &) {
        return;
    }
    for (std::size_t at = 0; at < all.size() && jobs_.size() < kMost;) {
        const std::size_t end = std::min(all.find('\n', at), all.size());
        if (const fs::path job = all.substr(at, end - at); job.is_absolute())
            jobs_.push_back(job);
        at = end + 1;
    }
}

void RecentJobs::keep() const
{
    std::string all;
    for (const fs::path &job : jobs_)
        if (job.string().find('\n') == std::string::npos)
            all += job.string() + "\n";
    std::error_code ignored;
    fs::create_directories(keptIn().parent_path(), ignored);
    try {
        io::writeFile(keptIn(), all);
    } catch (const io::Refusal &) {
    }
}

std::vector<std::string> RecentJobs::names()
{
    read();
    std::multiset<fs::path> all;
    for (const fs::path &job : jobs_)
        all.insert(job.filename());
    std::vector<std::string> names;
    for (const fs::path &job : jobs_) {
        std::string name = io::plainText(job.filename().string());
        if (all.count(job.filename()) > 1)
            name += " (" + io::plainText(job.parent_path().filename().string()) + ")";
        names.push_back(name);
    }
    return names;
}

fs::path RecentJobs::job(std::size_t place)
{
    read();
    return place < jobs_.size() ? jobs_[place] : fs::path();
}

void RecentJobs::add(const fs::path &job)
{
    read();
    std::error_code ignored;
    const fs::path path = fs::absolute(job, ignored).lexically_normal();
    if (path.empty() || (!jobs_.empty() && jobs_.front() == path))
        return;
    std::erase(jobs_, path);
    jobs_.insert(jobs_.begin(), path);
    if (jobs_.size() > kMost)
        jobs_.pop_back();
    keep();
}

void RecentJobs::remove(const fs::path &job)
{
    std::erase(jobs_, job);
    keep();
}

}  // namespace riders::app
