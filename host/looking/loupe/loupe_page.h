// The page that zooms from the sheet to the single dot.
#pragma once

#include <filesystem>
#include <string>

#include "looking/facts/page_facts.h"

namespace riders::looking {

// Where the tiles and the other page are, as URLs.
struct LoupeLinks {
    std::string tiles;  // the folder of all sets, with its slash
    std::string back;   // the page with what was measured
};

// Of the pages whose plates have tiles. It holds all it needs but the tiles, which it loads as they are looked at.
std::string loupeOf(const LookFacts &facts, const LoupeLinks &links);
// Throws Refusal.
void writeLoupe(const std::filesystem::path &file, const LookFacts &facts, const LoupeLinks &links);

// What of a set the page says where its folder is.
std::string folderInLoupe(const std::string &folder);

}  // namespace riders::looking
