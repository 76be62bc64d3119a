// Text in mdoc, the language of manual pages.
#pragma once

#include <string>
#include <vector>

#include "describing/command_words.h"

namespace riders::describing {

// Words that stand in running text: what mdoc would obey is taken as it is written, and a hyphen that begins a
// word stays one that can be typed.
std::string mdocWords(const std::string &plain);
// A description as lines of mdoc, each sentence on a line of its own, with a full stop at the end.
std::string mdocSentences(const std::string &about);
// The option or operand as the head of an item of a list, with what stands for its value.
std::string mdocItem(const OptionWords &option, bool operand);
// An option as it is used, for a synopsis.
std::string mdocUse(const OptionWords &option);

}  // namespace riders::describing
