// Keys and the text they type, as pairs of SDL's events in all their orders.
#include "desktop/keyboard.h"

#include <gtest/gtest.h>

#include "desktop/key_table.h"
#include "desktop_machine/sdl_events.h"
#include "toolbox/events.h"

using namespace sdl;
using toolbox::desktop::InputQueue;

namespace {

class KeyboardTest : public ::testing::Test {
protected:
    // Events that arrive together.
    std::string after(std::initializer_list<SDL_Event> events)
    {
        for (const SDL_Event &event : events)
            keyboard.take(event);
        keyboard.settle();
        return described(queue);
    }
    std::string tapped(SDL_Scancode place, SDL_Keycode key, int modifiers = 0)
    {
        return after({pressed(place, key, modifiers), released(place, key, modifiers)});
    }

    InputQueue queue;
    int refused = 0;
    toolbox::desktop::Keyboard keyboard{queue, [this] { ++refused; }};
};

TEST_F(KeyboardTest, TextComesOnceWithItsKey)
{
    EXPECT_EQ(after({pressed(SDL_SCANCODE_Z, SDLK_y), text("y"), released(SDL_SCANCODE_Z, SDLK_y)}),
              "down:y/06 up:y/06");
    EXPECT_EQ(after({pressed(SDL_SCANCODE_A, SDLK_a, KMOD_LSHIFT), text("A"), released(SDL_SCANCODE_A, SDLK_a)}),
              "down:A/00+s up:A/00");
    EXPECT_EQ(after({pressed(SDL_SCANCODE_A, SDLK_a, KMOD_CAPS), text("A")}), "down:A/00+l");
}

TEST_F(KeyboardTest, KeysRollingOverEachOtherKeepTheirCharacters)
{
    EXPECT_EQ(after({pressed(SDL_SCANCODE_A, SDLK_a), text("a"), pressed(SDL_SCANCODE_B, SDLK_b), text("b"),
                     released(SDL_SCANCODE_A, SDLK_a), released(SDL_SCANCODE_B, SDLK_b)}),
              "down:a/00 down:b/0b up:a/00 up:b/0b");
}

TEST_F(KeyboardTest, DeadKeyTypesWithTheNext)
{
    EXPECT_EQ(after({pressed(SDL_SCANCODE_EQUALS, 0xB4), released(SDL_SCANCODE_EQUALS, 0xB4)}), "");
    EXPECT_EQ(after({pressed(SDL_SCANCODE_E, SDLK_e), text("é"), released(SDL_SCANCODE_E, SDLK_e)}),
              "down:é/0e up:é/0e");
}

TEST_F(KeyboardTest, DeadKeyThatMeetsNoLetterTypesBoth)
{
    after({pressed(SDL_SCANCODE_EQUALS, 0xB4), released(SDL_SCANCODE_EQUALS, 0xB4)});
    EXPECT_EQ(after({pressed(SDL_SCANCODE_Q, SDLK_q), text("´q"), released(SDL_SCANCODE_Q, SDLK_q)}),
              "down:´/0c down:q/00 up:´/0c");
}

TEST_F(KeyboardTest, AltGrTypesByTheLayout)
{
    EXPECT_EQ(after({pressed(SDL_SCANCODE_Q, SDLK_q, KMOD_RALT), text("@"), released(SDL_SCANCODE_Q, SDLK_q)}),
              "down:@/0c+o up:@/0c");
    EXPECT_EQ(after({pressed(SDL_SCANCODE_Q, SDLK_q, KMOD_MODE | KMOD_LCTRL), text("@")}), "down:@/0c+co");
}

TEST_F(KeyboardTest, InputMethodTypesWithoutKeys)
{
    EXPECT_EQ(after({text("Zoë")}), "down:Z/00 down:o/00 down:ë/00");
    EXPECT_EQ(refused, 0);
}

TEST_F(KeyboardTest, LateTextStillBelongsToItsKey)
{
    EXPECT_EQ(after({pressed(SDL_SCANCODE_A, SDLK_a)}), "");
    EXPECT_EQ(after({text("a")}), "down:a/00");
    EXPECT_EQ(after({released(SDL_SCANCODE_A, SDLK_a)}), "up:a/00");
}

TEST_F(KeyboardTest, WhatMacOSRomanLacksIsRefusedAndTheRestTyped)
{
    EXPECT_EQ(after({pressed(SDL_SCANCODE_A, SDLK_a), text("ф")}), "");
    EXPECT_EQ(refused, 1);
    EXPECT_EQ(after({text("a日b語")}), "down:a/00 down:b/00");
    EXPECT_EQ(refused, 2);
}

TEST_F(KeyboardTest, TextThatIsNoUtf8IsRefused)
{
    EXPECT_EQ(after({text("a\xff\xc3")}), "down:a/00");
    EXPECT_EQ(refused, 1);
}

TEST_F(KeyboardTest, RepeatIsAutoKeyUntilTheKeyGoesUp)
{
    EXPECT_EQ(after({pressed(SDL_SCANCODE_A, SDLK_a), text("a"), pressed(SDL_SCANCODE_A, SDLK_a, 0, true),
                     text("a"), released(SDL_SCANCODE_A, SDLK_a)}),
              "down:a/00 again:a/00 up:a/00");
    EXPECT_EQ(after({pressed(SDL_SCANCODE_LEFT, SDLK_LEFT), pressed(SDL_SCANCODE_LEFT, SDLK_LEFT, 0, true),
                     released(SDL_SCANCODE_LEFT, SDLK_LEFT)}),
              "down:#1c/7b again:#1c/7b up:#1c/7b");
}

TEST_F(KeyboardTest, NamedKeysHaveTheirClassicCharactersAndCodes)
{
    const struct {
        SDL_Scancode place;
        SDL_Keycode key;
        const char *stroke;
    } keys[] = {
        {SDL_SCANCODE_RETURN, SDLK_RETURN, "#0d/24"},       {SDL_SCANCODE_KP_ENTER, SDLK_KP_ENTER, "#03/4c"},
        {SDL_SCANCODE_TAB, SDLK_TAB, "#09/30"},             {SDL_SCANCODE_ESCAPE, SDLK_ESCAPE, "#1b/35"},
        {SDL_SCANCODE_BACKSPACE, SDLK_BACKSPACE, "#08/33"}, {SDL_SCANCODE_DELETE, SDLK_DELETE, "#7f/75"},
        {SDL_SCANCODE_LEFT, SDLK_LEFT, "#1c/7b"},           {SDL_SCANCODE_RIGHT, SDLK_RIGHT, "#1d/7c"},
        {SDL_SCANCODE_UP, SDLK_UP, "#1e/7e"},               {SDL_SCANCODE_DOWN, SDLK_DOWN, "#1f/7d"},
        {SDL_SCANCODE_HOME, SDLK_HOME, "#01/73"},           {SDL_SCANCODE_END, SDLK_END, "#04/77"},
        {SDL_SCANCODE_PAGEUP, SDLK_PAGEUP, "#0b/74"},       {SDL_SCANCODE_PAGEDOWN, SDLK_PAGEDOWN, "#0c/79"},
        {SDL_SCANCODE_INSERT, SDLK_INSERT, "#05/72"},       {SDL_SCANCODE_F1, SDLK_F1, "#10/7a"},
        {SDL_SCANCODE_F2, SDLK_F2, "#10/78"},               {SDL_SCANCODE_F3, SDLK_F3, "#10/63"},
        {SDL_SCANCODE_F4, SDLK_F4, "#10/76"},               {SDL_SCANCODE_F15, SDLK_F15, "#10/71"},
    };
    for (const auto &key : keys)
        EXPECT_EQ(tapped(key.place, key.key), std::string("down:") + key.stroke + " up:" + key.stroke);
}

TEST_F(KeyboardTest, ModifierKeysAloneGiveNothing)
{
    EXPECT_EQ(tapped(SDL_SCANCODE_LSHIFT, SDLK_LSHIFT, KMOD_LSHIFT), "");
    EXPECT_EQ(tapped(SDL_SCANCODE_LCTRL, SDLK_LCTRL, KMOD_LCTRL), "");
    EXPECT_EQ(tapped(SDL_SCANCODE_LGUI, SDLK_LGUI, KMOD_LGUI), "");
    EXPECT_EQ(tapped(SDL_SCANCODE_CAPSLOCK, SDLK_CAPSLOCK, KMOD_CAPS), "");
    EXPECT_EQ(tapped(SDL_SCANCODE_NUMLOCKCLEAR, SDLK_NUMLOCKCLEAR, KMOD_NUM), "");
}

TEST_F(KeyboardTest, KeypadIsDigitsWithTextAndArrowsWithout)
{
    EXPECT_EQ(after({pressed(SDL_SCANCODE_KP_7, SDLK_KP_7, KMOD_NUM), text("7"),
                     released(SDL_SCANCODE_KP_7, SDLK_KP_7, KMOD_NUM)}),
              "down:7/59 up:7/59");
    EXPECT_EQ(tapped(SDL_SCANCODE_KP_7, SDLK_KP_7), "down:#01/73 up:#01/73");
    EXPECT_EQ(tapped(SDL_SCANCODE_KP_4, SDLK_KP_4, KMOD_NUM | KMOD_LSHIFT), "down:#1c/7b+s up:#1c/7b+s");
    EXPECT_EQ(tapped(SDL_SCANCODE_KP_PERIOD, SDLK_KP_PERIOD), "down:#7f/75 up:#7f/75");
    EXPECT_EQ(tapped(SDL_SCANCODE_KP_5, SDLK_KP_5), "");
}

// --- Command ------------------------------------------------------------------

TEST_F(KeyboardTest, CommandGivesThePlainLetterOfTheLayout)
{
    EXPECT_EQ(tapped(SDL_SCANCODE_C, SDLK_c, KMOD_LCTRL), "down:c/08+c up:c/08+c");
    EXPECT_EQ(tapped(SDL_SCANCODE_C, SDLK_c, KMOD_RGUI), "down:c/08+c up:c/08+c");
    EXPECT_EQ(tapped(SDL_SCANCODE_C, SDLK_c, KMOD_LCTRL | KMOD_LSHIFT), "down:c/08+cs up:c/08+cs");
    EXPECT_EQ(tapped(SDL_SCANCODE_C, SDLK_c, KMOD_LCTRL | KMOD_CAPS), "down:c/08+cl up:c/08+cl");
    EXPECT_EQ(tapped(SDL_SCANCODE_Q, SDLK_a, KMOD_LCTRL), "down:a/0c+c up:a/0c+c");
    EXPECT_EQ(tapped(SDL_SCANCODE_LEFTBRACKET, 0xFC, KMOD_LCTRL), "down:ü/21+c up:ü/21+c");
}

TEST_F(KeyboardTest, CommandOnALayoutWithoutLatinLettersGivesTheLatinOne)
{
    EXPECT_EQ(tapped(SDL_SCANCODE_C, 0x441, KMOD_LCTRL), "down:c/08+c up:c/08+c");
    // Mac OS Roman has pi, but no command has it as its key.
    EXPECT_EQ(tapped(SDL_SCANCODE_P, 0x3C0, KMOD_LCTRL), "down:p/23+c up:p/23+c");
}

TEST_F(KeyboardTest, CommandAndTextTogetherAreOneStroke)
{
    EXPECT_EQ(after({pressed(SDL_SCANCODE_PERIOD, SDLK_PERIOD, KMOD_LCTRL), text("."),
                     released(SDL_SCANCODE_PERIOD, SDLK_PERIOD, KMOD_LCTRL)}),
              "down:./2f+c up:./2f+c");
    EXPECT_EQ(after({pressed(SDL_SCANCODE_V, SDLK_v, KMOD_LGUI), text("v")}), "down:v/09+c");
    EXPECT_EQ(after({text("v")}), "");
}

TEST_F(KeyboardTest, CommandPeriodWhereThePeriodNeedsShift)
{
    EXPECT_EQ(after({pressed(SDL_SCANCODE_COMMA, SDLK_SEMICOLON, KMOD_LCTRL | KMOD_LSHIFT), text(".")}),
              "down:./2b+cs");
}

TEST_F(KeyboardTest, CommandOnTheKeypad)
{
    EXPECT_EQ(tapped(SDL_SCANCODE_KP_PERIOD, SDLK_KP_PERIOD, KMOD_LCTRL), "down:./41+c up:./41+c");
    EXPECT_EQ(tapped(SDL_SCANCODE_KP_0, SDLK_KP_0, KMOD_LCTRL), "down:0/52+c up:0/52+c");
    EXPECT_EQ(tapped(SDL_SCANCODE_KP_PLUS, SDLK_KP_PLUS, KMOD_LCTRL), "down:+/45+c up:+/45+c");
}

TEST_F(KeyboardTest, CommandReturnIsStillReturn)
{
    EXPECT_EQ(tapped(SDL_SCANCODE_RETURN, SDLK_RETURN, KMOD_LCTRL), "down:#0d/24+c up:#0d/24+c");
}

TEST_F(KeyboardTest, TextAfterCommandIsLetGoIsTyped)
{
    after({pressed(SDL_SCANCODE_V, SDLK_v, KMOD_LCTRL), released(SDL_SCANCODE_V, SDLK_v, KMOD_LCTRL),
           released(SDL_SCANCODE_LCTRL, SDLK_LCTRL, 0)});
    EXPECT_EQ(after({pressed(SDL_SCANCODE_V, SDLK_v), text("v")}), "down:v/09");
}

// No two letters or digits share a key.
TEST(KeyTableTest, CodesTellTheKeysApart)
{
    std::vector<std::uint8_t> codes;
    for (int place = SDL_SCANCODE_A; place <= SDL_SCANCODE_BACKSLASH; ++place)
        codes.push_back(toolbox::desktop::keyCodeOf(static_cast<SDL_Scancode>(place)));
    std::sort(codes.begin(), codes.end());
    EXPECT_EQ(std::adjacent_find(codes.begin(), codes.end()), codes.end());
}

}  // namespace
