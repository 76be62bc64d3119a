// What somebody probably meant who has mistyped a word.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace riders::io {

// The one of the words that is least far from what was typed, whatever the case of the letters: a letter too many,
// too few, another one, or two that changed places count as one mistake, and a third of the letters may be wrong.
// Empty where none is so near.
std::string nearest(std::string_view typed, const std::vector<std::string> &words);

// "; did you mean WORD?", or nothing.
std::string didYouMean(std::string_view typed, const std::vector<std::string> &words);

}  // namespace riders::io
