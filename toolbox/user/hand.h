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

    void moveTo(Point where, std::uint16_t modifiers = 0);
    // Throws Problem when the button is already down.
    void pressAt(Point where, std::uint16_t modifiers = 0);
    // Throws Problem when the button is up.
    void releaseAt(Point where, std::uint16_t modifiers = 0);
    void clickAt(Point where, std::uint16_t modifiers = 0);
    // Presses, moves along in a few steps, releases.
    void drag(Point from, Point to, std::uint16_t modifiers = 0);
    // Where it last was, and whether it holds the button down.
    Point place() const { return place_; }
    bool holdsButton() const { return holdsButton_; }
    // A key by its name, or one character.
    void key(const std::string &name, std::uint16_t modifiers = 0);
    // One of the three inputs of a key that is held: keyDown, autoKey, keyUp.
    void keyInput(Input::Kind kind, const std::string &name, std::uint16_t modifiers = 0);
    void type(const std::string &utf8);

    std::optional<Input> take();
    void forget();

    HeadlessMachine &machine;

private:
    void add(Input::Kind kind, Point where, std::uint16_t modifiers);
    void addKey(Input::Kind kind, std::uint8_t character, std::uint16_t modifiers);
    void strike(std::uint8_t character, std::uint16_t modifiers);

    std::deque<Input> waiting_;
    Point place_{};
    bool holdsButton_ = false;
};

}  // namespace toolbox::user
