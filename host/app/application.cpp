#include "app/application.h"

#include <random>

#include "app/ask_file.h"
#include "app/trash_instead.h"
#include "app/words.h"
#include "choosing/while_choosing.h"
#include "io/refusal.h"
#include "remaking/remake.h"
#include "settings/saved_settings.h"
#include "toolbox/files.h"
#include "toolbox/host/dropped_files.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/menu_bar.h"
#include "toolbox/host/quit.h"
#include "toolbox/host/standardfile_folder.h"
#include "toolbox/resources.h"

namespace riders::app {
namespace {

// How long the loop sleeps when nothing happens, before it lets the
// plug-in have its idle call.
constexpr uint32_t kIdleTicks = 10 * 60;
// Of the device whose dots are shown while no job is.
constexpr int kUsualDpi = 600;

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

// What is not as this version writes it may have more in it than could be read.
bool mayRemake(const remaking::ReadRiders &riders)
{
    return riders.choices.exact || ask(Question::goOn, words(Words::notExact, {riders.file.filename().string()}));
}

bool mayLeaveOut(const std::vector<std::string> &values)
{
    std::string all;
    for (const std::string &value : values)
        all += (all.empty() ? "" : ", ") + value;
    return all.empty() || ask(Question::goOn, words(Words::notInDialog, {all}));
}

}  // namespace

Application::Application(const AppRequest &request, std::optional<DisplaySettings> display)
    : fork_(request.program), ownPlugin_(request.plugin), plugin_(*ownPlugin_), keeper_(plugin_, showProblem),
      program_(request.program), firstJob_(request.job), waitsForPictures_(request.waitsForPictures),
      display_(std::move(display))
{
    begin();
}

Application::Application(const AppRequest &request, plugin::Plugin &plugin, std::optional<DisplaySettings> display)
    : fork_(request.program), plugin_(plugin), keeper_(plugin_, showProblem), program_(request.program),
      firstJob_(request.job), waitsForPictures_(request.waitsForPictures), display_(std::move(display))
{
    begin();
}

void Application::begin()
{
    startRandomNumbers();
    finishSavedSettings(plugin_);
    if (plugin_.commands().empty())
        plugin_.startUp();
    useOwnResources();
    menus_.emplace(plugin_.commands(), display_);
}

void Application::run()
{
    if (!firstJob_.empty()) {
        toolbox::setStandardFileFolder(std::filesystem::absolute(firstJob_).parent_path());
        open(firstJob_);
    }
    if (!over_ && !toolbox::quitAsked())
        start_.emplace();
    while (!over_ && !toolbox::quitAsked()) {
        EventRecord event;
        WaitNextEvent(everyEvent, &event, kIdleTicks);
        handle(event);
    }
}

void Application::handle(const EventRecord &event)
{
    if (menuEvent(event) || toolbox::quitAsked())
        return;
    if (event.what != nullEvent)
        return handleStart(event);
    letPluginIdle();
    openDropped();
}

void Application::handleStart(const EventRecord &event)
{
    switch (start_->handle(event)) {
    case StartWindow::Choice::openJob:
        return askAndOpen();
    case StartWindow::Choice::makeRiders:
        return callPlugin(kSelectCommand, kCommandSettings);
    case StartWindow::Choice::none:
        return;
    }
}

// With a job open, offers to add it there.
void Application::sayWhatWasMade()
{
    const std::filesystem::path made = keeper_.lastMade();
    if (made.empty() || toolbox::quitAsked())
        return;
    const std::string name = made.filename().string(), folder = made.parent_path().filename().string();
    if (!document_ && start_)
        return start_->say(words(Words::madeIn, {name, folder}));
    if (document_ && document_->showsRiders())
        open(made);
    if (!document_ || document_->showsRiders() || !document_->canAdd())
        return showNote(words(Words::madeIn, {name, folder}));
    if (ask(Question::add, words(Words::addMade, {name, folder, document_->name()})))
        document_->addThis(made);
}

void Application::changeRiders()
{
    try {
        const remaking::Change change(plugin_, remaking::readRiders(document_->tried()));
        useOwnResources();
        if (!mayRemake(change.riders()) || !mayLeaveOut(change.leftOut()))
            return;
        keeper_.propose(document_->tried());
        change.run(keeper_);
    } catch (const io::Refusal &refusal) {
        return showProblem(inPlainWords(refusal.message, document_->tried().parent_path()));
    }
    useOwnResources();
    sayWhatWasMade();
}

void Application::makeRidersAgain()
{
    const std::filesystem::path file = document_->tried();
    try {
        const remaking::ReadRiders riders = remaking::readRiders(file);
        if (!mayRemake(riders))
            return;
        remaking::makeAgain(riders);
    } catch (const io::Refusal &refusal) {
        return showProblem(inPlainWords(refusal.message, file.parent_path()));
    }
    open(file);
    showNote(words(Words::madeAgain, {file.filename().string(), file.parent_path().filename().string()}));
}

void Application::letPluginIdle()
{
    plugin_.call(kSelectIdle);
    useOwnResources();
}

void Application::sayInStart(const std::string &line)
{
    if (!document_ && start_)
        start_->say(line);
}

// Beside the job, by its name.
std::filesystem::path Application::proposedRiders() const
{
    if (!document_ || document_->showsRiders())
        return words(Words::newRiders);
    return std::filesystem::path(document_->job()).replace_extension(".riders");
}

void Application::callPlugin(int selector, int command)
{
    keeper_.propose(proposedRiders());
    std::optional<TrashInstead> trash;
    if (selector == kSelectCommand && command == kCommandRemove)
        trash.emplace([this](const std::string &said) { sayInStart(said); });
    std::optional<choosing::WhileChoosing> dots;
    if (selector == kSelectCommand && command == kCommandSettings)
        dots.emplace(choosing::WhileChoosing::Surroundings{
            fork_.number(), document_ ? document_->view().dpi() : kUsualDpi, waitsForPictures_, &spotFiles_});
    keeper_.call(selector, command);
    dots.reset();
    useOwnResources();
    if (selector == kSelectCommand && command == kCommandSettings)
        sayWhatWasMade();
}

// A call of the plug-in makes its resource fork the first to be looked at. Where that was opened before the
// program's, it would be the only one.
void Application::useOwnResources() const
{
    if (!ownPlugin_)
        UseResFile(fork_.number());
}

// While a job is shown: a dialog has a null event at each tick.
void Application::idle()
{
    if (const std::uint32_t now = TickCount(); now - lastIdle_ >= kIdleTicks) {
        lastIdle_ = now;
        letPluginIdle();
    }
    openDropped();
}

void Application::openDropped()
{
    while (const auto file = toolbox::takeDroppedFile())
        open(*file);
}

bool Application::menuEvent(const EventRecord &event)
{
    int32_t choice = 0;
    WindowPtr window = nullptr;
    if (event.what == mouseDown && FindWindow(event.where, &window) == inMenuBar) {
        updateMenus();
        choice = MenuSelect(event.where);
    } else if (event.what == keyDown && event.modifiers & cmdKey) {
        updateMenus();
        choice = MenuKey(static_cast<int16_t>(event.message & charCodeMask));
        if (choice == 0)
            return false;
    } else if (event.what == keyDown) {
        updateMenus();
        const std::optional<std::int32_t> chosen = toolbox::menuSelectByKey(event);
        if (!chosen)
            return false;
        choice = *chosen;
    } else {
        return false;
    }
    carryOut(menus_->chosen(choice));
    HiliteMenu(0);
    return true;
}

void Application::updateMenus()
{
    Offers offers{recent_.names(), {}, false};
    if (document_) {
        const JobView &view = document_->view();
        offers.riders = document_->showsRiders();
        offers.job = Offers::Job{.add = document_->canAdd(),
                                 .takeOut = document_->canTakeOut(),
                                 .save = document_->canSave(),
                                 .next = view.canTurn(1),
                                 .previous = view.canTurn(-1),
                                 .output = !document_->showsRiders(),
                                 .dpi = view.dpi()};
    }
    menus_->update(offers);
}

Output Application::outputOf(Document &document) const
{
    return {program_, document.job(), document.tried(), document.view().dpi(), waitsForPictures_};
}

void Application::turnView(const Command &command)
{
    JobView &view = document_->view();
    if (command.kind == Command::Kind::page)
        view.turn(command.number);
    else if (command.kind == Command::Kind::enlarge)
        view.setEnlargement(view.enlargement() + command.number);
    else
        view.setDpi(command.number);
    document_->showView();
}

void Application::carryOut(const Command &command)
{
    switch (command.kind) {
    case Command::Kind::none:
        return;
    case Command::Kind::about:
        return callPlugin(kSelectAbout);
    case Command::Kind::open:
        return askAndOpen();
    case Command::Kind::close:
        return document_->close();
    case Command::Kind::quit:
        return quit();
    case Command::Kind::plugin:
        return callPlugin(kSelectCommand, command.number);
    case Command::Kind::fullScreen:
        return display_->setFullScreen(!display_->fullScreen());
    case Command::Kind::depth:
        return display_->setDepth(command.number);
    case Command::Kind::recent:
        return openRecent(command.number);
    case Command::Kind::change:
        return changeRiders();
    case Command::Kind::makeAgain:
        return makeRidersAgain();
    case Command::Kind::add:
        return document_->add();
    case Command::Kind::takeOut:
        return document_->takeOut();
    case Command::Kind::save:
        return document_->saveAs();
    case Command::Kind::proof:
        return makeProof(outputOf(*document_));
    case Command::Kind::print:
        return printFilms(outputOf(*document_));
    case Command::Kind::page:
    case Command::Kind::enlarge:
    case Command::Kind::dpi:
        return turnView(command);
    }
}

void Application::askAndOpen()
{
    if (std::filesystem::path job = askForJob(); !job.empty())
        open(job);
}

void Application::openRecent(int number)
{
    const std::filesystem::path job = recent_.job(static_cast<std::size_t>(number));
    std::error_code ignored;
    if (std::filesystem::exists(job, ignored))
        return open(job);
    recent_.remove(job);
    showProblem(words(Words::jobGone, {job.filename().string()}));
}

// A window that is already open shows the new job instead.
void Application::open(const std::filesystem::path &job)
{
    try {
        if (document_) {
            document_->open(job);
            return recent_.add(job);
        }
        document_.emplace(job,
                          Document::Surroundings{[this](const EventRecord &event) { return menuEvent(event); },
                                                 [this] { idle(); }, [this] { changeRiders(); },
                                                 [this] { makeRidersAgain(); }, program_, waitsForPictures_});
    } catch (const io::Refusal &refusal) {
        return showProblem(refusal.message);
    }
    recent_.add(job);
    HiliteMenu(0);
    if (start_)
        start_->show(false);
    document_->run();
    document_.reset();
    if (start_ && !over_)
        start_->show(true);
}

void Application::quit()
{
    over_ = true;
    if (document_)
        document_->close();
}

}  // namespace riders::app
