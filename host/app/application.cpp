#include "app/application.h"

#include <random>

#include "app/ask_file.h"
#include "app/words.h"
#include "io/refusal.h"
#include "settings/saved_settings.h"
#include "toolbox/files.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/quit.h"
#include "toolbox/host/standardfile_folder.h"

namespace riders::app {
namespace {

// How long the loop sleeps when nothing happens, before it lets the
// plug-in have its idle call.
constexpr uint32_t kIdleTicks = 10 * 60;

// Names of temporary files come from these numbers, and nobody is to foresee them.
void startRandomNumbers()
{
    qd.randSeed = static_cast<std::int32_t>(std::random_device()());
}

// The plug-in reads the files themselves. Those that cannot be put in place count the next time.
void finishSavedSettings(const plugin::Plugin &plugin)
{
    std::int16_t volume = 0;
    std::int32_t folder = 0;
    if (FindFolder(kOnSystemDisk, kPreferencesFolderType, false, &volume, &folder) != noErr)
        return;
    try {
        settings::SavedSettings(toolbox::folders::pathOf(volume, folder), plugin.settingsFileName())
            .finishEarlier();
    } catch (const io::Refusal &) {
    }
}

}  // namespace

Application::Application(const AppRequest &request, std::optional<DisplaySettings> display)
    : fork_(request.program), plugin_(request.plugin), keeper_(plugin_, showProblem), firstJob_(request.job), display_(std::move(display))
{
    startRandomNumbers();
    finishSavedSettings(plugin_);
    plugin_.startUp();
    menus_.emplace(plugin_.commands(), display_);
}

void Application::run()
{
    if (!firstJob_.empty()) {
        toolbox::setStandardFileFolder(std::filesystem::absolute(firstJob_).parent_path());
        open(firstJob_);
    }
    while (!over_ && !toolbox::quitAsked()) {
        EventRecord event;
        WaitNextEvent(everyEvent, &event, kIdleTicks);
        handle(event);
    }
}

void Application::handle(const EventRecord &event)
{
    if (!menuEvent(event) && event.what == nullEvent && !toolbox::quitAsked())
        plugin_.call(kSelectIdle);
}

bool Application::menuEvent(const EventRecord &event)
{
    int32_t choice = 0;
    WindowPtr window = nullptr;
    if (event.what == mouseDown && FindWindow(event.where, &window) == inMenuBar) {
        menus_->update(document_.has_value());
        choice = MenuSelect(event.where);
    } else if (event.what == keyDown && event.modifiers & cmdKey) {
        menus_->update(document_.has_value());
        choice = MenuKey(static_cast<int16_t>(event.message & charCodeMask));
        if (choice == 0)
            return false;
    } else {
        return false;
    }
    carryOut(menus_->chosen(choice));
    HiliteMenu(0);
    return true;
}

void Application::carryOut(const Command &command)
{
    switch (command.kind) {
    case Command::Kind::none:
        return;
    case Command::Kind::about:
        keeper_.call(kSelectAbout);
        return;
    case Command::Kind::open:
        return askAndOpen();
    case Command::Kind::close:
        return document_->close();
    case Command::Kind::quit:
        return quit();
    case Command::Kind::plugin:
        keeper_.call(kSelectCommand, command.number);
        return;
    case Command::Kind::fullScreen:
        return display_->setFullScreen(!display_->fullScreen());
    case Command::Kind::depth:
        return display_->setDepth(command.number);
    }
}

void Application::askAndOpen()
{
    if (std::filesystem::path job = askForJob(); !job.empty())
        open(job);
}

// A window that is already open shows the new job instead.
void Application::open(const std::filesystem::path &job)
{
    try {
        if (document_)
            return document_->open(job);
        document_.emplace(job, [this](const EventRecord &event) { return menuEvent(event); });
    } catch (const io::Refusal &refusal) {
        return showProblem(refusal.message);
    }
    HiliteMenu(0);
    document_->run();
    document_.reset();
}

void Application::quit()
{
    over_ = true;
    if (document_)
        document_->close();
}

}  // namespace riders::app
