// Keys typed into a text, with their modifiers. Private to the Toolbox.
#pragma once

#include <cstdint>

#include "toolbox/textedit.h"

namespace toolbox::textedit {

// Whether the key moves the caret: an arrow, Home or End. Such a key moves with
// Command too.
bool movesCaret(int character);
// Whether TextEdit has a use for the character at all.
bool isTyped(int character);

// Types, deletes or moves. Moving: Shift extends the selection; Option moves by
// words; Command moves to the ends of the line or, up and down, of the text;
// Home and End are the line's ends, with Command the text's.
void typeKey(TEHandle text, int character, std::uint16_t modifiers);

}  // namespace toolbox::textedit
