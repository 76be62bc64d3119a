// Keys, mainly those that print nothing, as an event's message gives them
// (toolbox/events.h): the character, and the code of the key itself. Usable
// without a session.
#pragma once

#include <cstdint>

// The low byte of a key event's message.
namespace toolbox::key {

inline constexpr std::uint8_t home = 0x01;
inline constexpr std::uint8_t enter = 0x03;   // on the number pad
inline constexpr std::uint8_t end = 0x04;
inline constexpr std::uint8_t help = 0x05;
inline constexpr std::uint8_t backspace = 0x08;
inline constexpr std::uint8_t tab = 0x09;
inline constexpr std::uint8_t pageUp = 0x0B;
inline constexpr std::uint8_t pageDown = 0x0C;
inline constexpr std::uint8_t carriageReturn = 0x0D;
inline constexpr std::uint8_t function = 0x10;   // any of F1 to F15: the code says which
inline constexpr std::uint8_t escape = 0x1B;     // Clear on the number pad, too
inline constexpr std::uint8_t leftArrow = 0x1C;
inline constexpr std::uint8_t rightArrow = 0x1D;
inline constexpr std::uint8_t upArrow = 0x1E;
inline constexpr std::uint8_t downArrow = 0x1F;
inline constexpr std::uint8_t forwardDelete = 0x7F;

}  // namespace toolbox::key

// The next byte up: which key of the keyboard it was, whatever it typed.
namespace toolbox::keycode {

inline constexpr std::uint8_t carriageReturn = 0x24;
inline constexpr std::uint8_t period = 0x2F;
inline constexpr std::uint8_t tab = 0x30;
inline constexpr std::uint8_t space = 0x31;
inline constexpr std::uint8_t backspace = 0x33;
inline constexpr std::uint8_t escape = 0x35;
inline constexpr std::uint8_t enter = 0x4C;
inline constexpr std::uint8_t help = 0x72;   // Insert
inline constexpr std::uint8_t home = 0x73;
inline constexpr std::uint8_t pageUp = 0x74;
inline constexpr std::uint8_t forwardDelete = 0x75;
inline constexpr std::uint8_t end = 0x77;
inline constexpr std::uint8_t pageDown = 0x79;
inline constexpr std::uint8_t leftArrow = 0x7B;
inline constexpr std::uint8_t rightArrow = 0x7C;
inline constexpr std::uint8_t downArrow = 0x7D;
inline constexpr std::uint8_t upArrow = 0x7E;

}  // namespace toolbox::keycode
