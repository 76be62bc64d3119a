// Upper and lower case in Mac OS Roman. Private to the Toolbox.
#pragma once

#include <string>
#include <string_view>

namespace toolbox {

// Of a capital its small letter, accented ones too; any other byte itself.
char smallLetter(char roman);
// Equal where two texts are the same but for upper and lower case.
std::string foldedCase(std::string_view roman);

}  // namespace toolbox
