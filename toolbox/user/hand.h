// Mouse and keyboard of the scripted user: what it does becomes inputs that
// wait to be taken. Private to the scripted user.
#pragma once

#include <deque>
#include <optional>
#include <string>

#include "toolbox/host/headless.h"

namespace toolbox::user {

// Why a step cannot be carried out, in words.
struct Problem {
    std::string message;
};

class Hand {
public:
    explicit Hand(HeadlessMachine &machine) : machine(machine) {}

    void moveTo(Point where, std::uint16_t modifiers = 0) { add(Input::Kind::mouseMoved, where, modifiers); }
    void pressAt(Point where, std::uint16_t modifiers = 0);
    void releaseAt(Point where, std::uint16_t modifiers = 0);
    void clickAt(Point where, std::uint16_t modifiers = 0);
    // A key by its name, or one character.
    void key(const std::string &name, std::uint16_t modifiers = 0);
    void type(const std::string &utf8);

    std::optional<Input> take();
    void forget() { waiting_.clear(); }

    HeadlessMachine &machine;

private:
    void add(Input::Kind kind, Point where, std::uint16_t modifiers);
    void strike(std::uint8_t character, std::uint16_t modifiers);

    std::deque<Input> waiting_;
};

}  // namespace toolbox::user
