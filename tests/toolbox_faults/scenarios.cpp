#include "toolbox_faults/scenarios.h"

#include <fstream>
#include <sstream>

#include "app/application.h"
#include "make/make.h"
#include "play/play.h"
#include "support/kept_sessions.h"
#include "toolbox/host/user.h"

namespace fs = std::filesystem;
using riders::make::MakeRequest;

namespace toolbox_faults {
namespace {

const fs::path built = RIDERS_BINARY_DIR;

Words made(MakeRequest request)
{
    request.plugin = built / "riders.so";
    const riders::make::Made result = riders::make::make(request);
    return {result.problem, result.note};
}

Scenario makeScenario(const std::string &name, const MakeRequest &request)
{
    return {name, [request] { return made(request); }, true};
}

MakeRequest everyChoice(const fs::path &output)
{
    MakeRequest request;
    request.output = output;
    request.frequency = "61.5";
    request.angle = "22.5";
    request.spot = "line";
    request.flatness = "1";
    request.annotation = "Proof 3, not for print";
    request.font = "Helvetica";
    request.size = "9";
    request.errorHandler = true;
    return request;
}

MakeRequest ownDot(const fs::path &output)
{
    MakeRequest request;
    request.output = output;
    request.angle = "45";
    request.spot = "mine.spot";
    return request;
}

MakeRequest saving(MakeRequest request)
{
    request.saveSettings = true;
    return request;
}

// No one looks at the pixels.
std::unique_ptr<toolbox::HeadlessMachine> seat(const std::vector<toolbox::Display> &displays)
{
    auto machine = std::make_unique<toolbox::HeadlessMachine>(displays);
    machine->wantPictures(false);
    return machine;
}

riders::play::PlayRequest requestFor(const fs::path &script)
{
    riders::play::PlayRequest request;
    request.script = script;
    request.plugin = built / "riders.so";
    request.displays = riders::play::displaysFromText("640x480x8");
    request.configuration.preferencesFolder = fs::path(getenv("XDG_CONFIG_HOME")) / "riders";
    request.configuration.startFolder = fs::current_path();
    request.seat = seat;
    return request;
}

// As the first line of a kept session gives them.
void setOption(riders::play::PlayRequest &request, const std::string &option, const std::string &value)
{
    if (option == "--screen")
        request.displays = riders::play::displaysFromText(value);
    else if (option == "--decimal")
        request.configuration.decimalPoint = value[0];
    else if (option == "--system-version")
        request.configuration.systemVersion = static_cast<std::int32_t>(std::stoul(value, nullptr, 16));
    else if (option == "--heap")
        request.configuration.heapBytes = std::stoi(value);
    else
        throw std::logic_error("no such option: " + option);
}

void setOptions(riders::play::PlayRequest &request)
{
    std::ifstream in(request.script);
    std::string first;
    std::getline(in, first);
    std::istringstream words(first);
    std::string mark, option, value;
    words >> mark >> mark;
    if (mark != "options:")
        return;
    while (words >> option)
        if (option == "--no-color-quickdraw")
            request.configuration.quickDrawVersion = 0;
        else if (words >> value)
            setOption(request, option, value);
}

Scenario played(const std::string &name, const fs::path &script)
{
    return {name, [script] {
                riders::play::PlayRequest request = requestFor(script);
                setOptions(request);
                return Words{riders::play::play(request), {}};
            }};
}

enum {
    jobWindow = 1000,
    addButton = 1,
    takeOutButton = 3,
    settingsDialog = 16300,
    frequencyPopup = 4,
    makeButton = 1,
    trashQuestion = 1014,
    moveButton = 1
};

void queueAtTheWindow(toolbox::ScriptedUser &user)
{
    user.in(jobWindow);
    user.press(addButton);
    user.in(0);
    user.answerOpen("film");
    user.key("return");
    user.in(jobWindow);
    user.press(takeOutButton);
    user.in(0);
    user.answerSave("again.ps");
    user.in(jobWindow);
    user.key("escape");
    user.chooseFromBar("Riders", "Make Riders File...");
    user.in(settingsDialog);
    user.choose(frequencyPopup, 3);
    user.press(makeButton);
    user.in(0);
    user.answerSave("Old film");
    user.chooseFromBar("Riders", "Remove Riders File...");
    user.answerOpen("film");
    user.in(trashQuestion);
    user.press(moveButton);
    user.in(0);
    user.chooseFromBar("\x13", "About Riders...");
    user.key("return");
    user.chooseFromBar("File", "Quit");
}

Words atTheWindow()
{
    toolbox::Configuration configuration;
    configuration.startFolder = fs::current_path();
    toolbox::HeadlessMachine machine;
    machine.wantPictures(false);
    toolbox::start(configuration, machine);
    toolbox::ScriptedUser user(machine);
    user.quitsWhenStuck();
    queueAtTheWindow(user);
    Words words;
    try {
        riders::app::Application({built / "riders", built / "riders.so", fs::absolute("job.ps")}, {}).run();
    } catch (const toolbox::ScriptError &error) {
        words.problem = error.message;
    } catch (const toolbox::ProcessEnded &) {
        words.problem = "the plug-in ended the program: " + user.lastMessage();
    } catch (const std::exception &error) {
        words.problem = error.what();
    }
    if (user.stuck())
        words.problem = user.stuck()->message;
    toolbox::stop();
    return words;
}

fs::path ownScript(const std::string &name)
{
    return fs::path(RIDERS_SOURCE_DIR) / "tests" / "toolbox_faults" / (name + ".play");
}

}  // namespace

std::vector<Scenario> everyScenario()
{
    std::vector<Scenario> all = {makeScenario("make_new", everyChoice("made")),
                                 makeScenario("make_replacing", everyChoice("film")),
                                 makeScenario("make_saving_settings", saving(everyChoice("made"))),
                                 makeScenario("make_with_spot", ownDot("made")),
                                 makeScenario("make_with_spot_saving", saving(ownDot("film"))),
                                 played("removal", ownScript("removal")),
                                 {"window", atTheWindow}};
    for (const std::string &name : kept::names())
        all.push_back(played(name, kept::sessions / (name + ".play")));
    return all;
}

Files filesBefore()
{
    Files files;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(kept::sessions / "files"))
        if (entry.is_regular_file())
            files[entry.path().lexically_relative(kept::sessions / "files")] = contentsOf(entry.path());
    files["film"] = "%!Zu3_Riders\n/x 1 def\n%Zu3_RidersEnd\n";
    files["mine.spot"] = "%!KT1_Spot\rabs exch abs add 1 exch sub % mine\r";
    files["job.ps"] =
        "%!PS-Adobe-3.0\n%%Title: (Poster)\n%%Pages: 1\n%%EndComments\n%%Page: 1 1\nshowpage\n%%Trailer\n%%EOF\n";
    return files;
}

std::vector<Scenario> nextRuns()
{
    MakeRequest request;
    request.output = "next";
    request.frequency = "71";
    return {makeScenario("the next make", saving(request)), played("the next session", ownScript("next"))};
}

}  // namespace toolbox_faults
