// One step of the scripted user, as it is carried out. Private to the scripted
// user.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "user/hand.h"

namespace toolbox::user {

enum class Progress {
    done,
    more,  // ask again when the hand has nothing left to give
    wait   // ask again after the program has run by itself
};

// Asked to continue whenever the program waits for input and has taken all that
// the hand did. Throws Problem when it cannot.
struct Activity {
    virtual ~Activity() = default;
    virtual Progress advance(Hand &hand) = 0;
};

// A menu that a click left open would swallow what is done next.
void closeOpenMenu(Hand &hand);

// Something done at once.
class Act : public Activity {
public:
    explicit Act(std::function<void(Hand &)> act) : act_(std::move(act)) {}
    Progress advance(Hand &hand) override
    {
        act_(hand);
        return Progress::done;
    }

private:
    std::function<void(Hand &)> act_;
};

class Press : public Activity {
public:
    explicit Press(int item, std::uint16_t modifiers = 0) : item_(item), modifiers_(modifiers) {}
    Progress advance(Hand &hand) override;

private:
    int item_;
    std::uint16_t modifiers_;
    int waited_ = 0;
};

// Opens the popup at the item and releases over the menu item that pick
// returns, given the texts; outside for 0.
class Choose : public Activity {
public:
    using Pick = std::function<int(const std::vector<std::string> &)>;
    Choose(int item, Pick pick) : item_(item), pick_(std::move(pick)) {}
    Progress advance(Hand &hand) override;

private:
    void pick();
    Progress release(Hand &hand);
    Progress scrollTo(Hand &hand, int first);

    int item_;
    Pick pick_;
    bool pressed_ = false, picked_ = false;
    int chosen_ = 0;
    int lastFirst_ = 0, scrolledInVain_ = 0;
};

// Holds a key down until it has repeated that many times.
class Repeat : public Activity {
public:
    Repeat(std::string key, int times, std::uint16_t modifiers)
        : key_(std::move(key)), times_(times), modifiers_(modifiers)
    {
    }
    Progress advance(Hand &hand) override;

private:
    std::string key_;
    int times_;
    std::uint16_t modifiers_;
    int repeated_ = -1;  // not pressed yet
};

class Wait : public Activity {
public:
    explicit Wait(std::uint32_t ticks) : ticks_(ticks) {}
    Progress advance(Hand &hand) override;

private:
    std::uint32_t ticks_;
    std::uint32_t start_ = 0, lastAsked_ = 0;
    bool started_ = false;
};

}  // namespace toolbox::user
