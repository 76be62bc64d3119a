#include <sys/stat.h>

#include <chrono>
#include <fstream>
#include <stdexcept>

#include "benches.h"
#include "plugin/plugin.h"
#include "processes.h"
#include "toolbox/host/picture.h"
#include "toolbox/host/session.h"
#include "toolbox/host/standardfile_folder.h"
#include "toolbox/host/user.h"
#include "toolbox/windows.h"

namespace {

namespace plugin = riders::plugin;

using Clock = std::chrono::steady_clock;

constexpr int cancelItem = 2;
constexpr int frequencyItem = 4;
constexpr int frequencyChoice = 5;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// A session on a display with pictures, with the plug-in loaded.
class Session {
public:
    explicit Session(const Workplace &place)
    {
        toolbox::Configuration configuration;
        configuration.preferencesFolder = place / "preferences";
        toolbox::start(configuration, machine);
        plugin = std::make_unique<plugin::Plugin>(plugin::pluginBesideProgram());
        user = std::make_unique<toolbox::ScriptedUser>(machine);
    }
    ~Session()
    {
        user.reset();
        plugin.reset();
        toolbox::stop();
    }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    toolbox::HeadlessMachine machine;
    std::unique_ptr<plugin::Plugin> plugin;
    std::unique_ptr<toolbox::ScriptedUser> user;
};

// What the user does in the settings dialog, timed from when everything before
// it is drawn until its own result is.
double secondsInSettings(Session &session, const std::function<void(toolbox::ScriptedUser &)> &act)
{
    Clock::time_point start;
    double seconds = 0;
    session.user->then([&] { start = Clock::now(); });
    act(*session.user);
    session.user->then([&] { seconds = secondsSince(start); });
    session.user->press(cancelItem);
    session.plugin->call(kSelectCommand, kCommandSettings);
    return seconds;
}

double repaint(Session &session)
{
    return secondsInSettings(session, [](toolbox::ScriptedUser &user) {
        user.then([] {
            SetPort(FrontWindow());
            InvalRect(&FrontWindow()->portRect);
        });
        user.wait(1);
    });
}

double popup(Session &session)
{
    return secondsInSettings(session,
                             [](toolbox::ScriptedUser &user) { user.choose(frequencyItem, frequencyChoice); });
}

double copyOfTheDisplay()
{
    const toolbox::Picture picture = toolbox::displayPicture(0);
    toolbox::Picture copy = picture;
    return secondsOf([&] { std::copy(picture.pixels.begin(), picture.pixels.end(), copy.pixels.begin()); });
}

void measureStart(const std::filesystem::path &riders, const Workplace &place)
{
    std::string script = place / "settings.play";
    std::ofstream(script) << "start\ncommand 0\npress 2\n";
    Pair pair = sideBySide(
        41,
        [&] {
            ProcessRun run = runProcess({riders, "play", script, "--preferences", place / "preferences"});
            if (run.status != 0)
                throw std::runtime_error("riders play failed");
            return run.seconds;
        },
        [&] {
            return runProcess({"sh", "-c", "true; /bin/true"}).seconds;
        });
    printRow("start, settings dialog painted, cancelled, end : sh -c true", pair, 5);
    printFigure("  its time", pair.ours * 1e3, "ms", 50);
}

void measurePainting(const Workplace &place)
{
    Session session(place);
    printRow("a full repaint of the settings dialog : copying the screen's pixels",
             sideBySide(
                 41, [&] { return repaint(session); }, copyOfTheDisplay),
             20);
    printRow("a popup opened, tracked and closed : a full repaint",
             sideBySide(
                 41, [&] { return popup(session); }, [&] { return repaint(session); }),
             10);
}

void fillFolder(const std::filesystem::path &folder, int files)
{
    std::filesystem::create_directory(folder);
    for (int i = 0; i < files; ++i)
        std::ofstream(folder / ("Job " + std::to_string(i * 7919 % files) + ".riders")) << "%!Zu3_Riders\n";
}

// As plainly as possible: names, kinds, sorted by their bytes.
double listPlainly(const std::filesystem::path &folder)
{
    return secondsOf([&] {
        std::vector<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(folder)) {
            struct stat status;
            if (stat(entry.path().c_str(), &status) == 0)
                names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
    });
}

double openRemoval(Session &session)
{
    double seconds = 0;
    Clock::time_point start = Clock::now();
    session.user->then([&] { seconds = secondsSince(start); });
    session.user->cancelFile();
    session.plugin->call(kSelectCommand, kCommandRemove);
    return seconds;
}

void measureListing(const Workplace &place)
{
    std::filesystem::path folder = place / "jobs";
    fillFolder(folder, 10000);
    Session session(place);
    toolbox::setStandardFileFolder(folder);
    Pair pair = sideBySide(
        7, [&] { return openRemoval(session); }, [&] { return listPlainly(folder); });
    printRow("a dialog of 10,000 files opened : names read, looked at, sorted", pair, 5);
    printFigure("  its time", pair.ours * 1e3, "ms", 50);
}

}  // namespace

void measureDialogs(const std::filesystem::path &riders)
{
    Workplace place;
    printHeading("Dialogs on the headless screen");
    measureStart(riders, place);
    measurePainting(place);
    measureListing(place);
}
