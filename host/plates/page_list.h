// The pages a user asks for, as in 1,3-5.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace riders::plates {

inline constexpr int kMostPages = 100000;

// The pages in ascending order, each once; an empty text is an empty list. Throws
// Refusal for a text that is not such a list, a range that runs backwards, a page
// below 1 or above kMostPages.
std::vector<int> pagesFromText(const std::string &text);

// The shortest text for the pages: 1,3-5.
std::string textFromPages(const std::vector<int> &pages);

}  // namespace riders::plates
