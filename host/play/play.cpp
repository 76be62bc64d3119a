#include "play/play.h"

#include <cstdio>
#include <fstream>

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

// The trace file, or none.
class TraceFile {
public:
    explicit TraceFile(const std::filesystem::path &path) : path_(path)
    {
        if (path.empty())
            return;
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

// Queues every step first, so that a script with a fault in its last line does
// nothing at all, and then lets the user begin.
void playOn(toolbox::HeadlessMachine &machine, const PlayRequest &request, const std::vector<ScriptLine> &lines)
{
    toolbox::ScriptedUser user(machine);
    plugin::Plugin plugin(request.plugin);
    Stage stage{user, plugin, request.picturesFolder, machine};
    StopWatching atEnd{machine};
    for (const ScriptLine &line : lines)
        queueStep(line, stage);
    try {
        user.run();
    } catch (const toolbox::ProcessEnded &) {
        if (!user.idle())
            throw toolbox::ScriptError{user.nextLine(), "the process has ended, and the script goes on"};
    }
}

std::unique_ptr<toolbox::HeadlessMachine> seatFor(const PlayRequest &request)
{
    return request.seat ? request.seat(request.displays)
                        : std::make_unique<toolbox::HeadlessMachine>(request.displays);
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
    try {
        std::vector<ScriptLine> lines = splitScript(readText(request.script));
        makeFolder(request.picturesFolder);
        TraceFile trace(request.traceFile);
        std::unique_ptr<toolbox::HeadlessMachine> machine = seatFor(request);
        toolbox::start(request.configuration, *machine);
        try {
            playOn(*machine, request, lines);
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
    } catch (const std::exception &error) {
        if (problem.empty())
            problem = error.what();
    }
    return problem;
}

}  // namespace riders::play
