#include "play/display_steps.h"

#include "play/displays.h"
#include "toolbox/host/picture.h"
#include "toolbox/host/trace.h"
#include "toolbox/windows.h"

namespace riders::play {
namespace {

using toolbox::ScriptError;

void keepPicture(const std::filesystem::path &file, const toolbox::Picture &picture)
{
    if (!toolbox::writePng(file, picture))
        throw ScriptError{0, "the picture " + file.string() + " cannot be written"};
    toolbox::trace::line("picture %s", toolbox::trace::quoted(file.filename().string()).c_str());
}

// The front dialog with frame and title, and a little around it.
Rect frontDialogView()
{
    constexpr int16_t around = 2;
    WindowPtr window = FrontWindow();
    if (!window)
        throw ScriptError{0, "no dialog is open"};
    Rect view = (*reinterpret_cast<WindowPeek>(window)->strucRgn)->rgnBBox;
    InsetRect(&view, -around, -around);
    return view;
}

// One display, numbered from 1, or what it shows of the front dialog.
toolbox::Picture pictureNow(toolbox::HeadlessMachine &machine, int number, bool dialogOnly)
{
    GetMainDevice();  // between dialogs nothing has looked at changed displays yet
    const std::vector<toolbox::Display> displays = machine.displays();
    auto index = static_cast<std::size_t>(number - 1);
    if (index >= displays.size())
        throw ScriptError{0, "there is no screen " + std::to_string(number)};
    toolbox::Picture whole = toolbox::displayPicture(number - 1);
    return dialogOnly ? pictureOf(whole, displays[index], frontDialogView()) : whole;
}

void beginFilm(Stage &stage, const std::filesystem::path &file, int every)
{
    stage.film = std::make_unique<Film>(frontDialogView(), every);
    stage.filmFile = file;
    stage.machine.setWatcher([&stage](int index, const toolbox::Picture &shown) {
        if (index == 0)
            stage.film->take(shown, stage.machine.displays().front());
    });
}

void endFilm(Stage &stage)
{
    if (!stage.film)
        throw ScriptError{0, "nothing is being filmed"};
    stage.machine.setWatcher({});
    toolbox::Picture sheet = stage.film->sheet();
    stage.film.reset();
    keepPicture(stage.filmFile, sheet);
}

}  // namespace

void picture(Arguments &arguments, Stage &stage)
{
    std::string name = arguments.word("a name");
    bool dialogOnly = arguments.take("dialog");
    int number = arguments.take("screen") ? arguments.ordinal("a screen's number") : 1;
    std::filesystem::path file = stage.picturesFolder / (name + ".png");
    stage.user.then(
        [&stage, file, number, dialogOnly] { keepPicture(file, pictureNow(stage.machine, number, dialogOnly)); });
}

void film(Arguments &arguments, Stage &stage)
{
    std::string name = arguments.word("a name");
    if (name == "end" && !arguments.more())
        return stage.user.then([&stage] { endFilm(stage); });
    std::filesystem::path file = stage.picturesFolder / (name + ".png");
    int every = arguments.number("a number of pictures", 1, INT16_MAX);
    stage.user.then([&stage, file, every] { beginFilm(stage, file, every); });
}

void depth(Arguments &arguments, Stage &stage)
{
    int bits = arguments.number("a number of bits", 1, 32);
    if (!isDepth(bits))
        arguments.fail("a screen has 1, 2, 4, 8 or 32 bits per pixel");
    stage.user.setDepth(bits);
}

void scale(Arguments &arguments, Stage &stage)
{
    stage.user.setScale(arguments.number("a number of device pixels", 1, largestScale));
}

void resize(Arguments &arguments, Stage &stage)
{
    int width = arguments.number("a width", shortestSide, longestSide);
    int height = arguments.number("a height", shortestSide, longestSide);
    stage.user.resizeDisplay(width, height);
}

void displays(Arguments &arguments, Stage &stage)
{
    std::string text = arguments.word("screens such as 640x480x8+1024x768x1");
    std::vector<toolbox::Display> all = displaysFromText(text);
    if (all.empty())
        arguments.fail("\"" + text + "\" is not a list of screens such as 640x480x8+1024x768x1");
    stage.user.setDisplays(all);
}

}  // namespace riders::play
