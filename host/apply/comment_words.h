// The words of a DSC comment.
#pragma once

#include <string_view>

namespace riders::apply {

// True for "%%Word", "%%Word: ..." and "%%Word ...", not for "%%Words".
bool isComment(std::string_view text, std::string_view word);

// Takes the next word off the text; empty at its end.
std::string_view nextWord(std::string_view &text);

}  // namespace riders::apply
