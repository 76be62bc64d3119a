// A restless user of both commands and all that they open: no crash, nothing that
// stays allocated, settings that pass their own check, and Cancel restores what it
// should. `./restless` walks further.
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>

#include "source/ktCustomDlg.h"
#include "source/ktSpot.h"
#include "play/steps.h"
#include "plugin/dialog_filter.h"
#include "source/restless_walk.h"
#include "support/command.h"
#include "support/plugin_test.h"
#include "support/sanitized.h"
#include "toolbox/memory.h"
#include "toolbox/windows.h"

namespace fs = std::filesystem;

namespace {

struct Way {
    unsigned seed;
    int events;
    int forbiddenDialog = 0;  // a walk that meets it fails; for testing the shrinking

    char decimal() const { return seed % 3 == 1 ? ',' : '.'; }
    std::string systemVersion() const { return seed % 4 == 1 ? "0x0607" : "0x0755"; }
    // A disk that fails may lose settings, so what is kept is compared only on the
    // other half of the walks.
    bool faults() const { return seed % 2 == 0; }
    bool color() const { return seed % 5 != 2; }

    std::string options() const
    {
        return std::string("# options: --decimal ") + decimal() + " --system-version " + systemVersion() +
               (color() ? "" : " --no-color-quickdraw") + "\n";
    }
};

std::uint32_t bigEndian(const std::string &bytes, std::size_t at)
{
    if (at > bytes.size() || bytes.size() - at < 4)
        return 0;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

// The settings in the file, read without the plug-in: the first resource of the fork
// in the companion.
std::optional<PrefsRec> storedRecord(const fs::path &file)
{
    const std::string bytes = contentsOf(file.parent_path() / ("._" + file.filename().string()));
    if (bytes.size() < 26)
        return std::nullopt;
    for (std::size_t entry = 26; entry + 12 <= bytes.size(); entry += 12) {
        if (bigEndian(bytes, entry) != 2)
            continue;
        std::size_t fork = bigEndian(bytes, entry + 4);
        std::size_t data = fork + bigEndian(bytes, fork);
        PrefsRec record;
        if (bigEndian(bytes, data) != sizeof record || bytes.size() < data + 4 + sizeof record)
            return std::nullopt;
        std::memcpy(static_cast<void *>(&record), bytes.data() + data + 4, sizeof record);
        return record;
    }
    return std::nullopt;
}

class Restless : public PluginTest {
protected:
    // Walks in a process of its own; its output and the lines it carried out are kept
    // in the walk's folder. True if nothing was found.
    bool goes(const Way &way, const restless::Source &source)
    {
        prepareFolder();
        fflush(stdout);
        pid_t child = fork();
        if (child == 0) {
            inChild(way, source);
        }
        int status = 0;
        waitpid(child, &status, 0);
        signal_ = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
        return status == 0;
    }

    restless::Lines lines() const
    {
        restless::Lines all;
        std::istringstream in(contentsOf(folder / "walk.play"));
        for (std::string line; std::getline(in, line);)
            if (!line.empty() && line[0] != '#' && line != "start")
                all.push_back(line);
        return all;
    }

    // Keeps the shortest script that still fails, with the files it needs.
    std::string kept(const Way &way)
    {
        const std::string said = contentsOf(folder / "said");
        const bool stuck = said.find("the scripted user") != std::string::npos;
        int patience = 400;
        auto fails = [&](const restless::Lines &fewer) {
            return --patience > 0 && !goes(way, restless::repeating(fewer)) &&
                   (contentsOf(folder / "said").find("the scripted user") != std::string::npos) == stuck;
        };
        goes(way, restless::repeating(restless::shrunk(lines(), fails)));
        fs::path place = fs::path(RIDERS_BINARY_DIR) / "restless" / std::to_string(way.seed);
        fs::remove_all(place);
        fs::create_directories(place);
        fs::copy(files(), place, fs::copy_options::recursive);
        fs::copy_file(folder / "walk.play", place / "walk.play");
        return "walk " + std::to_string(way.seed) + (signal_ ? " died of signal " + std::to_string(signal_) : "") +
               "\n" + said.substr(0, 4000) + "\nTo see it again: cd " + place.string() +
               " && riders play walk.play --preferences preferences " + way.options().substr(11);
    }

private:
    static fs::path files() { return fs::path(RIDERS_SOURCE_DIR) / "examples/sessions/files"; }

    void prepareFolder()
    {
        fs::remove_all(folder / "walk");
        fs::remove_all(folder / "preferences");
        fs::copy(files(), folder / "walk", fs::copy_options::recursive);
    }

    // Never returns: the parent runs the rest of the tests.
    [[noreturn]] void inChild(const Way &way, const restless::Source &source)
    {
        try {
            walkAndLeave(way, source);
        } catch (const std::exception &error) {
            ADD_FAILURE() << error.what();
        }
        fflush(stdout);
        _exit(HasFailure() ? 1 : 0);
    }

    void walkAndLeave(const Way &way, const restless::Source &source)
    {
        if (!freopen((folder / "said").c_str(), "w", stdout) || dup2(fileno(stdout), fileno(stderr)) < 0)
            _exit(2);
        alarm(120);
        setvbuf(stdout, nullptr, _IOLBF, 0);
        fs::current_path(folder / "walk");
        configuration.startFolder = folder / "walk";
        configuration.decimalPoint = way.decimal();
        configuration.systemVersion = std::stoi(way.systemVersion(), nullptr, 16);
        configuration.quickDrawVersion = way.color() ? 0x0230 : 0;
        machine.wantPictures(false);
        restartPlugin();
        way_ = way;
        source_ = source;
        script_.open(folder / "walk.play");
        script_ << way.options();
        walk();
    }

    void walk()
    {
        hostFilter = [](DialogPtr dialog, EventRecord *event, int16_t *item) {
            return riders::plugin::standardDialogFilter(dialog, event, item);
        };
        user.onSurprise([this](int dialogID) { return goOn(dialogID); });
        record("start");
        call(kSelectStartUp);
        while (auto line = source_(0)) {
            record(*line);
            if (line->rfind("command ", 0) == 0)
                commandFromOpeningToClosing(std::stoi(line->substr(8)));
            else
                betweenCalls(*line);
            if (ended || HasFailure())
                return;
        }
    }

    void betweenCalls(const std::string &line)
    {
        queue(line);
        user.run();
    }

    void commandFromOpeningToClosing(int command)
    {
        trace.clear();
        opened_.reset();
        live_.reset();
        runCommand(command);
        if (ended)
            return;
        EXPECT_TRUE(user.idle());
        EXPECT_EQ(FrontWindow(), nullptr);
        if (live_)
            expectValid(*live_, "in the dialog");
        std::optional<PrefsRec> stored = storedRecord(preferencesFile());
        if (stored)
            expectValid(*stored, "in the file");
        if (toolbox::faults::met())
            return;
        EXPECT_TRUE(stored) << "no settings were written";
        EXPECT_FALSE(traced("string 16130") || traced("string 16153")) << "the saved settings could not be used";
        expectNoTemporaryFiles();
        if (stored && opened_ && !traced("dialog 16399 shown"))
            expectRestored(*stored);
    }

    void expectNoTemporaryFiles()
    {
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder / "walk"))
            EXPECT_EQ(entry.path().filename().string().find("KTTemp"), std::string::npos) << entry.path();
    }

