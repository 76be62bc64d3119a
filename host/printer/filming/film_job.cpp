#include "printer/filming/film_job.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "io/limited_process.h"
#include "io/output.h"
#include "io/refusal.h"
#include "io/remove_tree.h"
#include "io/sync.h"
#include "printer/filming/sandbox.h"
#include "toolbox/host/folders.h"

namespace fs = std::filesystem;

namespace riders::printer {
namespace {

constexpr int kMostAttempts = 3;
constexpr std::size_t kLongestName = 80;       // bytes
constexpr int kMegabytesOfFilming = 64 << 10;  // of address space, of which most is never used
constexpr std::string_view kFilmsSay = "riders film: ";
constexpr const char *kKilled[] = {"the interpreter broke down", "the interpreter was ended by signal"};

fs::path programsFolder()
{
    return fs::read_symlink("/proc/self/exe").parent_path();
}

// Readable where the job is no longer wanted.
class Cancellation : public io::Beside {
public:
    explicit Cancellation(int descriptor) : descriptor_(descriptor) {}
    int descriptor() const override { return descriptor_; }
    bool take() override { throw Canceled(); }
    void ended() override {}

private:
    int descriptor_;
};

fs::path unfinishedIn(const fs::path &parent, const JobKey &key)
{
    return parent / (".riders-printer-" + key.text());
}

// What is not finished, in a hidden folder beside the films.
class Unfinished {
public:
    Unfinished(const fs::path &parent, const JobKey &key) : folder_(unfinishedIn(parent, key))
    {
        io::removeTree(folder_);
        if (mkdir(folder_.c_str(), 0700) != 0 || mkdir((folder_ / "temporary").c_str(), 0700) != 0)
            io::refuseErrno(folder_, errno);
    }
    ~Unfinished() { io::removeTree(folder_); }
    Unfinished(const Unfinished &) = delete;
    Unfinished &operator=(const Unfinished &) = delete;

    fs::path films() const { return folder_ / "films"; }
    const fs::path &folder() const { return folder_; }

private:
    fs::path folder_;
};

std::string extensionOf(const std::string &format)
{
    return format == "application/pdf" ? ".pdf" : ".ps";
}

std::vector<std::string> commandOf(const FilmingRequest &request, const Unfinished &unfinished,
                                   const fs::path &job)
{
    std::vector<std::string> command = {programsFolder() / "riders",
                                        "film",
                                        job,
                                        "--json",
                                        "--quiet",
                                        "--seconds=" + std::to_string(request.limits.seconds),
                                        "--megabytes=" + std::to_string(request.limits.megabytes)};
    for (const std::string &argument : request.record.choices.over(request.queue.choices).arguments())
        command.push_back(argument);
    if (!request.record.pages.empty())
        command.push_back("--pages=" + request.record.pages);
    if (request.queue.printer.empty())
        command.insert(command.end(), {"-o", unfinished.films()});
    else
        command.push_back("--printer=" + request.queue.printer);
    if (request.queue.isLookedAt() && request.queue.printer.empty())
        command.emplace_back("--look");
    // A film that is turned has no tiles.
    const std::string turned = request.record.choices.over(request.queue.choices).get("rotate");
    if (request.queue.isLookedAt() && request.queue.printer.empty() && (turned.empty() || turned == "0"))
        command.emplace_back("--loupe-on-demand");
    return command;
}

std::vector<std::string> confined(const FilmingRequest &request, const Unfinished &unfinished,
                                  const std::vector<std::string> &command)
{
    // The service limits its own files, to limit documents.
    std::vector<std::string> whole = {"prlimit", "--fsize=unlimited", "env",
                                      "XDG_CACHE_HOME=" + request.cache.string()};
    whole.insert(whole.end(), command.begin(), command.end());
    if (!request.sandbox)
        return whole;
    SandboxRoom room{
        .readable = {programsFolder(), request.document, toolbox::folders::usersPreferences() / "screens"},
        .writable = {unfinished.folder(), request.cache},
        .folder = unfinished.folder(),
        .network = !request.queue.printer.empty()};
    // Where the print server is not at its usual place.
    if (const char *const server = std::getenv("CUPS_SERVER"); room.network && server != nullptr && *server == '/')
        room.readable.emplace_back(server);
    return inSandbox(room, whole);
}

struct Said {
    std::string json, words;

