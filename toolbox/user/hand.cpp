#include "user/hand.h"

#include <map>

#include "toolbox/events.h"
#include "toolbox/host/text.h"
#include "toolbox/keys.h"

namespace toolbox::user {
namespace {

const std::map<std::string, std::uint8_t> namedKeys = {
    {"return", key::carriageReturn},
    {"enter", key::enter},
    {"escape", key::escape},
    {"tab", key::tab},
    {"backspace", key::backspace},
    {"left", key::leftArrow},
    {"right", key::rightArrow},
    {"up", key::upArrow},
    {"down", key::downArrow},
    {"home", key::home},
    {"end", key::end},
    {"delete", key::forwardDelete},
    {"space", ' '},
    {"pageup", key::pageUp},
    {"pagedown", key::pageDown},
};

// Key codes that programs look at; 0 for keys known by their character alone.
const std::map<std::uint8_t, std::uint8_t> keyCodes = {
    {key::carriageReturn, keycode::carriageReturn},
    {key::enter, keycode::enter},
    {key::escape, keycode::escape},
    {key::tab, keycode::tab},
    {key::backspace, keycode::backspace},
    {key::leftArrow, keycode::leftArrow},
    {key::rightArrow, keycode::rightArrow},
    {key::upArrow, keycode::upArrow},
    {key::downArrow, keycode::downArrow},
    {key::home, keycode::home},
    {key::end, keycode::end},
    {key::forwardDelete, keycode::forwardDelete},
    {' ', keycode::space},
};

bool isCapital(std::uint8_t character)
{
    return character >= 'A' && character <= 'Z';
}

// The character of a key given by its name or as one character.
std::uint8_t characterOf(const std::string &name)
{
    if (auto named = namedKeys.find(name); named != namedKeys.end())
        return named->second;
    std::optional<std::string> character = romanFromUtf8(name);
    if (!character || character->size() != 1)
        throw Problem{"there is no key \"" + name + "\""};
    return static_cast<std::uint8_t>(character->front());
}

}  // namespace

void Hand::add(Input::Kind kind, Point where, std::uint16_t modifiers)
{
    Input input{.kind = kind, .where = where, .modifiers = modifiers};
    waiting_.push_back(input);
    place_ = where;
}

void Hand::moveTo(Point where, std::uint16_t modifiers)
{
    add(Input::Kind::mouseMoved, where, modifiers);
}

void Hand::pressAt(Point where, std::uint16_t modifiers)
{
    if (holdsButton_)
        throw Problem{"the mouse button is held down"};
    moveTo(where, modifiers);
    add(Input::Kind::mouseDown, where, modifiers);
    holdsButton_ = true;
}

void Hand::releaseAt(Point where, std::uint16_t modifiers)
{
    if (!holdsButton_)
        throw Problem{"the mouse button is not held down"};
    moveTo(where, modifiers);
    add(Input::Kind::mouseUp, where, modifiers);
    holdsButton_ = false;
}

void Hand::clickAt(Point where, std::uint16_t modifiers)
{
    pressAt(where, modifiers);
    add(Input::Kind::mouseUp, where, modifiers);
    holdsButton_ = false;
}

void Hand::drag(Point from, Point to, std::uint16_t modifiers)
{
    constexpr int steps = 4;
    pressAt(from, modifiers);
    for (int step = 1; step < steps; ++step)
        moveTo({static_cast<std::int16_t>(from.v + (to.v - from.v) * step / steps),
                static_cast<std::int16_t>(from.h + (to.h - from.h) * step / steps)},
               modifiers);
    releaseAt(to, modifiers);
}

void Hand::addKey(Input::Kind kind, std::uint8_t character, std::uint16_t modifiers)
{
    auto code = keyCodes.find(character);
    Input input{.kind = kind, .character = character, .modifiers = modifiers};
    input.keyCode = code == keyCodes.end() ? 0 : code->second;
    waiting_.push_back(input);
}

void Hand::strike(std::uint8_t character, std::uint16_t modifiers)
{
    for (Input::Kind kind : {Input::Kind::keyDown, Input::Kind::keyUp})
        addKey(kind, character, modifiers);
}

void Hand::key(const std::string &name, std::uint16_t modifiers)
{
    strike(characterOf(name), modifiers);
}

void Hand::keyInput(Input::Kind kind, const std::string &name, std::uint16_t modifiers)
{
    addKey(kind, characterOf(name), modifiers);
}

void Hand::type(const std::string &utf8)
{
    std::optional<std::string> characters = romanFromUtf8(utf8);
    if (!characters)
        throw Problem{"\"" + utf8 + "\" has characters that no key gives"};
    for (char typed : *characters) {
        auto character = static_cast<std::uint8_t>(typed == '\n' ? '\r' : typed);
        strike(character, isCapital(character) ? shiftKey : 0);
    }
}

void Hand::forget()
{
    waiting_.clear();
    holdsButton_ = false;
}

std::optional<Input> Hand::take()
{
    if (waiting_.empty())
        return std::nullopt;
    Input input = waiting_.front();
    waiting_.pop_front();
    return input;
}

}  // namespace toolbox::user
