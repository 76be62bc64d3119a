#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "benches.h"
#include "plugin/plugin.h"
#include "processes.h"
#include "toolbox/host/session.h"
#include "toolbox/host/standardfile_folder.h"
#include "toolbox/host/user.h"

namespace {

namespace plugin = riders::plugin;

constexpr int filesARound = 50;

std::string bytesOf(const std::filesystem::path &file)
{
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

// What making a file that replaces another amounts to in plain system calls.
void writeAndRename(const Workplace &place, const std::string &bytes, bool sync)
{
    std::string temporary = place / "plain.tmp", file = place / "plain";
    int out = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (out < 0 || write(out, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()) ||
        (sync && fsync(out) != 0) || close(out) != 0 || rename(temporary.c_str(), file.c_str()) != 0)
        throw std::runtime_error("cannot write " + file);
}

void makeOnce(toolbox::ScriptedUser &user, plugin::Plugin &plugin)
{
    user.press(1);
    user.answerSave("looped");
    plugin.call(kSelectCommand, kCommandSettings);
}

double secondsOfRound(const std::function<void()> &once)
{
    return secondsOf([&] {
        for (int i = 0; i < filesARound; ++i)
            once();
    });
}

void measureProcess(const std::filesystem::path &riders, const Workplace &place)
{
    std::string made = place / "made", copy = place / "copy";
    auto make = [&] {
        std::filesystem::remove(made);
        ProcessRun run = runProcess({riders, "make", "-o", made, "--frequency", "85", "--angle", "45"});
        if (run.status != 0)
            throw std::runtime_error("riders make failed");
        return run.seconds;
    };
    make();
    Pair pair = sideBySide(41, make, [&] {
        std::filesystem::remove(copy);
        return runProcess({"cp", made, copy}).seconds;
    });
    printRow("riders make as a process : cp of the same file", pair, 5);
}

void measureLoop(const Workplace &place)
{
    toolbox::setStandardFileFolder(place.path());
    auto &machine = dynamic_cast<toolbox::HeadlessMachine &>(toolbox::machine());
    toolbox::ScriptedUser user(machine);
    plugin::Plugin plugin(plugin::pluginBesideProgram());
    makeOnce(user, plugin);
    std::string bytes = bytesOf(place / "looped");
    auto make = [&] { return secondsOfRound([&] { makeOnce(user, plugin); }); };
    for (bool sync : {true, false}) {
        Pair pair =
            sideBySide(7, make, [&] { return secondsOfRound([&] { writeAndRename(place, bytes, sync); }); });
        printRow(std::string("50 makes in one process : create, write, ") + (sync ? "fsync, " : "") + "rename",
                 pair, 2);
    }
}

}  // namespace

void measureMake(const std::filesystem::path &riders)
{
    Workplace place;
    printHeading("Making a riders file");
    measureProcess(riders, place);
    toolbox::Configuration configuration;
    configuration.preferencesFolder = place / "preferences";
    toolbox::HeadlessMachine machine;
    machine.wantPictures(false);
    toolbox::start(configuration, machine);
    measureLoop(place);
    toolbox::stop();
}
