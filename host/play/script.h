// The text form of a scripted session: one step per line, words separated by
// blanks, texts in double quotes, # to the end of the line a comment.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace riders::play {

struct ScriptLine {
    int number;                      // from 1
    std::vector<std::string> words;  // the first is the verb; quotes removed
    std::vector<bool> quoted;        // which of them stood in quotes
};

// toolbox::ScriptError for an unclosed quote or an unknown escape.
std::vector<ScriptLine> splitScript(const std::string &text);

}  // namespace riders::play
