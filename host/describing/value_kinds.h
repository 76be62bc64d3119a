// What can stand for the value of an option or operand, for shells that complete it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "describing/command_words.h"

namespace riders::describing {

struct Candidate {
    std::string word;
    std::string about;  // one line, or empty
};

// Words that are known only when they are asked for: dot shapes, sets, queues and so on.
struct KnownWords {
    std::string of;  // what they are, as valueKindOf calls it
    std::function<std::vector<Candidate>()> list;
};

struct ValueKind {
    std::string of;                    // which words are known, or empty
    bool files = false;                // a file may stand there
    bool folders = false;              // a folder, but no file
    std::vector<std::string> endings;  // of the files that fit, without the dot; empty where all do
};

// By its name, or by the word that stands for its value. What only the user can know has no words and no files.
ValueKind valueKindOf(const OptionWords &option);

}  // namespace riders::describing
