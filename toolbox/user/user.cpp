#include "toolbox/host/user.h"

#include <algorithm>
#include <deque>
#include <utility>

#include "toolbox/host/dialog_text.h"
#include "user/activity.h"
#include "user/file_answers.h"
#include "user/front_dialog.h"

namespace toolbox {

using namespace user;

namespace {

enum class Where {
    anywhere,
    inDialog,      // needs one in front
    ifAsked,       // answers what may come up after the step before
    atHost
};

struct Step {
    int line;
    int expectedDialog;
    Where where;
    std::unique_ptr<Activity> activity;
    bool begun = false;
};

std::string numbered(int dialogID)
{
    return "dialog " + std::to_string(dialogID);
}

}  // namespace

struct ScriptedUser::Script {
    explicit Script(HeadlessMachine &machine) : hand(machine) {}

    Hand hand;
    std::deque<Step> steps;
    std::deque<Step> *queue = &steps;
    std::function<bool(int)> surprise;
    int line = 0;
    int lastLine = 0;   // where the script ends
    int expectedDialog = 0;
    int asksInVain = 0;
    int surprises = 0;

    void add(Where where, std::unique_ptr<Activity> activity)
    {
        queue->push_back({line, expectedDialog, where, std::move(activity)});
    }
    void act(Where where, std::function<void(Hand &)> action)
    {
        add(where, std::make_unique<Act>(std::move(action)));
    }

