// C++ text, as far as these tests need to understand it.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace architecture {

// Whether a character may be part of a name.
bool ofWord(char c);

// The text with comments made blank and, where asked for, what is between quotes
// too. Lines and columns stay as they are.
enum class Quotes { Kept, Blank };
std::string withoutComments(const std::string &text, Quotes quotes);

struct IncludeLine {
    int line = 0;
    std::string name;
    bool quoted = false;  // "name", not <name>
};
std::vector<IncludeLine> includeLines(const std::string &text);

// All names and numbers outside comments and quotes.
std::set<std::string> words(const std::string &text);

// The first line with this word, 0 where there is none.
int lineOfWord(const std::string &text, const std::string &word);

}  // namespace architecture
