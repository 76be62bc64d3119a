// Who points at whom, and the circles in it.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace architecture {

using Graph = std::map<std::string, std::set<std::string>>;

// One circle for each set of nodes that reach each other: the shortest, as a
// path whose last node is its first. A node that points at itself is not one.
std::vector<std::vector<std::string>> circles(const Graph &graph);

}  // namespace architecture
