#include "fault/world.h"

#include <sys/stat.h>

#include <set>

#include "settings/saved_settings.h"

namespace fs = std::filesystem;

namespace {

constexpr fs::copy_options kAsTheyAre = fs::copy_options::recursive | fs::copy_options::copy_symlinks;
const std::string kLongJob = "long.ps";
const std::string kTemporary = ".riders-";
constexpr const char *kRiders = RIDERS_BINARY_DIR "/riders";

// Longer than the part of a job that is looked at.
void makeLongJob(const fs::path &folder)
{
    std::string job = contentsOf(folder / "job.ps");
    for (const std::string line = "% " + std::string(1000, 'x') + "\n"; job.size() < 5 << 20;)
        job += line;
    writeFile(folder / kLongJob, job);
}

std::string described(const fs::directory_entry &entry)
{
    struct stat status = {};
    lstat(entry.path().c_str(), &status);
    const std::string mode = std::to_string(status.st_mode);
    if (entry.is_symlink())
        return mode + " to " + fs::read_symlink(entry.path()).string();
    return mode + (entry.is_regular_file() ? " " + contentsOf(entry.path()) : "");
}

// Of what belongs together: the first two names of the path. A temporary folder in it is by itself.
std::string groupOf(const std::string &path)
{
    const size_t first = path.find('/');
    const size_t second = first == path.npos ? first : path.find('/', first + 1);
    const bool isTemporary = second != path.npos && path.compare(second + 1, kTemporary.size(), kTemporary) == 0;
    return path.substr(0, isTemporary ? path.find('/', second + 1) : second);
}

Files ofGroup(const Files &files, const std::string &group)
{
    Files those;
    for (const auto &[path, what] : files)
        if (groupOf(path) == group)
            those.emplace(path, what);
    return those;
}

bool areEmptyFoldersOf(const Files &all, const Files &here)
{
    return std::all_of(here.begin(), here.end(), [&all](const auto &file) {
        const auto same = all.find(file.first);
        return same != all.end() && same->second == file.second && S_ISDIR(std::stoul(file.second));
    });
}

}  // namespace

World::World(const TriedCommand &tried) : tried_(tried)
{
    prepare();
    for (const std::vector<std::string> &arguments : tried.before) {
        FaultyCommand earlier = command();
        earlier.command.resize(1);
        earlier.command.insert(earlier.command.end(), arguments.begin(), arguments.end());
        const FaultyRun run = runWithFault(earlier, {});
        EXPECT_EQ(run.status, 0) << tried.name << ": " << run.err;
    }
    // A mode that no file has by itself.
    for (const fs::directory_entry &entry : fs::directory_iterator(place() / "work"))
        if (entry.is_regular_file() && !entry.is_symlink())
            fs::permissions(entry.path(), fs::perms(0640));
    fs::copy(place(), kept(), kAsTheyAre);
    before_ = files();
}

void World::prepare() const
{
    for (const char *name : {"home", "config", "temporary"})
        fs::create_directories(place() / name);
    fs::copy(RIDERS_SOURCE_DIR "/tests/fault/files", place() / "work", kAsTheyAre);
    const std::vector<std::string> &arguments = tried_.arguments;
    if (std::find(arguments.begin(), arguments.end(), kLongJob) != arguments.end() || tried_.input == kLongJob)
        makeLongJob(place() / "work");
}

FaultyCommand World::command() const
{
    FaultyCommand command{.command = {kRiders},
                          .folder = place() / "work",
                          .environment = {"HOME=" + (place() / "home").string(),
                                          "XDG_CONFIG_HOME=" + (place() / "config").string(),
                                          "TMPDIR=" + (place() / "temporary").string()},
                          .input = tried_.input.empty() ? "" : contentsOf(place() / "work" / tried_.input),
                          .piped = tried_.piped};
    command.command.insert(command.command.end(), tried_.arguments.begin(), tried_.arguments.end());
    return command;
}

void World::restore()
{
    if (tried_.unfinished.empty() && files() == before_)
        return;
    fs::remove_all(place());
    fs::copy(kept(), place(), kAsTheyAre);
}

bool World::mayBeUnfinished(const std::string &group) const
{
    return std::find(tried_.unfinished.begin(), tried_.unfinished.end(), group) != tried_.unfinished.end();
}

Files World::files() const
{
    // Settings that are decided on count as if they were in place.
    for (const fs::path &settings : {place() / "config/riders", place() / "work/kept"})
        if (fs::exists(settings / ".riders-settings"))
            riders::settings::SavedSettings(settings, "Riders Preferences").finishEarlier();
    Files files;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(place()))
        if (const std::string path = entry.path().lexically_relative(place()); !mayBeUnfinished(groupOf(path)))
            files[path] = described(entry);
    return files;
}

std::vector<Difference> neitherOldNorNew(const Files &now, const Files &old, const Files &fresh)
{
    std::set<std::string> groups;
    for (const Files *files : {&now, &old, &fresh})
        for (const auto &[path, what] : *files)
            groups.insert(groupOf(path));
    std::vector<Difference> differences;
    for (const std::string &group : groups) {
        const Files here = ofGroup(now, group), before = ofGroup(old, group), after = ofGroup(fresh, group);
        if (here == before || here == after || (before.empty() && areEmptyFoldersOf(after, here)))
            continue;
        differences.push_back({group, before.empty() && after.empty()});
    }
    return differences;
}

Files withoutWhatIsLeft(Files now, const Files &old, const Files &fresh)
{
    for (const Difference &difference : neitherOldNorNew(now, old, fresh))
        if (difference.isLeft)
            std::erase_if(now, [&](const auto &file) { return groupOf(file.first) == difference.group; });
    return now;
}
