#include "user/hand.h"

#include <map>

#include "toolbox/events.h"
#include "toolbox/host/text.h"

namespace toolbox::user {
namespace {

constexpr std::uint8_t returnCharacter = 0x0D;

const std::map<std::string, std::uint8_t> namedKeys = {
    {"return", returnCharacter},
    {"enter", 0x03},
    {"escape", 0x1B},
    {"tab", 0x09},
    {"backspace", 0x08},
    {"left", 0x1C},
    {"right", 0x1D},
    {"up", 0x1E},
    {"down", 0x1F},
    {"home", 0x01},
    {"end", 0x04},
    {"delete", 0x7F},
    {"space", ' '},
};

// Key codes that programs look at; 0 for those told by their character alone.
const std::map<std::uint8_t, std::uint8_t> keyCodes = {
    {returnCharacter, 0x24},
    {0x03, 0x4C},
    {0x1B, 0x35},
    {0x09, 0x30},
    {0x08, 0x33},
    {0x1C, 0x7B},
    {0x1D, 0x7C},
    {0x1E, 0x7E},
    {0x1F, 0x7D},
    {0x01, 0x73},
    {0x04, 0x77},
    {0x7F, 0x75},
    {' ', 0x31},
};

bool isCapital(std::uint8_t character)
{
    return character >= 'A' && character <= 'Z';
}

// Of a key by its name, or one character.
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
        auto character = static_cast<std::uint8_t>(typed == '\n' ? returnCharacter : typed);
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
