// What can come next on a command line, for shells.
#pragma once

#include <string>
#include <vector>

#include "describing/command_words.h"
#include "describing/value_kinds.h"

namespace riders::describing {

struct Completion {
    std::vector<Candidate> candidates;  // those that begin with what is there of the word
    ValueKind kind;                     // whether a file or folder can stand there, too
};

// `typed` are the words after the program's name, up to the one to be completed, which is the last and may be
// empty. What is wrong in the words before it does no harm.
Completion complete(const CommandWords &program, const std::vector<std::string> &typed,
                    const std::vector<KnownWords> &known);

// For the shells' own scripts (install/completions): a line for each candidate, with a tab between word and
// explanation; then a line ":none", ":folders", or ":files" and the endings that fit.
std::string completionLines(const Completion &completion);

}  // namespace riders::describing
