#include "play/steps.h"

#include <charconv>
#include <cstdint>
#include <map>

#include "toolbox/events.h"
#include "toolbox/host/faults.h"
#include "toolbox/host/picture.h"
#include "toolbox/host/trace.h"
#include "toolbox/windows.h"

namespace riders {
namespace {

using toolbox::ScriptError;

// The words behind the verb, taken one after the other.
class Arguments {
public:
    explicit Arguments(const ScriptLine &line) : line_(line) {}

    bool more() const { return next_ < line_.words.size(); }

    std::string word(const char *what)
    {
        if (!more())
            throw ScriptError{line_.number, line_.words[0] + " needs " + what};
        return line_.words[next_++];
    }

    int number(const char *what, int least, int most)
    {
        std::string text = word(what);
        int value = 0;
        auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        bool isNumber = error == std::errc() && end == text.data() + text.size();
        if (!isNumber || value < least || value > most)
            fail(line_.words[0] + " needs " + what + " from " + std::to_string(least) + " to " +
                 std::to_string(most) + ", not \"" + text + "\"");
        return value;
    }
    // What the Toolbox counts in 16 bits, from 1.
    int ordinal(const char *what) { return number(what, 1, INT16_MAX); }

    // Takes nothing: whether the next word is all digits. In quotes they are a
    // text.
    bool numberFollows() const
    {
        return more() && !line_.quoted[next_] &&
               line_.words[next_].find_first_not_of("0123456789") == std::string::npos;
    }

    bool take(const std::string &expected)
    {
        if (!more() || line_.words[next_] != expected)
            return false;
        ++next_;
        return true;
    }

    // "with command shift": the rest of the line, when it begins so.
    std::uint16_t modifiers()
    {
        static const std::map<std::string, std::uint16_t> known = {
            {"command", cmdKey}, {"shift", shiftKey}, {"option", optionKey}, {"control", controlKey}};
        std::uint16_t all = 0;
        if (!take("with"))
            return all;
        do {
            std::string name = word("a modifier key");
            auto found = known.find(name);
            if (found == known.end())
                fail("there is no modifier key \"" + name + "\"");
            all |= found->second;
        } while (more());
        return all;
    }

    void end()
    {
        if (more())
            fail("\"" + line_.words[next_] + "\" is too much for " + line_.words[0]);
    }

    [[noreturn]] void fail(const std::string &message) { throw ScriptError{line_.number, message}; }

private:
    const ScriptLine &line_;
    std::size_t next_ = 1;
};

void start(Arguments &, Stage &stage)
{
    stage.user.atHost([&stage] { stage.plugin.startUp(); });
}

void about(Arguments &, Stage &stage)
{
    stage.user.atHost([&stage] { stage.plugin.call(kSelectAbout); });
}

void idle(Arguments &, Stage &stage)
{
    stage.user.atHost([&stage] { stage.plugin.call(kSelectIdle); });
}

void command(Arguments &arguments, Stage &stage)
{
    int number = arguments.number("a command number", INT16_MIN, INT16_MAX);
    stage.user.atHost([&stage, number] { stage.plugin.call(kSelectCommand, number); });
}

void press(Arguments &arguments, Stage &stage)
{
    int item = arguments.ordinal("an item number");
    stage.user.press(item, arguments.modifiers());
}

void click(Arguments &arguments, Stage &stage)
{
    int h = arguments.number("a horizontal coordinate", INT16_MIN, INT16_MAX);
    int v = arguments.number("a vertical coordinate", INT16_MIN, INT16_MAX);
    Point where{static_cast<std::int16_t>(v), static_cast<std::int16_t>(h)};
    stage.user.clickAt(where, arguments.modifiers());
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

void keepPicture(const std::filesystem::path &file, const toolbox::Picture &picture)
{
    if (!toolbox::writePng(file, picture))
        throw ScriptError{0, "the picture " + file.string() + " cannot be written"};
    toolbox::trace::line("picture %s", toolbox::trace::quoted(file.filename().string()).c_str());
}

void picture(Arguments &arguments, Stage &stage)
{
    std::string name = arguments.word("a name");
    std::filesystem::path file = stage.picturesFolder / (name + ".png");
    stage.user.then([file] { keepPicture(file, toolbox::screenPicture(0)); });
}

// The front dialog with its frame.
Rect frontDialogView()
{
    constexpr int16_t frame = 10;
    WindowPtr window = FrontWindow();
    if (!window)
        throw ScriptError{0, "no dialog is open"};
    Rect view = (*reinterpret_cast<WindowPeek>(window)->contRgn)->rgnBBox;
    InsetRect(&view, -frame, -frame);
    return view;
}

void beginFilm(Stage &stage, const std::filesystem::path &file, int every)
{
    stage.film = std::make_unique<Film>(frontDialogView(), every);
    stage.filmFile = file;
    stage.machine.setWatcher([&stage](int screen, const toolbox::Picture &shown) {
        if (screen == 0)
            stage.film->take(shown);
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

void film(Arguments &arguments, Stage &stage)
{
    std::string name = arguments.word("a name");
    if (name == "end" && !arguments.more())
        return stage.user.then([&stage] { endFilm(stage); });
    std::filesystem::path file = stage.picturesFolder / (name + ".png");
    int every = arguments.number("a number of pictures", 1, INT16_MAX);
    stage.user.then([&stage, file, every] { beginFilm(stage, file, every); });
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

void depth(Arguments &arguments, Stage &stage)
{
    int bits = arguments.number("a number of bits", 1, 32);
    if (bits != 1 && bits != 2 && bits != 4 && bits != 8 && bits != 32)
        arguments.fail("a screen has 1, 2, 4, 8 or 32 bits a pixel");
    stage.user.setDepth(bits);
}

const std::map<std::string, void (*)(Arguments &, Stage &)> verbs = {
    {"start", start},         {"about", about},
    {"idle", idle},           {"command", command},
    {"press", press},         {"click", click},
    {"choose", choose},       {"leave", leave},
    {"type", type},           {"key", key},
    {"save", save},           {"open", open},
    {"wait", wait},           {"cancel-file", cancelFile},
    {"clipboard", clipboard}, {"picture", picture},
    {"film", film},           {"fail", fail},
    {"depth", depth},
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

}  // namespace riders
