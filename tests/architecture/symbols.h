// What the objects define and what they need from elsewhere.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "architecture/tree.h"

namespace architecture {

struct Symbols {
    std::map<std::string, std::set<std::string>> homes;   // of a symbol: the sources that define it
    std::map<std::string, std::set<std::string>> wanted;  // by a source: the symbols it leaves open
    std::vector<std::string> missing;                     // sources whose objects are not there
};

// Reads the objects of these files with the program `nm`. A definition that may
// be in several objects, such as an inline function's, does not make a home.
Symbols readSymbols(const std::string &nm, const std::vector<Compiled> &compiled);

// The name as it is in the source, without its arguments and without what the
// compiler adds where it returns a std::string.
std::string readable(const std::string &symbol);

}  // namespace architecture