    // The settings pass their own check.
    void expectValid(const PrefsRec &record, const char *where)
    {
        makeRecords();
        settings = record;
        EXPECT_FALSE(DoPrefsResCheck()) << "settings of no use " << where;
        gEnvirInfo = nullptr;
        gPrefsPtr = gSavedPrefs = nullptr;
    }

    void expectRestored(const PrefsRec &now)
    {
        for (auto item : {&PrefsRec::freqItem, &PrefsRec::angleItem, &PrefsRec::spotItem, &PrefsRec::flatItem,
                          &PrefsRec::annoItem, &PrefsRec::errorItem})
            EXPECT_EQ(now.*item, (*opened_).*item);
        EXPECT_EQ(plain(now.freqStr), plain(opened_->freqStr));
        EXPECT_EQ(plain(now.angleStr), plain(opened_->angleStr));
        EXPECT_EQ(plain(now.flatStr), plain(opened_->flatStr));
        EXPECT_EQ(plain(now.annoText), plain(opened_->annoText));
        EXPECT_EQ(plain(now.annoSizeStr), plain(opened_->annoSizeStr));
        EXPECT_EQ(now.spotImported, opened_->spotImported);
        if (!opened_->spotImported)
            return;
        EXPECT_EQ(plain(now.spotName), plain(opened_->spotName));
        EXPECT_EQ(contentsOf(preferencesFile()), openedSpot_);
    }

