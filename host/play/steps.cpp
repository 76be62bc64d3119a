#include "play/steps.h"

#include <cstdint>
#include <map>

#include "app/application.h"
#include "play/arguments.h"
#include "play/display_steps.h"
#include "toolbox/host/faults.h"

namespace riders::play {
namespace {

using toolbox::ScriptError;

void start(Arguments &, Stage &stage)
{
    stage.user.atHost([&stage] { stage.plugin.startUp(); });
}

void about(Arguments &, Stage &stage)
{
    stage.user.atHost([&stage] { stage.keeper.call(kSelectAbout); });
}

void idle(Arguments &, Stage &stage)
{
    stage.user.atHost([&stage] { stage.plugin.call(kSelectIdle); });
}

void command(Arguments &arguments, Stage &stage)
{
    int number = arguments.number("a command number", INT16_MIN, INT16_MAX);
    stage.user.atHost([&stage, number] { stage.keeper.call(kSelectCommand, number); });
}

// The program as a person has it, until Quit.
void window(Arguments &arguments, Stage &stage)
{
    const std::string job = arguments.more() ? arguments.word("a job") : "";
    stage.user.atHost([&stage, job] {
        app::Application({stage.program, {}, job, true}, stage.plugin, {}).run();
    });
}

void menu(Arguments &arguments, Stage &stage)
{
    const std::string title = arguments.word("a menu's title");
    stage.user.chooseFromBar(title, arguments.word("an item"));
}

void drop(Arguments &arguments, Stage &stage)
{
    const std::filesystem::path file = std::filesystem::absolute(arguments.word("a file"));
    stage.user.then([&stage, file] {
        stage.machine.push({.kind = toolbox::Input::Kind::fileDropped, .path = file});
    });
}

void press(Arguments &arguments, Stage &stage)
{
    int item = arguments.ordinal("an item number");
    stage.user.press(item, arguments.modifiers());
}

void click(Arguments &arguments, Stage &stage)
{
    Point where = arguments.point();
    stage.user.clickAt(where, arguments.modifiers());
}

void move(Arguments &arguments, Stage &stage)
{
    Point where = arguments.point();
    stage.user.moveTo(where, arguments.modifiers());
}

void down(Arguments &arguments, Stage &stage)
{
    Point where = arguments.point();
    stage.user.pressAt(where, arguments.modifiers());
}

void hold(Arguments &arguments, Stage &stage)
{
    int item = arguments.ordinal("an item number");
    stage.user.hold(item, arguments.modifiers());
}

void up(Arguments &arguments, Stage &stage)
{
    if (!arguments.pointFollows())
        return stage.user.release(arguments.modifiers());
    Point where = arguments.point();
    stage.user.releaseAt(where, arguments.modifiers());
}

void drag(Arguments &arguments, Stage &stage)
{
    Point from = arguments.point(), to = arguments.point();
    stage.user.drag(from, to, arguments.modifiers());
}

void choose(Arguments &arguments, Stage &stage)
{
    int item = arguments.ordinal("an item number");
    if (arguments.numberFollows())
        stage.user.choose(item, arguments.ordinal("a menu item"));
    else
        stage.user.choose(item, arguments.word("a menu item"));
}

void leave(Arguments &arguments, Stage &stage)
{
    stage.user.chooseNothing(arguments.ordinal("an item number"));
}

void type(Arguments &arguments, Stage &stage)
{
    stage.user.type(arguments.word("a text"));
}

void key(Arguments &arguments, Stage &stage)
{
    std::string name = arguments.word("a key");
    stage.user.key(name, arguments.modifiers());
}

void repeat(Arguments &arguments, Stage &stage)
{
    std::string name = arguments.word("a key");
    int times = arguments.ordinal("a number of repeats");
    stage.user.repeat(name, times, arguments.modifiers());
}

std::string fileName(Arguments &arguments)
{
    std::string name = arguments.word("a file name");
    if (std::filesystem::path(name).filename().empty())
        arguments.fail("\"" + name + "\" names no file");
    return name;
}

void save(Arguments &arguments, Stage &stage)
{
    std::string name = fileName(arguments);
    stage.user.answerSave(name, !arguments.take("keep"));
}

void open(Arguments &arguments, Stage &stage)
{
    stage.user.answerOpen(fileName(arguments));
}

void cancelFile(Arguments &, Stage &stage)
{
    stage.user.cancelFile();
}

void wait(Arguments &arguments, Stage &stage)
{
    int ticks = arguments.number("a number of ticks", 0, INT32_MAX);
    stage.user.wait(static_cast<std::uint32_t>(ticks));
}

void clipboard(Arguments &arguments, Stage &stage)
{
    stage.user.putOnClipboard(arguments.word("a text"));
}

void fail(Arguments &arguments, Stage &stage)
{
    std::string name = arguments.word("a file call");
    auto kind = toolbox::faults::kindNamed(name);
    if (!kind && name != "any")
        arguments.fail("there is no file call \"" + name + "\"");
    int nth = arguments.number("a call", 1, INT32_MAX);
    int error = arguments.number("an error code", INT16_MIN, -1);
    bool onward = arguments.take("onward");
    stage.user.then([=] {
        if (kind)
            toolbox::faults::failFileCall(*kind, nth, static_cast<OSErr>(error), onward);
        else
            toolbox::faults::failAnyFileCall(nth, static_cast<OSErr>(error), onward);
    });
}

const std::map<std::string, void (*)(Arguments &, Stage &)> verbs = {
    {"start", start},         {"about", about},     {"idle", idle},     {"command", command},
    {"press", press},         {"click", click},     {"move", move},     {"down", down},
    {"hold", hold},           {"up", up},           {"drag", drag},     {"choose", choose},
    {"leave", leave},         {"type", type},       {"key", key},       {"repeat", repeat},
    {"save", save},           {"open", open},       {"wait", wait},     {"cancel-file", cancelFile},
    {"clipboard", clipboard}, {"picture", picture}, {"film", film},     {"fail", fail},
    {"depth", depth},         {"scale", scale},     {"resize", resize}, {"screens", displays},
    {"window", window},       {"menu", menu},       {"drop", drop},
};

}  // namespace

void queueStep(const ScriptLine &line, Stage &stage)
{
    auto verb = verbs.find(line.words[0]);
    if (verb == verbs.end())
        throw ScriptError{line.number, "there is no step \"" + line.words[0] + "\""};
    stage.user.atLine(line.number);
    Arguments arguments(line);
    verb->second(arguments, stage);
    arguments.end();
}

}  // namespace riders::play
