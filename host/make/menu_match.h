// Finding what a user named on the command line among the items of a menu.
#pragma once

#include <string>
#include <vector>

namespace riders::make {

// The number (from 1) of the item that means the value: the same number with or
// without a unit after it ("85.0" is "85 lpi"). 0 when there is none.
int itemWithValue(const std::vector<std::string> &items, const std::string &value);
// Whether the item stands for a value: neither a divider nor one that opens a dialog.
bool isValue(const std::string &item);
// The number of the value with that text, ignoring case; 0 when there is none.
int itemWithName(const std::vector<std::string> &items, const std::string &name);

}  // namespace riders::make
