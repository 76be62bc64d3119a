// What the pictures and films of a page are called.
#pragma once

#include <cstddef>
#include <set>
#include <string>

#include "looking/facts/page_facts.h"

namespace riders::looking {

inline constexpr std::size_t kMostPatternPictures = 4;

// "page-3", with which the names of a page's files begin.
std::string nameOf(const PageFacts &page);

// "pictures/page-3-pattern-1.png", of the page's pattern picture, and "pictures/page-3-all.png".
std::string patternPictureOf(const PageFacts &page, std::size_t number);
std::string rosetteOf(const PageFacts &page);

// "page-3-Cyan", free of what makes trouble in a file's name. `taken` holds the page's other plates' names, and
// from the beginning those of its other pictures.
std::string nameOf(const PageFacts &page, const std::string &plate, std::set<std::string> &taken);
std::set<std::string> namesOfOthers();

// "pictures/page-3-Cyan.png".
std::string pictureCalled(const std::string &name);

}  // namespace riders::looking