    // A dialog waits for the user.
    bool goOn(int dialogID)
    {
        if (HasFailure() || way_.forbiddenDialog == dialogID) {
            fflush(stdout);
            _exit(1);
        }
        look(dialogID);
        std::optional<std::string> line = source_(dialogID);
        std::string step = line ? *line : restless::wayOut(dialogID);
        record(step);
        queue(step);
        return true;
    }

    static std::string spot() { return std::string(*gSpotHandle, static_cast<std::size_t>(gSpotLength)); }

    void look(int dialogID)
    {
        if (dialogID != kCustomDialogID)
            return;
        live_ = *gPrefsPtr;
        if (gPrefsPtr->spotImported) {
            ASSERT_NE(gSpotHandle, nullptr);
            EXPECT_EQ(GetHandleSize(gSpotHandle), gSpotLength);
        }
        if (opened_)
            return;
        opened_ = *gPrefsPtr;
        openedSpot_ = gPrefsPtr->spotImported ? spot() : "";
    }

    void record(const std::string &line) { script_ << line << std::endl; }

    void queue(const std::string &line) { riders::play::queueStep(riders::play::splitScript(line).front(), stage_); }

    // The steps of a script need only the user, except those between calls.
    alignas(riders::plugin::Plugin) unsigned char noPlugin_[sizeof(riders::plugin::Plugin)];
    alignas(riders::keeping::Keeper) unsigned char noKeeper_[sizeof(riders::keeping::Keeper)];
    riders::play::Stage stage_{user,
                               *reinterpret_cast<riders::plugin::Plugin *>(noPlugin_),
                               *reinterpret_cast<riders::keeping::Keeper *>(noKeeper_),
                               {},
                               machine,
                               {}};
    Way way_{};
    restless::Source source_;
    std::ofstream script_;
    std::optional<PrefsRec> opened_, live_;
    std::string openedSpot_;
    int signal_ = 0;
};

unsigned numberFrom(const char *variable, unsigned otherwise)
{
    const char *text = std::getenv(variable);
    return text && *text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

constexpr int kEventsOfAWalk = 400;

}  // namespace

TEST_F(Restless, UserFindsNothing)
{
    unsigned events = numberFrom("RIDERS_RESTLESS_EVENTS", triesLess() ? 1000 : 4000);
    unsigned seed = numberFrom("RIDERS_RESTLESS_SEED", 20261120);
    std::printf("%u events from seed %u\n", events, seed);
    // Reported only at the end: a walk checks for failures to see whether it has failed.
    std::vector<std::string> found;
    for (unsigned walk = 0; walk * kEventsOfAWalk < events && found.size() < 3; ++walk) {
        Way way{seed + walk, kEventsOfAWalk};
        if (!goes(way, restless::walking(way.seed, way.events, way.faults())))
            found.push_back(kept(way));
    }
    for (const std::string &failure : found)
        ADD_FAILURE() << failure;
}

TEST_F(Restless, FailingWalkIsShrunkToAScriptThatCanBePlayed)
{
    const int annotation = 16302;
    Way way{20261120, 2000, annotation};
    ASSERT_FALSE(goes(way, restless::walking(way.seed, way.events, way.faults())))
        << "the walk never met the dialog";
    const std::size_t before = lines().size();
    kept(way);
    restless::Lines shortest = lines();
    EXPECT_LT(shortest.size(), before);
    EXPECT_EQ(shortest.size(), 2u) << "choosing the command and the menu item";
    // Played up to where it was noticed, with the dialog open.
    fs::path place = fs::path(RIDERS_BINARY_DIR) / "restless" / std::to_string(way.seed);
    CommandResult result = runRiders({"play", "walk.play", "--preferences", folder / "played"}, {}, place);
    EXPECT_NE(result.err.find("16302"), std::string::npos) << result.err << contentsOf(place / "walk.play");
    fs::remove_all(place);
}
