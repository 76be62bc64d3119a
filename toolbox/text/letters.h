// Upper and lower case in Mac OS Roman. Private to the Toolbox.
#pragma once

#include <string>
#include <string_view>

namespace toolbox {

// The small letter of a capital, accented ones too; any other byte unchanged.
char smallLetter(char roman);
// Equal for two texts that differ only in upper and lower case.
std::string foldedCase(std::string_view roman);

}  // namespace toolbox
