// The types that a C++ text defines.
#pragma once

#include <string>
#include <vector>

namespace architecture {

// A class, struct, union or enum with its body, in a namespace or in another
// class. What is in a namespace without a name, or in a function, is left out.
struct TypeDefinition {
    int line = 0;
    std::string name;  // with its namespaces and classes
};
std::vector<TypeDefinition> typeDefinitions(const std::string &text);

}  // namespace architecture
