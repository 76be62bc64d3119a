#include "processes/commands.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <ostream>
#include <sstream>

#include "app/last_folder.h"
#include "settings/saved_settings.h"
#include "support/toolbox_test.h"
#include "toolbox/host/standardfile_folder.h"

namespace fs = std::filesystem;

namespace {

constexpr char kSettings[] = "config/riders", kSettingsName[] = "Riders Preferences";

std::vector<std::string> wordsOf(const std::string &text)
{
    std::istringstream in(text);
    std::vector<std::string> words = {RIDERS_BINARY_DIR "/riders"};
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

void saveSettings()
{
    riders::settings::SavedSettings(kSettings, kSettingsName).takeFrom("choices");
}

// As the window does at its end.
void keepLastFolder()
{
    toolbox::HeadlessMachine machine;
    toolbox::Configuration configuration;
    toolbox::start(configuration, machine);
    {
        riders::app::LastFolder last;
        toolbox::setStandardFileFolder(fs::current_path());
    }
    toolbox::stop();
}

void addState(const fs::path &path, std::string &state)
{
    struct stat status = {};
    if (path.filename().native().starts_with(".riders-") || lstat(path.c_str(), &status) != 0)
        return;
    state += path.filename().string() + " " + std::to_string(status.st_mode) + "\n";
    if (S_ISLNK(status.st_mode))
        state += fs::read_symlink(path).string() + "\n";
    else if (S_ISREG(status.st_mode))
        state += contentsOf(path) + "\n";
    if (!S_ISDIR(status.st_mode))
        return;
    std::vector<fs::path> entries(fs::directory_iterator(path), {});
    std::sort(entries.begin(), entries.end());
    for (const fs::path &entry : entries)
        addState(entry, state);
}

// As the next command reads them: they are two files that count together. It clears up, so it gets a copy.
std::string settingsIn(const fs::path &folder)
{
    TemporaryFolder folders, copy;
    runProgram({"cp", "-a", folder, folders / "settings"});
    riders::settings::SavedSettings(folders / "settings", kSettingsName).copyTo(copy.path());
    std::vector<fs::path> entries(fs::directory_iterator(copy.path()), {});
    std::sort(entries.begin(), entries.end());
    std::string state;
    for (const fs::path &entry : entries)
        state += entry.filename().string() + contentsOf(entry) + "\n";
    return state;
}

std::string page(const std::string &painting)
{
    return "%!PS\n<</PageSize [72 72]>> setpagedevice\n" + painting + " setgray 9 9 40 40 rectfill\nshowpage\n";
}

void writeFiles(const fs::path &folder)
{
    writeFile(folder / "one.spot", "%!KT1_Spot\rpop % one\r");
    writeFile(folder / "two.spot", "%!KT1_Spot\rpop % two\r");
    writeFile(folder / "job.ps", page("0.5"));
    writeFile(folder / "other.ps", page("0.2"));
    writeFile(folder / "one.play", "start\ncommand 0\nchoose 4 3\npress 1\nsave film\n");
    writeFile(folder / "two.play", "start\ncommand 0\nchoose 4 5\npress 1\nsave film\n");
    writeFile(folder / "remove.play", "start\ncommand 1\nopen film\n");
    fs::create_symlink("film", folder / "link");
}

}  // namespace

const std::vector<ChangingCommand> &changingCommands()
{
    const std::string one = "make -o film --spot one.spot", two = "make -o film --spot two.spot";
    const std::string makeOne = "riders " + one, keepOne = makeOne + " --save-settings";
    const std::string preferences = std::string(" --preferences ") + kSettings;
    const std::string playOne = "play one.play" + preferences;
    const std::string proof = "proof job.ps --dpi 300 -o proof";
    const std::string otherProof = "riders proof other.ps --dpi 300 -o proof";
    static const std::vector<ChangingCommand> commands = {
        {.name = "Make", .before = {}, .words = one, .parts = {"film"}},
        {.name = "MakeAgain", .before = {makeOne}, .words = two, .parts = {"film"}},
        {.name = "MakeThroughALink",
         .before = {makeOne},
         .words = "make -o link --spot two.spot",
         .parts = {"film", "link"}},
        {.name = "MakeScreens",
         .before = {makeOne},
         .words = "make -o film --screens flexo --plate Gold:60@75,one.spot",
         .parts = {"film"}},
        {.name = "MakePlatesAlone", .before = {}, .words = "make -o film --plate Gold:60@75", .parts = {"film"}},
        {.name = "SaveFirstSettings",
         .before = {},
         .words = one + " --save-settings",
         .parts = {"film", kSettings}},
        {.name = "SaveSettings",
         .before = {keepOne},
         .words = two + " --save-settings",
         .parts = {"film", kSettings}},
        {.name = "SettingsAlone",
         .before = {"riders " + two + " --save-settings", "cp -r config/riders choices", keepOne},
         .words = {},
         .parts = {kSettings},
         .instead = saveSettings},
        {.name = "LastFolder",
         .before = {keepOne},
         .words = {},
         .parts = {std::string(kSettings) + "/Last Folder"},
         .instead = keepLastFolder},
        {.name = "Apply", .before = {makeOne}, .words = "apply film job.ps -o out.ps", .parts = {"out.ps"}},
        {.name = "ApplyInPlace",
         .before = {makeOne},
         .words = "apply film job.ps -o job.ps",
         .parts = {"job.ps"},
         .next = "apply film other.ps -o job.ps"},
        {.name = "Strip",
         .before = {makeOne, "riders apply film job.ps -o out.ps"},
         .words = "strip out.ps -o plain.ps",
         .parts = {"plain.ps"}},
        {.name = "StripInPlace",
         .before = {makeOne, "riders apply film job.ps -o kept.ps", "riders apply film job.ps -o out.ps"},
         .words = "strip out.ps -o out.ps",
         .parts = {"out.ps"},
         .next = "strip kept.ps -o out.ps"},
        {.name = "MakeInADialog", .before = {}, .words = playOne, .parts = {"film", kSettings}},
        {.name = "MakeAgainInADialog",
         .before = {"riders " + playOne},
         .words = "play two.play" + preferences,
         .parts = {"film", kSettings}},
        {.name = "Remove",
         .before = {makeOne},
         .words = "play remove.play" + preferences,
         .parts = {"film"},
         .next = two + " --save-settings"},
        {.name = "Proof", .before = {}, .words = proof, .parts = {"proof"}},
        {.name = "ProofAgain", .before = {otherProof}, .words = proof, .parts = {"proof"}},
        {.name = "ProofWithALoupe", .before = {otherProof + " --loupe"}, .words = proof + " --loupe", .parts = {"proof"}},
        {.name = "Film",
         .before = {},
         .words = "film job.ps --dpi 300 --marks -o films",
         .parts = {"films/job_p01_Black.tif"}},
        {.name = "FilmAgain",
         .before = {"riders film job.ps --dpi 300 -o films"},
         .words = "film job.ps --dpi 300 --frequency 30 -o films",
         .parts = {"films/job_p01_Black.tif"}},
        {.name = "FilmsInOneFile",
         .before = {"riders film other.ps --dpi 300 -o films.pdf"},
         .words = "film job.ps --dpi 300 -o films.pdf",
         .parts = {"films.pdf"}},
        {.name = "FilmWithALook",
         .before = {"riders film other.ps --dpi 300 -o films --look"},
         .words = "film job.ps --dpi 300 -o films --look",
         .parts = {"films/job_p01_Black.tif", "films-look"}},
        {.name = "Shapes", .before = {}, .words = "shapes cross -o page", .parts = {"page"}},
        {.name = "ShapesFixed", .before = {}, .words = "shapes one.spot --fix --json -o page", .parts = {"page"}},
        {.name = "MakeForced",
         .before = {},
         .words = "make -o other.ps --angle 45 --force",
         .parts = {"other.ps"}},
        {.name = "ShapesAgain",
         .before = {"riders shapes cross -o page"},
         .words = "shapes square -o page",
         .parts = {"page"}},
        {.name = "ProofWhileItsInterpreterRuns",
         .before = {otherProof},
         .words = proof,
         .parts = {"proof"},
         .ofChildren = true},
    };
    return commands;
}

std::ostream &operator<<(std::ostream &out, const ChangingCommand &command)
{
    return out << command.name;
}

CommandsFolder::CommandsFolder(fs::path folder) : folder_(std::move(folder))
{
    setenv("XDG_CONFIG_HOME", (folder_ / "config").c_str(), 1);
    setenv("PATH", (RIDERS_BINARY_DIR ":" + path_).c_str(), 1);
}

CommandsFolder::~CommandsFolder()
{
    unsetenv("XDG_CONFIG_HOME");
    setenv("PATH", path_.c_str(), 1);
}

void CommandsFolder::reset(const ChangingCommand &command)
{
    const fs::path old = folder_.string() + "-old";
    if (fs::remove_all(folder_); !fs::exists(old)) {
        fs::create_directory(folder_);
        writeFiles(folder_);
        for (const std::string &words : command.before)
            if (const CommandResult result = runProgram({"sh", "-c", words}, {}, folder_); result.status != 0)
                throw std::runtime_error(words + ": " + result.err);
        fs::rename(folder_, old);
    }
    runProgram({"cp", "-a", old, folder_});
}

CommandResult CommandsFolder::run(const std::string &words) const
{
    return runProgram(wordsOf(words), {}, folder_);
}

std::function<void()> CommandsFolder::program(const ChangingCommand &changing) const
{
    if (!changing.instead)
        return command(wordsOf(changing.words), folder_);
    return [folder = folder_, instead = changing.instead] {
        fs::current_path(folder);
        instead();
    };
}

std::string CommandsFolder::state(const std::string &part) const
{
    if (part == kSettings)
        return settingsIn(folder_ / part);
    std::string state;
    addState(folder_ / part, state);
    return state;
}

std::vector<std::string> CommandsFolder::names() const
{
    std::vector<std::string> names;
    for (const fs::path &entry : std::vector<fs::path>(fs::recursive_directory_iterator(folder_), {}))
        names.push_back(entry.lexically_relative(folder_));
    std::sort(names.begin(), names.end());
    return names;
}
