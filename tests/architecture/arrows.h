// Who knows whom, file by file, and where it is written.
#pragma once

#include <string>
#include <vector>

#include "architecture/symbols.h"
#include "architecture/tree.h"

namespace architecture {

struct Arrow {
    std::string from, to;  // files
    int line = 0;
    std::string text;  // what it does, for a sentence
    std::string word;  // of a use, whose line is not known: the bare name
};

std::vector<Arrow> includeArrows(const Tree &tree);
// Uses of symbols that have one home. Where a symbol has several, for different
// programs, it is not known which is meant.
std::vector<Arrow> useArrows(const Tree &tree, const Symbols &symbols);
std::vector<Arrow> allArrows(const Tree &tree, const Symbols &symbols);

// `file:line`, or the file alone where the line is 0.
std::string at(const std::string &file, int line);
// Where an arrow starts. For a use, its first mention.
std::string place(const Tree &tree, const Arrow &arrow);
// A file with the header or source file of its name.
std::string unit(const std::string &file);

}  // namespace architecture
