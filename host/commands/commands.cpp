#include "commands/commands.h"

#include <signal.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <new>

#include "app/start.h"
#include "io/interruption.h"
#include "io/plain_text.h"
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

}  // namespace

Commands::Commands(CLI::App &app) : name_("riders")
{
    app.require_subcommand(0, 1);
    app.add_option("file", shownJob_, "A PostScript job to open in the window")
        ->check(CLI::ExistingFile)
        ->type_name("FILE");
    addMake(app);
    addApply(app);
    addStrip(app);
    addPlay(app);
    addProof(app);
    chosen_ = [this] {
        return app::startOnDesktop({plugin::programFile(), plugin::pluginBesideProgram(), shownJob_});
    };
}

void Commands::addMake(CLI::App &app)
{
    CLI::App *make = app.add_subcommand("make", "Make a riders file; what is not named is left to the printer");
    make->add_option("-o,--output", make_.output, "The riders file to make or replace")
        ->required()
        ->type_name("FILE");
    make->add_option("--frequency", make_.frequency, "Screen frequency, lines per inch")->type_name("LPI");
    make->add_option("--angle", make_.angle, "Screen angle, degrees")->type_name("DEG");
    make->add_option("--spot", make_.spot, "Dot shape by name, or a spot function file")->type_name("NAME|FILE");
    make->add_option("--flatness", make_.flatness, "Flatness of curves, device pixels")->type_name("N");
    CLI::Option *annotation =
        make->add_option("--annotation", make_.annotation, "A line of text for every page")->type_name("TEXT");
    make->add_option("--font", make_.font, "The annotation's font")->type_name("NAME")->needs(annotation);
    make->add_option("--size", make_.size, "The annotation's size, points")->type_name("PT")->needs(annotation);
    make->add_flag("--error-handler", make_.errorHandler, "Print PostScript errors on the page");
    make->add_flag("--save-settings", make_.saveSettings, "Keep these choices as the saved settings");
    make->callback([this] {
        name_ = "riders make";
        chosen_ = [this] {
            make_.plugin = plugin::pluginBesideProgram();
            const make::Made made = riders::make::make(make_);
            if (!made.note.empty())
                std::cerr << name_ << ": " << io::plainText(made.note) << '\n';
            return made.problem;
        };
    });
}

void Commands::addApply(CLI::App &app)
{
    CLI::App *apply = app.add_subcommand("apply", "Add a riders file to a PostScript job");
    apply->add_option("riders", riders_, "The riders file")->required()->type_name("RIDERS");
    apply->add_option("job", job_, "The job; standard input when left out")->type_name("JOB");
    apply->add_option("-o,--output", output_, "Where to; standard output when left out")->type_name("OUT");
    apply->callback([this] {
        name_ = "riders apply";
        chosen_ = [this] {
            apply::applyRiders({riders_, job_, output_});
            return std::string();
        };
    });
}

void Commands::addStrip(CLI::App &app)
{
    CLI::App *strip = app.add_subcommand("strip", "Take a riders file out of a job again");
    strip->add_option("job", job_, "The job; standard input when left out")->type_name("JOB");
    strip->add_option("-o,--output", output_, "Where to; standard output when left out")->type_name("OUT");
    strip->callback([this] {
        name_ = "riders strip";
        chosen_ = [this] {
            apply::stripRiders({job_, output_});
            return std::string();
        };
    });
}

void Commands::addPlay(CLI::App &app)
{
    CLI::App *play = app.add_subcommand("play", "Play a scripted session on the headless screen");
    play->add_option("script", play_.script, "The session; docs/playing.md describes its form")
        ->required()
        ->type_name("SCRIPT");
    play->add_option("--trace", play_.traceFile, "Write what happened, a line each")->type_name("FILE");
    play->add_option("--pictures", play_.picturesFolder, "Where pictures go; here when left out")
        ->type_name("DIR");
    play->add_option("--preferences", play_.configuration.preferencesFolder, "The folder of the saved settings")
        ->type_name("DIR");
    play->add_option("--screen", displays_, "Screens from left to right")
        ->check(CLI::Validator(displayList, ""))
        ->type_name("WxHxDEPTH[@SCALE][+...]");
    play->add_option("--decimal", decimal_, "The locale's decimal separator")
        ->check(CLI::Validator(oneCharacter, ""))
        ->type_name("C");
    play->add_option("--system-version", systemVersion_, "As 0x0755 for 7.5.5")
        ->check(CLI::Validator(hexNumber, ""))
        ->type_name("N");
    play->add_flag("--no-color-quickdraw", noColor_, "A machine without colour");
    play->add_option("--heap", play_.configuration.heapBytes, "Memory of the session, bytes")
        ->check(CLI::Range(65536, 2000000000))
        ->type_name("BYTES");
    play->callback([this] {
        name_ = "riders play";
        chosen_ = [this] {
            play_.plugin = plugin::pluginBesideProgram();
            play_.displays = play::displaysFromText(displays_);
            play_.configuration.decimalPoint = decimal_[0];
            play_.configuration.systemVersion = static_cast<std::int32_t>(std::stoul(systemVersion_, nullptr, 16));
            if (noColor_)
                play_.configuration.quickDrawVersion = 0;
            play_.configuration.startFolder = std::filesystem::current_path();
            return riders::play::play(play_);
        };
    });
}

void Commands::addProof(CLI::App &app)
{
    CLI::App *proof = app.add_subcommand("proof", "Make the plates of a job, measure their dots, and show them");
    proof->add_option("job", proof_.job, "PostScript, EPS or PDF")->required()->type_name("JOB");
    proof->add_option("--riders", proof_.riders, "A riders file to add to the job first")->type_name("FILE");
    proof->add_option("--dpi", proof_.dpi, "Resolution of the films; 1200 when left out")
        ->check(CLI::Range(proof::kLeastProofDpi, proof::kMostProofDpi))
        ->type_name("N");
    proof->add_option("--pages", proof_.pages, "As in 1,3-5; all when left out")->type_name("LIST");
    proof->add_option("-o,--output", proof_.folder, "Where to; the job's name and -proof, here, when left out")
        ->type_name("DIR");
    proof
        ->add_option("--seconds", proof_.limits.secondsAPage,
                     "How long a page may take; all pages may take 100 times that; 300 when left out")
        ->check(CLI::Range(1, 86400))
        ->type_name("N");
    proof
        ->add_option("--megabytes", proof_.limits.megabytes,
                     "How much memory the interpreter may take; 2048 when left out")
        ->check(CLI::Range(64, 1 << 20))
        ->type_name("N");
    proof->callback([this] {
        name_ = "riders proof";
        chosen_ = [this] {
            const std::string page = riders::proof::proof(proof_).string();
            // Programs need the very name; a terminal would obey some of its bytes.
            std::cout << (isatty(STDOUT_FILENO) ? io::plainText(page) : page) << std::endl;
            return std::string(std::cout ? "" : "standard output cannot be written");
        };
    });
}

bool Commands::run()
{
    std::string problem;
    try {
        problem = chosen_();
    } catch (const io::Interrupted &interrupted) {
        raise(interrupted.signal);  // as if it had not been held back
        problem = interrupted.what();
    } catch (const std::bad_alloc &) {
        problem = "there is not enough memory";
    } catch (const std::filesystem::filesystem_error &error) {
        problem = error.path1().string() + ": " + error.code().message();
    } catch (const std::exception &error) {
        problem = error.what();
    }
    if (!problem.empty())
        std::cerr << name_ << ": " << io::plainText(problem) << '\n';
    return problem.empty();
}

}  // namespace riders::commands
