// The program on a display: its menu bar, the plug-in's commands, and the window
// of a job.
#pragma once

#include <filesystem>
#include <optional>

#include "app/display_settings.h"
#include "app/document.h"
#include "app/last_folder.h"
#include "app/menus.h"
#include "app/output.h"
#include "app/recent_jobs.h"
#include "app/start_window.h"
#include "choosing/chosen_screen.h"
#include "keeping/keeper.h"
#include "plugin/plugin.h"
#include "plugin/resource_fork.h"

namespace riders::app {

struct AppRequest {
    std::filesystem::path program;  // its resource fork lies beside it
    std::filesystem::path plugin;
    std::filesystem::path job;  // opened at start; empty: none
    // Pictures are waited for: on a machine where no real time passes.
    bool waitsForPictures = false;
};

// Runs on any machine; the Toolbox must be started, and must outlive it.
class Application {
public:
    // PluginError when something it needs is missing.
    Application(const AppRequest &request, std::optional<DisplaySettings> display);
    // The same with a plug-in that is loaded already, and must outlive it.
    Application(const AppRequest &request, plugin::Plugin &plugin, std::optional<DisplaySettings> display);

    // Runs until the person quits or the machine asks the program to end.
    // toolbox::ProcessEnded passes through when the plug-in ends the process.
    void run();

private:
    void begin();
    void handle(const EventRecord &event);
    // Handles the menu bar and Command keys; true when the event was one of these.
    bool menuEvent(const EventRecord &event);
    void carryOut(const Command &command);
    void askAndOpen();
    void open(const std::filesystem::path &job);
    void openRecent(int number);
    // What the person dropped on the window meanwhile.
    void openDropped();
    void idle();
    void letPluginIdle();
    // A command of the plug-in, or its About box.
    void callPlugin(int selector, int command = 0);
    void useOwnResources() const;
    void sayWhatWasMade();
    void sayInStart(const std::string &line);
    // Of a riders file that is shown.
    void changeRiders();
    void makeRidersAgain();
    std::filesystem::path proposedRiders() const;
    Output outputOf(Document &document) const;
    void handleStart(const EventRecord &event);
    void updateMenus();
    void turnView(const Command &command);
    void quit();

    LastFolder lastFolder_;
    RecentJobs recent_;
    plugin::ResourceFork fork_;
    std::optional<plugin::Plugin> ownPlugin_;
    plugin::Plugin &plugin_;
    keeping::Keeper keeper_;
    std::filesystem::path program_, firstJob_;
    bool waitsForPictures_;
    std::optional<DisplaySettings> display_;
    std::optional<Menus> menus_;
    std::optional<StartWindow> start_;
    std::optional<Document> document_;
    std::vector<choosing::KnownFile> spotFiles_;
    std::uint32_t lastIdle_ = 0;
    bool over_ = false;
};

}  // namespace riders::app