    [[noreturn]] void fail(int atLine, const std::string &message);
    bool surprised(int dialogID);
    std::optional<Input> inVain(int atLine, const std::string &message);
    std::optional<Input> nextInput();
    bool ready();
    Progress advance(Step &step);
    Progress perform();
    void run();
};

void ScriptedUser::Script::fail(int atLine, const std::string &message)
{
    steps.clear();
    hand.forget();
    throw ScriptError{atLine, message};
}

bool ScriptedUser::Script::surprised(int dialogID)
{
    constexpr int patience = 1000;
    return surprise && ++surprises < patience && surprise(dialogID);
}

// A program may ask for input while it opens or closes a dialog; one that goes
// on asking waits for somebody.
std::optional<Input> ScriptedUser::Script::inVain(int atLine, const std::string &message)
{
    constexpr int patience = 20;
    if (++asksInVain > patience)
        fail(atLine, message);
    return std::nullopt;
}

std::optional<Input> ScriptedUser::Script::nextInput()
{
    for (;;) {
        if (std::optional<Input> input = hand.take())
            return input;
        if (!ready()) {
            int dialogID = frontDialogID();
            if (dialogID == 0)
                return steps.empty() ? inVain(lastLine, "the script ended and the program waits for input")
                                     : inVain(steps.front().line, "no dialog is open");
            if (surprised(dialogID))
                continue;
            if (steps.empty())
                return inVain(lastLine, "the script ended with " + numbered(dialogID) + " still open");
            const Step &next = steps.front();
            if (next.where == Where::atHost)
                return inVain(next.line, numbered(dialogID) + " is still open");
            fail(next.line, numbered(dialogID) + " is open instead of " + numbered(next.expectedDialog) + ": \"" +
                                frontDialogText() + "\"");
        }
        if (perform() == Progress::wait)
            return std::nullopt;
    }
}

// Whether the next step can be carried out with what is in front.
bool ScriptedUser::Script::ready()
{
    if (steps.empty())
        return false;
    const Step &next = steps.front();
    if (next.where == Where::anywhere || next.where == Where::ifAsked || next.begun)
        return true;
    int dialogID = frontDialogID();
    return next.where == Where::inDialog && dialogID != 0 &&
           (next.expectedDialog == 0 || next.expectedDialog == dialogID);
}

// What it queues has its own line.
Progress ScriptedUser::Script::advance(Step &step)
{
    int lineBefore = std::exchange(line, step.line);
    try {
        Progress progress = step.activity->advance(hand);
        line = lineBefore;
        return progress;
    } catch (const Problem &problem) {
        fail(step.line, problem.message);
    }
}

// The step is out of the queue while it acts: steps it adds come before the
// rest.
Progress ScriptedUser::Script::perform()
{
    Step step = std::move(steps.front());
    steps.pop_front();
    step.begun = true;
    asksInVain = surprises = 0;
    Progress progress = advance(step);
    if (progress != Progress::done)
        steps.push_front(std::move(step));
    return progress;
}

void ScriptedUser::Script::run()
{
    while (!steps.empty()) {
        Step step = std::move(steps.front());
        steps.pop_front();
        if (step.where == Where::inDialog)
            fail(step.line, "no dialog is open");
        if (step.where == Where::ifAsked)
            continue;
        while (advance(step) != Progress::done)
            ;
    }
}

ScriptedUser::ScriptedUser(HeadlessMachine &machine) : script_(std::make_unique<Script>(machine))
{
    machine.setSource([script = script_.get()] { return script->nextInput(); });
}

ScriptedUser::~ScriptedUser()
{
    script_->hand.machine.setSource({});
}

void ScriptedUser::atLine(int line)
{
    script_->line = line;
    script_->lastLine = std::max(script_->lastLine, line);
}

void ScriptedUser::in(int dialogID)
{
    script_->expectedDialog = dialogID;
}

void ScriptedUser::press(int item, std::uint16_t modifiers)
{
    script_->add(Where::inDialog, std::make_unique<Press>(item, modifiers));
}

void ScriptedUser::clickAt(Point global, std::uint16_t modifiers)
{
    script_->act(Where::inDialog, [=](Hand &hand) { hand.clickAt(global, modifiers); });
}

void ScriptedUser::choose(int item, int menuItem)
{
    chooseWhere(item, [=](const std::vector<std::string> &) {
        if (menuItem < 1)
            throw Problem{"menus have no item " + std::to_string(menuItem)};
        return menuItem;
    });
}

void ScriptedUser::choose(int item, const std::string &menuText)
{
    std::string wanted = menuText.substr(0, menuText.find_last_not_of(' ') + 1);
    chooseWhere(item, [=](const std::vector<std::string> &texts) {
        for (std::size_t i = 0; i < texts.size(); ++i)
            if (texts[i] == wanted)
                return static_cast<int>(i + 1);
        throw Problem{"the popup at item " + std::to_string(item) + " has no \"" + wanted + "\""};
    });
}

void ScriptedUser::chooseWhere(int item, std::function<int(const std::vector<std::string> &)> pick)
{
    script_->add(Where::inDialog, std::make_unique<Choose>(item, std::move(pick)));
}

void ScriptedUser::chooseNothing(int item)
{
    chooseWhere(item, [](const std::vector<std::string> &) { return 0; });
}

void ScriptedUser::type(const std::string &text)
{
    script_->act(Where::inDialog, [=](Hand &hand) { hand.type(text); });
}

void ScriptedUser::key(const std::string &name, std::uint16_t modifiers)
{
    script_->act(Where::inDialog, [=](Hand &hand) { hand.key(name, modifiers); });
}

void ScriptedUser::answerSave(const std::filesystem::path &name, bool replace)
{
    script_->add(Where::inDialog, std::make_unique<AnswerSave>(name));
    script_->add(Where::ifAsked, std::make_unique<AnswerReplace>(replace));
}

void ScriptedUser::answerOpen(const std::filesystem::path &name)
{
    script_->add(Where::inDialog, std::make_unique<AnswerOpen>(name));
}

void ScriptedUser::cancelFile()
{
    script_->act(Where::inDialog, [](Hand &hand) { user::cancelFile(hand); });
}

void ScriptedUser::wait(std::uint32_t ticks)
{
    script_->add(Where::anywhere, std::make_unique<Wait>(ticks));
}

void ScriptedUser::putOnClipboard(const std::string &text)
{
    script_->act(Where::anywhere, [=](Hand &hand) { hand.machine.putOnClipboard(text); });
}

void ScriptedUser::setDepth(int bits)
{
    script_->act(Where::anywhere, [=](Hand &hand) {
        std::vector<Screen> screens = hand.machine.screens();
        for (Screen &screen : screens)
            screen.depth = bits;
        hand.machine.setScreens(screens);
    });
}

void ScriptedUser::then(std::function<void()> action)
{
    script_->act(Where::anywhere, [action = std::move(action)](Hand &) { action(); });
}

void ScriptedUser::insertNext(const std::function<void()> &add)
{
    std::deque<Step> inserted;
    std::deque<Step> *before = std::exchange(script_->queue, &inserted);
    add();
    script_->queue = before;
    for (auto step = inserted.rbegin(); step != inserted.rend(); ++step)
        before->push_front(std::move(*step));
}

void ScriptedUser::onSurprise(std::function<bool(int dialogID)> handler)
{
    script_->surprise = std::move(handler);
}

void ScriptedUser::forgetRest()
{
    script_->steps.clear();
}

static bool isToBeDone(const Step &step)
{
    return step.where != Where::ifAsked;
}

bool ScriptedUser::idle() const
{
    return std::none_of(script_->steps.begin(), script_->steps.end(), isToBeDone);
}

int ScriptedUser::nextLine() const
{
    auto next = std::find_if(script_->steps.begin(), script_->steps.end(), isToBeDone);
    return next == script_->steps.end() ? 0 : next->line;
}

void ScriptedUser::atHost(std::function<void()> action)
{
    script_->act(Where::atHost, [action = std::move(action)](Hand &) { action(); });
}

void ScriptedUser::run()
{
    script_->run();
}

}  // namespace toolbox
