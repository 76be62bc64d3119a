#include "desktop/key_table.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>

#include "toolbox/host/text.h"
#include "toolbox/host/utf8.h"
#include "toolbox/keys.h"

namespace toolbox::desktop {
namespace {

struct NamedKey {
    SDL_Keycode key;
    std::uint8_t character;
};

constexpr NamedKey namedKeys[] = {
    {SDLK_RETURN, key::carriageReturn},
    {SDLK_KP_ENTER, key::enter},
    {SDLK_TAB, key::tab},
    {SDLK_ESCAPE, key::escape},
    {SDLK_CLEAR, key::escape},
    {SDLK_KP_CLEAR, key::escape},
    {SDLK_BACKSPACE, key::backspace},
    {SDLK_DELETE, key::forwardDelete},
    {SDLK_LEFT, key::leftArrow},
    {SDLK_RIGHT, key::rightArrow},
    {SDLK_UP, key::upArrow},
    {SDLK_DOWN, key::downArrow},
    {SDLK_HOME, key::home},
    {SDLK_END, key::end},
    {SDLK_PAGEUP, key::pageUp},
    {SDLK_PAGEDOWN, key::pageDown},
    {SDLK_INSERT, key::help},
    {SDLK_HELP, key::help},
};

// Runs of keys that follow each other in SDL's numbering.
struct Run {
    SDL_Scancode first;
    std::basic_string_view<std::uint8_t> codes;
};

constexpr std::uint8_t letters[] = {0x00, 0x0B, 0x08, 0x02, 0x0E, 0x03, 0x05, 0x04, 0x22, 0x26, 0x28, 0x25, 0x2E,
                                    0x2D, 0x1F, 0x23, 0x0C, 0x0F, 0x01, 0x11, 0x20, 0x09, 0x0D, 0x07, 0x10, 0x06};
constexpr std::uint8_t digits[] = {0x12, 0x13, 0x14, 0x15, 0x17, 0x16, 0x1A, 0x1C, 0x19, 0x1D};
// After the first five: - = [ ] \ and its twin, ; ' ` , . /
constexpr std::uint8_t punctuation[] = {
    keycode::carriageReturn, keycode::escape, keycode::backspace, keycode::tab, keycode::space, 0x1B, 0x18, 0x21,
    0x1E, 0x2A, 0x2A, 0x29, 0x27, 0x32, 0x2B, keycode::period, 0x2C};
constexpr std::uint8_t functions[] = {0x7A, 0x78, 0x63, 0x76, 0x60, 0x61, 0x62, 0x64, 0x65, 0x6D, 0x67, 0x6F};
constexpr std::uint8_t moreFunctions[] = {0x69, 0x6B, 0x71};
constexpr std::uint8_t navigation[] = {keycode::help,     keycode::home,       keycode::pageUp,
                                       keycode::forwardDelete, keycode::end,   keycode::pageDown,
                                       keycode::rightArrow, keycode::leftArrow, keycode::downArrow, keycode::upArrow};
// Clear, / * - + Enter, 1 to 9, 0, and the period; then the key beside the left Shift.
constexpr std::uint8_t pad[] = {0x47, 0x4B, 0x43, 0x4E, 0x45, keycode::enter, 0x53, 0x54, 0x55,
                                0x56, 0x57, 0x58, 0x59, 0x5B, 0x5C, 0x52, 0x41, 0x0A};

template <std::size_t size>
constexpr Run run(SDL_Scancode first, const std::uint8_t (&codes)[size])
{
    return {first, {codes, size}};
}

constexpr Run runs[] = {
    run(SDL_SCANCODE_A, letters),       run(SDL_SCANCODE_1, digits),
    run(SDL_SCANCODE_RETURN, punctuation), run(SDL_SCANCODE_F1, functions),
    run(SDL_SCANCODE_F13, moreFunctions), run(SDL_SCANCODE_INSERT, navigation),
    run(SDL_SCANCODE_NUMLOCKCLEAR, pad),
};

bool isFunctionKey(SDL_Keycode sym)
{
    return (sym >= SDLK_F1 && sym <= SDLK_F12) || (sym >= SDLK_F13 && sym <= SDLK_F15);
}

std::optional<std::uint8_t> padCharacter(SDL_Scancode place)
{
    constexpr std::string_view characters = "/*-+\r1234567890.";
    if (place < SDL_SCANCODE_KP_DIVIDE || place > SDL_SCANCODE_KP_PERIOD || place == SDL_SCANCODE_KP_ENTER)
        return std::nullopt;
    return static_cast<std::uint8_t>(characters[static_cast<std::size_t>(place - SDL_SCANCODE_KP_DIVIDE)]);
}

}  // namespace

std::uint8_t keyCodeOf(SDL_Scancode place)
{
    for (const Run &keys : runs) {
        const int offset = place - keys.first;
        if (offset >= 0 && static_cast<std::size_t>(offset) < keys.codes.size())
            return keys.codes[static_cast<std::size_t>(offset)];
    }
    return place == SDL_SCANCODE_HELP ? keycode::help : 0;
}

std::optional<std::uint8_t> characterOfNamedKey(SDL_Keycode sym)
{
    if (isFunctionKey(sym))
        return key::function;
    const auto *found = std::find_if(std::begin(namedKeys), std::end(namedKeys),
                                     [=](const NamedKey &named) { return named.key == sym; });
    if (found == std::end(namedKeys))
        return std::nullopt;
    return found->character;
}

std::optional<NavigationKey> navigationKey(SDL_Scancode place)
{
    static const std::map<SDL_Scancode, NavigationKey> keys = {
        {SDL_SCANCODE_KP_0, {SDLK_INSERT, SDL_SCANCODE_INSERT}},
        {SDL_SCANCODE_KP_1, {SDLK_END, SDL_SCANCODE_END}},
        {SDL_SCANCODE_KP_2, {SDLK_DOWN, SDL_SCANCODE_DOWN}},
        {SDL_SCANCODE_KP_3, {SDLK_PAGEDOWN, SDL_SCANCODE_PAGEDOWN}},
        {SDL_SCANCODE_KP_4, {SDLK_LEFT, SDL_SCANCODE_LEFT}},
        {SDL_SCANCODE_KP_6, {SDLK_RIGHT, SDL_SCANCODE_RIGHT}},
        {SDL_SCANCODE_KP_7, {SDLK_HOME, SDL_SCANCODE_HOME}},
        {SDL_SCANCODE_KP_8, {SDLK_UP, SDL_SCANCODE_UP}},
        {SDL_SCANCODE_KP_9, {SDLK_PAGEUP, SDL_SCANCODE_PAGEUP}},
        {SDL_SCANCODE_KP_PERIOD, {SDLK_DELETE, SDL_SCANCODE_DELETE}},
    };
    auto found = keys.find(place);
    if (found == keys.end())
        return std::nullopt;
    return found->second;
}

std::optional<std::uint8_t> plainCharacter(const SDL_Keysym &key)
{
    const bool letterPlace = key.scancode >= SDL_SCANCODE_A && key.scancode <= SDL_SCANCODE_Z;
    if (letterPlace && (key.sym < ' ' || key.sym >= SDLK_DELETE))
        return static_cast<std::uint8_t>('a' + (key.scancode - SDL_SCANCODE_A));
    if (key.sym & SDLK_SCANCODE_MASK)
        return padCharacter(key.scancode);
    if (key.sym < ' ')
        return std::nullopt;
    std::string utf8;
    appendUtf8(utf8, static_cast<char32_t>(key.sym));
    std::optional<std::string> roman = romanFromUtf8(utf8);
    if (!roman || roman->size() != 1)
        return std::nullopt;
    return static_cast<std::uint8_t>(roman->front());
}

}  // namespace toolbox::desktop
