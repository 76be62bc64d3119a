// Threshold tables kept in the user's cache folder, $XDG_CACHE_HOME/riders/screens or ~/.cache/riders/screens.
//
// A table is a file, named by a sum of its key, which it holds as well. What is missing, damaged or another's
// counts as not kept, and what cannot be kept is not: neither is an error. Several processes may keep and read at
// once.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "screening/thresholds.h"

namespace riders::tables {

// Files in the folder are removed, those not used for longest first, until they have no more bytes than this.
inline constexpr std::uintmax_t kMostKept = 64 << 20;

// Everything that counts for the dots is in the key. Does not throw but for memory.
std::optional<screening::Thresholds> keptTable(const std::string &key);
void keepTable(const std::string &key, const screening::Thresholds &thresholds);

}  // namespace riders::tables
