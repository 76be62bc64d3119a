// The size of a film as people give it.
#pragma once

#include <string>

namespace riders::film {

struct SheetSize {
    double width = 0, height = 0;  // inches
    bool turns = false;            // lies as the page does: its name says nothing of how it is turned
    std::string name;              // as it was given
};

// "a3", "letter" and other names in any case, which turn as the page lies; "420x297mm", "12x18in", also in cm and
// pt, which lie as they are written. Throws Refusal for anything else and for a side under 1 inch or over 400.
SheetSize sheetSizeFrom(const std::string &text);

}  // namespace riders::film
