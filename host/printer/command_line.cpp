#include "printer/command_line.h"

#include <cstdlib>

#include "io/refusal.h"

namespace fs = std::filesystem;

namespace riders::printer {
namespace {

fs::path home()
{
    const char *const folder = std::getenv("HOME");
    return folder == nullptr ? fs::current_path() : fs::path(folder);
}

fs::path usualState()
{
    const char *const folder = std::getenv("XDG_STATE_HOME");
    const bool isSet = folder != nullptr && *folder == '/';
    return (isSet ? fs::path(folder) : home() / ".local/state") / "riders/printer";
}

void addPlaces(CLI::App &app, CommandLine &words)
{
    app.add_option("--port", words.request.port, "The port to listen on; 8631 when left out")
        ->check(CLI::Range(1, 65535))
        ->type_name("N");
    app.add_option("--films", words.request.films, "Where films go, a folder for each job; ~/Films when left out")
        ->type_name("DIR");
    app.add_option("--state", words.request.state,
                   "Where jobs are kept that were accepted; ~/.local/state/riders/printer when left out")
        ->type_name("DIR");
}

void addQueueOptions(CLI::App &app, CommandLine &words)
{
    app.add_option(
           "--queue", words.queues,
           "A queue and its choices, as in fine:screens=offset,dpi=2400,marks=all; may be given again. "
           "Choices: screens, frequency, angle, shape, plates, dpi, marks, sheet, negative, emulsion, rotate, "
           "folder, printer, look, hold. One queue called films when left out")
        ->allow_extra_args(false)
        ->type_name("NAME[:CHOICE=VALUE,...]");
    app.add_option("--queues", words.queuesFile, "A TOML file with a table [queue.NAME] for each queue")
        ->type_name("FILE");
}

void addNetwork(CLI::App &app, CommandLine &words)
{
    app.add_option(
           "--listen", words.request.listen,
           "Listen for other machines, too, at that address, or * for all; with --password-file or --accounts")
        ->type_name("ADDRESS");
    CLI::Option *password =
        app.add_option(
               "--password-file", words.request.passwordFile,
               "Its first line is the password that other machines have to give; a file that only its owner "
               "can read")
            ->type_name("FILE");
    app.add_option("--accounts", words.request.accounts,
                   "Other machines have to give the name and password of an account here; a service of PAM, as in "
                   "login")
        ->excludes(password)
        ->type_name("SERVICE");
}

void addLimits(CLI::App &app, CommandLine &words)
{
    app.add_option(
           "--sandbox", words.sandbox,
           "Whether jobs are interpreted in a sandbox (bubblewrap): auto, where it works, always, or never")
        ->check(CLI::IsMember({"auto", "always", "never"}));
    app.add_option("--seconds", words.request.limits.seconds, "How long a page may take; 300 when left out")
        ->check(CLI::Range(1, 86400))
        ->type_name("N");
    app.add_option("--megabytes", words.request.limits.megabytes,
                   "How much memory the interpreter may take; 2048 when left out")
        ->check(CLI::Range(64, 1 << 20))
        ->type_name("N");
    app.add_option("--largest", words.request.mostMegabytes,
                   "Megabytes of the largest document that is taken; 1024 when left out")
        ->check(CLI::Range(1, 1 << 20))
        ->type_name("N");
    app.add_option("--keep", words.request.mostKept,
                   "Jobs of a queue that are kept to be printed again; 500 when left out")
        ->check(CLI::Range(0, 1000000))
        ->type_name("N");
    app.add_option("--at-once", words.request.atOnce,
                   "Jobs in work at once, of different queues; one for each core "
                   "when left out")
        ->check(CLI::Range(1, 1000))
        ->type_name("N");
}

}  // namespace

void addOptions(CLI::App &app, CommandLine &words)
{
    addPlaces(app, words);
    addQueueOptions(app, words);
    addNetwork(app, words);
    addLimits(app, words);
    app.add_flag("--verbose", words.request.verbose, "Say what clients ask for, too");
}

ServiceRequest requestFrom(const CommandLine &words)
{
    ServiceRequest request = words.request;
    request.queues = queuesFrom(words.queues, words.queuesFile);
    if (request.state.empty())
        request.state = usualState();
    if (request.films.empty())
        request.films = home() / "Films";
    request.state = fs::absolute(request.state);
    request.films = fs::absolute(request.films);
    for (Queue &queue : request.queues)
        if (!queue.folder.empty())
            queue.folder = fs::absolute(queue.folder);
    if (words.sandbox != "auto")
        request.sandboxes = words.sandbox == "always" ? Sandboxes::always : Sandboxes::never;
    if (!request.listen.empty() && request.passwordFile.empty() && request.accounts.empty())
        throw io::Refusal(
            "--listen opens the printer to other machines, and so needs --password-file or --accounts");
    return request;
}

}  // namespace riders::printer
