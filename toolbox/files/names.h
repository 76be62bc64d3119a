// Names: Mac OS Roman of up to 63 bytes on this side, UTF-8 on the other.
//
// A '/' in a Mac name is a ':' in Linux and vice versa. A Linux name that has no
// Mac form gets an alias, which is remembered while the Toolbox runs.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "toolbox/types.h"

namespace toolbox::files {

inline constexpr std::size_t longestName = 63;

// bdNamErr: empty, too long, with a ':' or NUL, a companion's name, or one of
// the two that every Linux folder has.
OSErr linuxNameOf(std::string_view macName, std::string &linuxName);

// Below 0, 0 or above 0, in the order people expect: case and accents matter only
// between names that are otherwise equal, and digits count as numbers.
int compareNames(std::string_view macName, std::string_view other);
// Bytes that compare as the names do, as far as these differ by more than case and accents.
std::string sortingKey(std::string_view macName);

enum class Match {
    literal,   // the name as it is, whether such a file exists or not
    spelling,  // else a file whose name differs only in how accents are encoded
    anyCase    // else a file whose name differs only in case
};
// The path the name stands for in the folder, aliases included. If nothing
// matches: the path of the literal name.
OSErr pathFor(const std::filesystem::path &folder, std::string_view macName, Match match,
              std::filesystem::path &path);

// The name by which pathFor finds the file.
std::string macNameFor(const std::filesystem::path &folder, const std::string &linuxName);

void forgetAliases();

}  // namespace toolbox::files
