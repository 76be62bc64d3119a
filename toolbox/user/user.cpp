#include "toolbox/host/user.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "user/bar.h"
#include "user/file_answers.h"
#include "user/front_dialog.h"
#include "user/script.h"

namespace toolbox {

using namespace user;

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

void ScriptedUser::moveTo(Point global, std::uint16_t modifiers)
{
    script_->act(Where::anywhere, [=](Hand &hand) { hand.moveTo(global, modifiers); });
}

void ScriptedUser::pressAt(Point global, std::uint16_t modifiers)
{
    script_->act(Where::inDialog, [=](Hand &hand) { hand.pressAt(global, modifiers); });
}

void ScriptedUser::hold(int item, std::uint16_t modifiers)
{
    script_->act(Where::inDialog, [=](Hand &hand) { hand.pressAt(pressableMiddleOf(item), modifiers); });
}

void ScriptedUser::releaseAt(Point global, std::uint16_t modifiers)
{
    script_->act(Where::anywhere, [=](Hand &hand) { hand.releaseAt(global, modifiers); });
}

void ScriptedUser::release(std::uint16_t modifiers)
{
    script_->act(Where::anywhere, [=](Hand &hand) { hand.releaseAt(hand.place(), modifiers); });
}

void ScriptedUser::drag(Point from, Point to, std::uint16_t modifiers)
{
    script_->act(Where::inDialog, [=](Hand &hand) { hand.drag(from, to, modifiers); });
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

void ScriptedUser::chooseFromBar(const std::string &menuTitle, const std::string &itemText)
{
    script_->add(Where::anywhere, std::make_unique<ChooseFromBar>(menuTitle, itemText));
}

void ScriptedUser::type(const std::string &text)
{
    script_->act(Where::inDialog, [=](Hand &hand) { hand.type(text); });
}

void ScriptedUser::key(const std::string &name, std::uint16_t modifiers)
{
    script_->act(Where::inDialog, [=](Hand &hand) { hand.key(name, modifiers); });
}

void ScriptedUser::repeat(const std::string &name, int times, std::uint16_t modifiers)
{
    script_->add(Where::inDialog, std::make_unique<Repeat>(name, times, modifiers));
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

void ScriptedUser::changeDisplays(std::function<void(std::vector<Display> &)> change)
{
    script_->act(Where::anywhere, [change = std::move(change)](Hand &hand) {
        std::vector<Display> displays = hand.machine.displays();
        change(displays);
        hand.machine.setDisplays(displays);
    });
}

void ScriptedUser::setDepth(int bits)
{
    changeDisplays([=](std::vector<Display> &displays) {
        for (Display &display : displays)
            display.depth = bits;
    });
}

void ScriptedUser::setScale(int scale)
{
    changeDisplays([=](std::vector<Display> &displays) {
        for (Display &display : displays)
            display.scale = scale;
    });
}

void ScriptedUser::resizeDisplay(int width, int height)
{
    changeDisplays([=](std::vector<Display> &displays) {
        const Rect before = displays.front().bounds;
        SetRect(&displays.front().bounds, 0, 0, static_cast<int16_t>(width), static_cast<int16_t>(height));
        for (std::size_t i = 1; i < displays.size(); ++i) {
            Rect &bounds = displays[i].bounds;
            OffsetRect(&bounds, static_cast<int16_t>(bounds.left >= before.right ? width - before.right : 0),
                       static_cast<int16_t>(bounds.top >= before.bottom ? height - before.bottom : 0));
        }
    });
}

void ScriptedUser::setDisplays(const std::vector<Display> &displays)
{
    changeDisplays([=](std::vector<Display> &all) { all = displays; });
}

void ScriptedUser::then(std::function<void()> action)
{
    script_->act(Where::anywhere, [action = std::move(action)](Hand &) { action(); });
}

void ScriptedUser::thenInDialog(std::function<void()> action)
{
    script_->act(Where::inDialog, [action = std::move(action)](Hand &) { action(); });
}

void ScriptedUser::insertNext(const std::function<void()> &add)
{
    std::deque<Step> inserted;
    std::deque<Step> *before = std::exchange(script_->queue, &inserted);
    add();
    script_->queue = before;
    before->insert(before->begin(), std::make_move_iterator(inserted.begin()),
                   std::make_move_iterator(inserted.end()));
}

void ScriptedUser::onSurprise(std::function<bool(int dialogID)> handler)
{
    script_->surprise = std::move(handler);
}

void ScriptedUser::quitsWhenStuck()
{
    script_->quitsWhenStuck = true;
}

const std::optional<ScriptError> &ScriptedUser::stuck() const
{
    return script_->stuck;
}

const std::string &ScriptedUser::lastMessage() const
{
    return script_->lastMessage;
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
