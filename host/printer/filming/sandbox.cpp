#include "printer/filming/sandbox.h"

#include <initializer_list>

#include "io/limited_process.h"
#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::printer {
namespace {

// What the programs need of the system. Nothing here is secret.
constexpr const char *kReadable[] = {"/usr",
                                     "/lib",
                                     "/lib64",
                                     "/bin",
                                     "/etc/alternatives",
                                     "/etc/fonts",
                                     "/etc/ghostscript",
                                     "/etc/ld.so.cache",
                                     "/etc/localtime",
                                     "/etc/papersize",
                                     "/etc/paperspecs",
                                     "/var/cache/fontconfig",
                                     "/var/lib/ghostscript"};
constexpr const char *kForQueues[] = {"/etc/cups",        "/etc/hosts",  "/etc/nsswitch.conf",
                                      "/etc/resolv.conf", "/etc/passwd", "/run/cups"};

using Words = std::vector<std::string>;

void add(Words &words, std::initializer_list<std::string> more)
{
    words.insert(words.end(), more);
}

}  // namespace

Words inSandbox(const SandboxRoom &room, const Words &command)
{
    Words words = {"bwrap", "--unshare-user-try", "--unshare-pid", "--die-with-parent", "--cap-drop", "ALL"};
    if (!room.network)
        words.emplace_back("--unshare-net");
    for (const char *place : kReadable)
        add(words, {"--ro-bind-try", place, place});
    for (const char *place : kForQueues)
        if (room.network)
            add(words, {"--ro-bind-try", place, place});
    add(words, {"--proc", "/proc", "--dev", "/dev", "--tmpfs", "/tmp"});
    for (const fs::path &place : room.readable)
        add(words, {"--ro-bind-try", place, place});
    for (const fs::path &place : room.writable)
        add(words, {"--bind", place, place});
    add(words, {"--chdir", room.folder, "--"});
    words.insert(words.end(), command.begin(), command.end());
    return words;
}

std::string whySandboxesFail(const fs::path &folder)
{
    std::string said;
    const io::LimitedRun run{.command =
                                 inSandbox({.readable = {}, .writable = {folder}, .folder = folder}, {"true"}),
                             .folder = folder,
                             .temporary = ".",
                             .seconds = 20,
                             .secondsInAll = 20,
                             .line = [&](std::string_view line) {
                                 said += (said.empty() ? "" : "; ") + std::string(line);
                                 return false;
                             }};
    try {
        const io::LimitedResult result = io::runLimited(run);
        if (result.end == io::RunEnd::exited && result.status == 0)
            return {};
    } catch (const io::Refusal &refusal) {
        return refusal.message;
    }
    return said.empty() ? "bwrap does not work here" : said;
}

}  // namespace riders::printer
