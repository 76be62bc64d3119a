#include "commands/play_command.h"

#include <filesystem>
#include <memory>
#include <string>

#include "plugin/plugin.h"

namespace riders::commands {
namespace {

std::string hexNumber(std::string &text)
{
    std::size_t end = 0;
    unsigned long value = 0;
    try {
        value = std::stoul(text, &end, 16);
    } catch (const std::exception &) {
        end = 0;
    }
    bool good = end > 0 && end == text.size() && value <= 0xFFFF;
    return good ? std::string() : text + " is not a version number such as 0x0755";
}

std::string displayList(std::string &text)
{
    return play::displaysFromText(text).empty() ? text + " is not a list of screens such as 640x480x8+1024x768x1"
                                                : std::string();
}

std::string oneCharacter(std::string &text)
{
    return text.size() == 1 ? std::string() : "the decimal separator is one character";
}

// Options that are read when all are known.
struct Texts {
    std::string displays = "640x480x8";
    std::string decimal = ".";
    std::string systemVersion = "0x0755";
    bool noColor = false;
};

}  // namespace

void addPlay(CLI::App &app, Chosen &chosen, play::PlayRequest &play)
{
    const auto texts = std::make_shared<Texts>();
    CLI::App *command = app.add_subcommand("play", "Play a scripted session on the headless screen");
    command->add_option("script", play.script, "The session; docs/playing.md describes its form")
        ->required()
        ->type_name("SCRIPT");
    command->add_option("--trace", play.traceFile, "Write what happened, a line each")->type_name("FILE");
    command->add_flag("--force", play.force, "Write the trace over a file that is none, too");
    command->add_option("--pictures", play.picturesFolder, "Where pictures go; here when left out")
        ->type_name("DIR");
    command->add_option("--preferences", play.configuration.preferencesFolder, "The folder of the saved settings")
        ->type_name("DIR");
    command->add_option("--screen", texts->displays, "Screens from left to right")
        ->check(CLI::Validator(displayList, ""))
        ->type_name("WxHxDEPTH[@SCALE][+...]");
    command->add_option("--decimal", texts->decimal, "The locale's decimal separator")
        ->check(CLI::Validator(oneCharacter, ""))
        ->type_name("C");
    command->add_option("--system-version", texts->systemVersion, "As 0x0755 for 7.5.5")
        ->check(CLI::Validator(hexNumber, ""))
        ->type_name("N");
    command->add_flag("--no-color-quickdraw", texts->noColor, "A machine without colour");
    command->add_option("--heap", play.configuration.heapBytes, "Memory of the session, bytes")
        ->check(CLI::Range(65536, 2000000000))
        ->type_name("BYTES");
    command->callback([texts, &play, &chosen] {
        chosen.name = "riders play";
        chosen.run = [texts, &play] {
            play.plugin = plugin::pluginBesideProgram();
            play.displays = play::displaysFromText(texts->displays);
            play.configuration.decimalPoint = texts->decimal[0];
            play.configuration.systemVersion =
                static_cast<std::int32_t>(std::stoul(texts->systemVersion, nullptr, 16));
            if (texts->noColor)
                play.configuration.quickDrawVersion = 0;
            play.configuration.startFolder = std::filesystem::current_path();
            return play::play(play);
        };
    });
}

}  // namespace riders::commands
