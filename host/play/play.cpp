#include "play/play.h"

#include <charconv>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "play/steps.h"
#include "toolbox/host/trace.h"

namespace riders {
namespace {

std::string readText(const std::filesystem::path &file)
{
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    if (!in || std::filesystem::is_directory(file))
        throw PluginError("the script " + file.string() + " cannot be read");
    return text.str();
}

void makeFolder(const std::filesystem::path &folder)
{
    std::error_code error;
    if (!folder.empty())
        std::filesystem::create_directories(folder, error);
    if (error)
        throw PluginError("the folder " + folder.string() + " cannot be made: " + error.message());
}

// The trace as a file, or as nothing.
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

    // PluginError where not all of it could be written.
    void finish()
    {
        if (file_.is_open() && !file_.flush())
            refuse();
    }

private:
    [[noreturn]] void refuse() const { throw PluginError("the trace " + path_.string() + " cannot be written"); }

    std::filesystem::path path_;
    std::ofstream file_;
};

// A film that was not ended is dropped.
struct StopWatching {
    toolbox::HeadlessMachine &machine;
    ~StopWatching() { machine.setWatcher({}); }
};

// Queues every step first, so that a script with a fault in its last line does
// nothing at all, and then lets the user go.
void playOn(toolbox::HeadlessMachine &machine, const PlayRequest &request, const std::vector<ScriptLine> &lines)
{
    toolbox::ScriptedUser user(machine);
    Plugin plugin(request.plugin);
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

std::string described(const std::filesystem::path &script, const toolbox::ScriptError &error)
{
    std::string place = script.string() + ":";
    if (error.line > 0)
        place += std::to_string(error.line) + ":";
    return place + " " + error.message;
}

bool takeNumber(std::string_view &text, int &value, int least, int most)
{
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc())
        return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value >= least && value <= most;
}

bool takeLetter(std::string_view &text, char letter)
{
    if (text.empty() || text.front() != letter)
        return false;
    text.remove_prefix(1);
    return true;
}

}  // namespace

std::string play(const PlayRequest &request)
{
    std::string problem;
    try {
        std::vector<ScriptLine> lines = splitScript(readText(request.script));
        makeFolder(request.picturesFolder);
        TraceFile trace(request.traceFile);
        toolbox::HeadlessMachine machine(request.screens);
        toolbox::start(request.configuration, machine);
        try {
            playOn(machine, request, lines);
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

std::vector<toolbox::Screen> screensFromText(const std::string &text)
{
    std::vector<toolbox::Screen> screens;
    std::string_view rest = text;
    int left = 0;
    do {
        int width = 0, height = 0, depth = 0;
        if (!takeNumber(rest, width, 64, 8192) || !takeLetter(rest, 'x') || !takeNumber(rest, height, 64, 8192) ||
            !takeLetter(rest, 'x') || !takeNumber(rest, depth, 1, 32))
            return {};
        bool knownDepth = depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 32;
        if (!knownDepth || left + width > INT16_MAX)
            return {};
        screens.push_back({{0, static_cast<std::int16_t>(left), static_cast<std::int16_t>(height),
                            static_cast<std::int16_t>(left + width)},
                           depth});
        left += width;
    } while (takeLetter(rest, '+'));
    return rest.empty() ? screens : std::vector<toolbox::Screen>{};
}

}  // namespace riders
