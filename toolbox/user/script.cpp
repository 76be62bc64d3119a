#include "user/script.h"

#include <utility>

#include "toolbox/host/dialog_text.h"
#include "user/front_dialog.h"

namespace toolbox {

using namespace user;

static std::string numbered(int dialogID)
{
    return "dialog " + std::to_string(dialogID);
}

// What the message in front says, to be added to an error.
static std::string messageText()
{
    return messageInFront() ? ": \"" + frontDialogText() + "\"" : "";
}

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

// A program may ask for input while it opens or closes a dialog; one that keeps
// asking waits for the user.
std::optional<Input> ScriptedUser::Script::inVain(int atLine, const std::string &message)
{
    constexpr int patience = 20;
    if (++asksInVain > patience)
        fail(atLine, message);
    return std::nullopt;
}

void ScriptedUser::Script::hearMessage()
{
    if (messageInFront())
        lastMessage = frontDialogText();
}

// The user does nothing any more; what is still said belongs to the error.
std::optional<Input> ScriptedUser::Script::whileStuck()
{
    constexpr int patience = 200;
    if (++asksWhileStuck > patience)
        throw *stuck;
    if (messageInFront() && stuck->message.find(lastMessage) == std::string::npos)
        stuck->message += messageText();
    return std::nullopt;
}

void ScriptedUser::Script::throwIfStuck() const
{
    if (stuck)
        throw *stuck;
}

std::optional<Input> ScriptedUser::Script::nextInput()
{
    hearMessage();
    if (stuck)
        return whileStuck();
    try {
        return inputFromSteps();
    } catch (const ScriptError &error) {
        if (!quitsWhenStuck)
            throw;
        stuck = error;
        hand.machine.push({.kind = Input::Kind::quit});
        return whileStuck();
    }
}

std::optional<Input> ScriptedUser::Script::inputFromSteps()
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
                return inVain(lastLine, "the script ended with " + numbered(dialogID) + " still open" + messageText());
            const Step &next = steps.front();
            if (next.where == Where::atHost)
                return inVain(next.line, numbered(dialogID) + " is still open" + messageText());
            fail(next.line, numbered(dialogID) + " is open instead of " + numbered(next.expectedDialog) + ": \"" +
                                frontDialogText() + "\"");
        }
        if (perform() == Progress::wait || hand.machine.inputWaiting())
            return std::nullopt;   // the step changed displays or clipboard: that input is taken first
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

// Steps that it queues get its line.
Progress ScriptedUser::Script::advance(Step &step)
{
    int lineBefore = std::exchange(line, step.line);
    try {
        Progress progress = step.activity->advance(hand);
        line = lineBefore;
        return progress;
    } catch (const Problem &problem) {
        fail(step.line, problem.message);
    } catch (const ScriptError &error) {
        fail(error.line > 0 ? error.line : step.line, error.message);
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
        lastMessage.clear();
        while (advance(step) != Progress::done)
            ;
        throwIfStuck();
    }
}

}  // namespace toolbox
