#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <memory>
#include <stdexcept>

#include "benches.h"
#include "plugin/plugin.h"
#include "processes.h"
#include "toolbox/host/session.h"
#include "toolbox/host/standardfile_folder.h"
#include "toolbox/host/user.h"

namespace {

namespace plugin = riders::plugin;

using Clock = std::chrono::steady_clock;

constexpr std::size_t bodyBytes = 100'000'000;
constexpr int spotPopup = 6;
constexpr int importAnyway = 1;  // in the question that comes first

void writeSpotFile(const std::filesystem::path &file)
{
    std::ofstream out(file, std::ios::binary);
    out << "%!KT1_Spot\r";
    std::string part(1'000'000, ' ');
    for (std::size_t written = 0; written < bodyBytes; written += part.size())
        out << part;
}

double readPlainly(const std::filesystem::path &file)
{
    return secondsOf([&] {
        std::unique_ptr<char[]> bytes(new char[bodyBytes + 11]);
        int in = open(file.c_str(), O_RDONLY);
        if (in < 0 || read(in, bytes.get(), bodyBytes + 11) != static_cast<ssize_t>(bodyBytes + 11))
            throw std::runtime_error("cannot read " + file.string());
        close(in);
    });
}

// From the choice in the popup until the settings dialog is in front again.
double importOnce(toolbox::ScriptedUser &user, plugin::Plugin &plugin)
{
    Clock::time_point start;
    double seconds = 0;
    user.then([&] { start = Clock::now(); });
    user.choose(spotPopup, "Import...");
    user.press(importAnyway);
    user.answerOpen("large.spot");
    user.wait(1);
    user.then([&] { seconds = std::chrono::duration<double>(Clock::now() - start).count(); });
    user.press(2);
    plugin.call(kSelectCommand, kCommandSettings);
    return seconds;
}

}  // namespace

void measureImport()
{
    Workplace place;
    writeSpotFile(place / "large.spot");
    toolbox::Configuration configuration;
    configuration.heapBytes = 500'000'000;
    configuration.preferencesFolder = place / "preferences";
    toolbox::HeadlessMachine machine;
    machine.wantPictures(false);
    toolbox::start(configuration, machine);
    toolbox::setStandardFileFolder(place.path());
    {
        toolbox::ScriptedUser user(machine);
        plugin::Plugin plugin(plugin::pluginBesideProgram());
        printHeading("Importing a spot function");
        Pair pair = sideBySide(
            5, [&] { return importOnce(user, plugin); }, [&] { return readPlainly(place / "large.spot"); });
        printRow("100 MB imported : read into memory in one call", pair, 1.5);
    }
    toolbox::stop();
}
