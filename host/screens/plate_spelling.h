// One plate's screen in one word of the command line.
#pragma once

#include <string>

#include "screens/plate_screen.h"

namespace riders::screens {

// NAME:LPI@ANGLE,SHAPE, of which any part after the name may be left out (Cyan:133, Cyan:@15, Cyan:,Round), or
// NAME:spot-LPI-ANGLE-SHAPE. A number may have a decimal comma: one between two digits is one, if the digits after
// it end where the number may (Cyan:133,5@22,5,Round); a shape that begins with a digit comes after a blank, or as
// ./5. The name ends at the first colon that is not doubled; a doubled one is a colon in it. Throws io::Refusal,
// which says what was expected.
PlateScreen plateFromText(const std::string &text);
// The first form, which plateFromText turns into the same again, up to the fifth decimal.
std::string textFromPlate(const PlateScreen &screen);
// As it is said to people: "Cyan 133 lpi at 15°, Round".
std::string plateInWords(const PlateScreen &screen);

}  // namespace riders::screens
