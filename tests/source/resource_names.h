// The numbers in the plug-in's headers and in the resource sources, read as text.
#pragma once

#include <set>
#include <string>
#include <vector>

struct NamedNumber {
    std::string type;  // resource type; empty for a reason
    int number;
    std::string name;   // in a header; empty in a resource source
    std::string place;  // file and line
};

// What source/resourceNumbers.h and source/dotShapes.h name.
std::vector<NamedNumber> namedResources();
// What the sources of the plug-in's own fork define, except for what only other
// resources refer to: dialog items, pictures, the version.
std::vector<NamedNumber> definedResources();
// What source/reasons.h and source/dotShapes.h name, without the names that are
// defined as other names.
std::vector<NamedNumber> namedReasons();

// For each number that stands twice, a sentence saying where, and which is free.
std::vector<std::string> numbersTaken(const std::vector<NamedNumber> &numbers);
