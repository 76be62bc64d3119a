// The queue of the scripted user's steps, and when each is carried out. Private
// to the scripted user.
#pragma once

#include <deque>

#include "toolbox/host/user.h"
#include "user/activity.h"

namespace toolbox {
namespace user {

enum class Where {
    anywhere,
    inDialog,  // needs a dialog in front
    ifAsked,   // answers what may appear after the step before
    atHost
};

struct Step {
    int line;
    int expectedDialog;
    Where where;
    std::unique_ptr<Activity> activity;
    bool begun = false;
};

}  // namespace user

struct ScriptedUser::Script {
    explicit Script(HeadlessMachine &machine) : hand(machine) {}

    user::Hand hand;
    std::deque<user::Step> steps;
    std::deque<user::Step> *queue = &steps;
    std::function<bool(int)> surprise;
    int line = 0;
    int lastLine = 0;  // where the script ends
    int expectedDialog = 0;
    int asksInVain = 0;
    int surprises = 0;
    bool quitsWhenStuck = false;
    std::optional<ScriptError> stuck;
    int asksWhileStuck = 0;
    std::string lastMessage;

    void add(user::Where where, std::unique_ptr<user::Activity> activity)
    {
        queue->push_back({line, expectedDialog, where, std::move(activity)});
    }
    void act(user::Where where, std::function<void(user::Hand &)> action)
    {
        add(where, std::make_unique<user::Act>(std::move(action)));
    }

    [[noreturn]] void fail(int atLine, const std::string &message);
    bool surprised(int dialogID);
    std::optional<Input> inVain(int atLine, const std::string &message);
    std::optional<Input> nextInput();
    std::optional<Input> inputFromSteps();
    std::optional<Input> whileStuck();
    void hearMessage();
    void throwIfStuck() const;
    bool ready();
    user::Progress advance(user::Step &step);
    user::Progress perform();
    void run();
};

}  // namespace toolbox
