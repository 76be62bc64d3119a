#include "play/play.h"

#include <cstdio>
#include <fstream>
#include <new>
#include <optional>

#include "io/bytes.h"
#include "io/interruption.h"
#include "io/refusal.h"
#include "play/steps.h"
#include "toolbox/host/trace.h"

namespace riders::play {
namespace {

std::string readText(const std::filesystem::path &file)
{
    std::ifstream in(file, std::ios::binary);
    const bool opened = in.is_open();
    std::string text, part(64 << 10, '\0');
    while (in.read(part.data(), static_cast<std::streamsize>(part.size())) || in.gcount() > 0)
        text.append(part, 0, static_cast<std::size_t>(in.gcount()));
    if (!opened || in.bad())
        throw plugin::PluginError("the script " + file.string() + " cannot be read");
    return text;
}

void makeFolder(const std::filesystem::path &folder)
{
    std::error_code error;
    if (!folder.empty())
        std::filesystem::create_directories(folder, error);
    if (error)
        throw plugin::PluginError("the folder " + folder.string() + " cannot be made: " + error.message());
}

// So that nobody loses a file by mistake. A trace begins with the plug-in's resources; an empty file holds
// nothing.
void refuseUnlessTrace(const std::filesystem::path &path)
{
    constexpr std::string_view beginning = "file openResFile \"";
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored))
        return;
    std::string start(beginning.size(), '\0');
    const io::OpenFile in = io::openOrdinaryFile(path);
    start.resize(io::readFully(in, start.data(), start.size()));
    if (!start.empty() && start != beginning)
        throw io::Refusal(path.string() +
                          ": exists and is no trace; name another file, or replace it with --force");
}

// The trace file, or none.
class TraceFile {
public:
    TraceFile(const std::filesystem::path &path, bool force) : path_(path)
    {
        if (path.empty())
            return;
        if (!force)
            refuseUnlessTrace(path);
        file_.open(path, std::ios::binary | std::ios::trunc);
        if (!file_)
            refuse();
        toolbox::trace::setSink([this](const std::string &line) { file_ << line << '\n'; });
    }
    ~TraceFile() { toolbox::trace::setSink({}); }
    TraceFile(const TraceFile &) = delete;
    TraceFile &operator=(const TraceFile &) = delete;

    // PluginError when not all of it could be written.
    void finish()
    {
        if (file_.is_open() && !file_.flush())
            refuse();
    }

private:
    [[noreturn]] void refuse() const
    {
        throw plugin::PluginError("the trace " + path_.string() + " cannot be written");
    }

    std::filesystem::path path_;
    std::ofstream file_;
};

// A film that was not ended is dropped.
class StopWatching {
public:
    explicit StopWatching(toolbox::HeadlessMachine &machine) : machine_(machine) {}
    ~StopWatching() { machine_.setWatcher({}); }
    StopWatching(const StopWatching &) = delete;
    StopWatching &operator=(const StopWatching &) = delete;

private:
    toolbox::HeadlessMachine &machine_;
};

std::string quotedAfterColon(const std::string &said)
{
    return said.empty() ? said : ": \"" + said + "\"";
}

// Queues every step first, so that a script with a fault in its last line does
// nothing at all, and then lets the user begin.
// What could not be kept is returned: the session goes on without it.
std::string playOn(toolbox::HeadlessMachine &machine, const PlayRequest &request, const std::vector<ScriptLine> &lines)
{
    toolbox::ScriptedUser user(machine);
    plugin::Plugin plugin(request.plugin);
    std::string notKept;
    keeping::Keeper keeper(plugin, [&notKept](const std::string &problem) {
        notKept += (notKept.empty() ? "" : "; ") + problem;
    });
    user.quitsWhenStuck();
    Stage stage{user, plugin, keeper, request.picturesFolder, machine,
                request.plugin.parent_path() / "riders"};
    StopWatching atEnd{machine};
    for (const ScriptLine &line : lines)
        queueStep(line, stage);
    try {
        user.run();
    } catch (const toolbox::ProcessEnded &) {
        if (user.stuck())
            throw *user.stuck();
        if (user.idle() && user.lastMessage().empty())
            throw toolbox::ScriptError{0, "the process has ended without a word; there may not be enough memory"};
        if (!user.idle())
            throw toolbox::ScriptError{user.nextLine(), "the process has ended, and the script goes on" +
                                                            quotedAfterColon(user.lastMessage())};
    }
    return notKept;
}

// A session ends between two inputs when it is interrupted, so that nothing is left of it.
class InterruptibleMachine : public toolbox::HeadlessMachine {
public:
    using HeadlessMachine::HeadlessMachine;
    std::optional<toolbox::Input> nextInput(std::uint32_t waitTicks) override
    {
        io::Interruption::check();
        return HeadlessMachine::nextInput(waitTicks);
    }
    void passTicks(std::uint32_t count) override
    {
        io::Interruption::check();
        HeadlessMachine::passTicks(count);
    }
};

std::unique_ptr<toolbox::HeadlessMachine> seatFor(const PlayRequest &request)
{
    return request.seat ? request.seat(request.displays)
                        : std::make_unique<InterruptibleMachine>(request.displays);
}

std::string described(const std::filesystem::path &script, const toolbox::ScriptError &error)
{
    std::string place = script.string() + ":";
    if (error.line > 0)
        place += std::to_string(error.line) + ":";
    return place + " " + error.message;
}

}  // namespace

std::string play(const PlayRequest &request)
{
    std::string problem;
    std::optional<io::Interruption> interruption;
    if (!request.seat)
        interruption.emplace();
    try {
        std::vector<ScriptLine> lines = splitScript(readText(request.script));
        makeFolder(request.picturesFolder);
        TraceFile trace(request.traceFile, request.force);
        std::unique_ptr<toolbox::HeadlessMachine> machine = seatFor(request);
        toolbox::start(request.configuration, *machine);
        try {
            if (const std::string notKept = playOn(*machine, request, lines); !notKept.empty())
                problem = request.script.string() + ": " + notKept;
        } catch (const toolbox::ScriptError &error) {
            problem = described(request.script, error);
        } catch (...) {
            toolbox::stop();
            throw;
        }
        toolbox::stop();
        trace.finish();
    } catch (const toolbox::ScriptError &error) {
        problem = described(request.script, error);
    } catch (const std::bad_alloc &) {
        problem = "there is not enough memory";
    } catch (const io::Interrupted &) {
        throw;
    } catch (const std::exception &error) {
        if (problem.empty())
            problem = error.what();
    }
    return problem;
}

}  // namespace riders::play
