#include "user/hand.h"

#include <map>

#include "toolbox/events.h"
#include "toolbox/host/text.h"

namespace toolbox::user {
namespace {

constexpr std::uint8_t returnCharacter = 0x0D;

const std::map<std::string, std::uint8_t> namedKeys = {
    {"return", returnCharacter}, {"enter", 0x03}, {"escape", 0x1B}, {"tab", 0x09},
    {"backspace", 0x08},         {"left", 0x1C},  {"right", 0x1D},  {"up", 0x1E},
    {"down", 0x1F},              {"home", 0x01},  {"end", 0x04},    {"delete", 0x7F},
    {"space", ' '},
};

// Key codes that programs look at; 0 for those told by their character alone.
const std::map<std::uint8_t, std::uint8_t> keyCodes = {
    {returnCharacter, 0x24}, {0x03, 0x4C}, {0x1B, 0x35}, {0x09, 0x30}, {0x08, 0x33}, {0x1C, 0x7B}, {0x1D, 0x7C},
    {0x1E, 0x7E},            {0x1F, 0x7D}, {0x01, 0x73}, {0x04, 0x77}, {0x7F, 0x75}, {' ', 0x31},
};

bool isCapital(std::uint8_t character)
{
    return character >= 'A' && character <= 'Z';
}

}  // namespace

void Hand::add(Input::Kind kind, Point where, std::uint16_t modifiers)
{
    Input input{.kind = kind, .where = where, .modifiers = modifiers};
    waiting_.push_back(input);
}

void Hand::pressAt(Point where, std::uint16_t modifiers)
{
    moveTo(where, modifiers);
    add(Input::Kind::mouseDown, where, modifiers);
}

void Hand::releaseAt(Point where, std::uint16_t modifiers)
{
    moveTo(where, modifiers);
    add(Input::Kind::mouseUp, where, modifiers);
}

void Hand::clickAt(Point where, std::uint16_t modifiers)
{
    pressAt(where, modifiers);
    add(Input::Kind::mouseUp, where, modifiers);
}

void Hand::strike(std::uint8_t character, std::uint16_t modifiers)
{
    auto code = keyCodes.find(character);
    for (Input::Kind kind : {Input::Kind::keyDown, Input::Kind::keyUp}) {
        Input input{.kind = kind, .character = character, .modifiers = modifiers};
        input.keyCode = code == keyCodes.end() ? 0 : code->second;
        waiting_.push_back(input);
    }
}

void Hand::key(const std::string &name, std::uint16_t modifiers)
{
    if (auto named = namedKeys.find(name); named != namedKeys.end())
        return strike(named->second, modifiers);
    std::optional<std::string> character = romanFromUtf8(name);
    if (!character || character->size() != 1)
        throw Problem{"there is no key \"" + name + "\""};
    strike(static_cast<std::uint8_t>(character->front()), modifiers);
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

std::optional<Input> Hand::take()
{
    if (waiting_.empty())
        return std::nullopt;
    Input input = waiting_.front();
    waiting_.pop_front();
    return input;
}

}  // namespace toolbox::user