    bool take(std::string_view line)
    {
        std::string &all = line.starts_with('{') ? json : words;
        if (line.starts_with(kFilmsSay))
            line.remove_prefix(kFilmsSay.size());
        all += std::string(line) + "\n";
        return true;
    }
};

std::string withoutLastLineEnd(std::string text)
{
    while (text.ends_with('\n'))
        text.pop_back();
    return text;
}

std::string whyEnded(const io::LimitedResult &result, const Said &said)
{
    if (result.end == io::RunEnd::killed)
        return "the program that makes films was ended by signal " + std::to_string(result.status);
    if (result.end != io::RunEnd::exited)
        return "the job takes too long, or too much room on the disk, and was ended";
    const std::string words = withoutLastLineEnd(said.words);
    return words.empty() ? "the program that makes films ended without a word" : words;
}

// Killed by somebody, perhaps not for what the job does.
bool isWorthAnother(const io::LimitedResult &result, const Said &said)
{
    if (result.end == io::RunEnd::killed)
        return true;
    return std::any_of(std::begin(kKilled), std::end(kKilled),
                       [&](const char *words) { return said.words.find(words) != std::string::npos; });
}

Said film(const FilmingRequest &request, const Unfinished &unfinished, const fs::path &job)
{
    const std::vector<std::string> command = confined(request, unfinished, commandOf(request, unfinished, job));
    Cancellation cancellation(request.canceled);
    for (int attempt = 1;; ++attempt) {
        Said said;
        const int whole = request.limits.seconds * 200;
        const io::LimitedResult result =
            io::runLimited({.command = command,
                            .folder = unfinished.folder(),
                            .temporary = "temporary",
                            .seconds = whole,
                            .secondsInAll = whole,
                            .megabytes = kMegabytesOfFilming,
                            .temporaryMegabytes = 16 << 10,
                            .line = [&](std::string_view line) { return said.take(line); },
                            .beside = request.canceled < 0 ? nullptr : &cancellation});
        if (result.end == io::RunEnd::exited && result.status == 0)
            return said;
        if (attempt == kMostAttempts || !isWorthAnother(result, said))
            throw io::Refusal(whyEnded(result, said));
        io::removeTree(unfinished.films());
    }
}

// All of it gets its name in one step.
void putInPlace(const Unfinished &unfinished, const fs::path &folder)
{
    const fs::path look = unfinished.folder() / "films-look";
    if (fs::exists(look))
        io::moveTo(look, unfinished.films() / "look");
    io::syncTree(unfinished.films());
    io::moveTo(unfinished.films(), folder);
    io::syncFolder(folder.parent_path());
}

fs::path parentOf(const Queue &queue, const fs::path &films)
{
    return queue.folder.empty() ? films : queue.folder;
}

bool isPlainCharacter(unsigned char c)
{
    return c >= 0x80 || std::isalnum(c) != 0 || c == '-' || c == '_' || c == '+' || c == '.';
}

}  // namespace

std::string nameOfFilms(const std::string &title)
{
    std::string name;
    for (const char c : title.substr(title.rfind('/') + 1))
        if (isPlainCharacter(static_cast<unsigned char>(c)))
            name += c;
        else if (!name.empty() && name.back() != '-')
            name += '-';
    const std::string ending = fs::path(name).extension();
    for (const char *const known : {".pdf", ".ps", ".eps", ".png", ".jpg", ".jpeg", ".pwg"})
        if (ending == known)
            name.resize(name.size() - ending.size());
    std::size_t length = std::min(name.size(), kLongestName);
    while (length > 0 && length < name.size() && (static_cast<unsigned char>(name[length]) & 0xC0) == 0x80)
        --length;
    name.resize(length);
    name.erase(0, std::min(name.find_first_not_of(".-"), name.size()));
    return name.empty() ? "job" : name;
}

fs::path folderOfFilms(const JobRecord &record, const Queue &queue, const fs::path &films)
{
    const std::string name = record.key.text() + "-" + nameOfFilms(record.title);
    const fs::path parent = parentOf(queue, films);
    return queue.hold ? parent / ".held" / name : parent / name;
}

void removeUnfinished(const JobRecord &record, const Queue &queue, const fs::path &films)
{
    io::removeTree(unfinishedIn(folderOfFilms(record, queue, films).parent_path(), record.key));
}

fs::path releaseFilms(const JobRecord &record, const Queue &queue, const fs::path &films)
{
    Queue released = queue;
    released.hold = false;
    const fs::path place = folderOfFilms(record, released, films);
    io::moveTo(record.films, place);
    io::syncFolder(place.parent_path());
    return place;
}

Filmed makeFilmsOf(const FilmingRequest &request)
{
    const fs::path folder = folderOfFilms(request.record, request.queue, request.films);
    io::makeFolders(folder.parent_path());
    // Also where nothing is left to be done but to remove what a killed process has left.
    const Unfinished unfinished(folder.parent_path(), request.record.key);
    if (request.queue.printer.empty() && fs::exists(folder))
        return {folder, {}};
    const fs::path job =
        unfinished.folder() / (nameOfFilms(request.record.title) + extensionOf(request.record.format));
    fs::create_symlink(request.document, job);
    const Said said = film(request, unfinished, job);
    io::writeFile(request.report, said.json);
    if (!request.queue.printer.empty())
        return {{}, withoutLastLineEnd(said.words)};
    putInPlace(unfinished, folder);
    return {folder, withoutLastLineEnd(said.words)};
}

}  // namespace riders::printer
