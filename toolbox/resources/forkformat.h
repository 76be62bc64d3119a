// A resource fork as bytes: reading what others wrote, writing what any reader
// accepts. Knows nothing of open files or the heap; the resource compiler uses
// it too. Private to the Toolbox and its tools.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "toolbox/types.h"

namespace toolbox::resources {

// One resource as the map tells of it. name and data are Mac OS Roman and raw
// bytes that belong to somebody else.
struct ForkEntry {
    ResType type = 0;
    std::int16_t id = 0;
    std::uint8_t attributes = 0;
    std::optional<std::string_view> name;
    std::string_view data;
};

// Finds the resources of a fork, in the order of its map; the views lie in
// bytes. eofErr: the fork is empty. mapReadErr: an offset or a length leads
// out of the place where it has to stay.
OSErr parseFork(std::string_view bytes, std::vector<ForkEntry> &entries);

// The fork that holds the entries: grouped by type in order of appearance,
// otherwise in their order. Names beyond 255 bytes are cut. Without entries it
// is a fork with an empty map. Nothing when they do not fit the format: data
// beginning at 16 MiB or later, or a map beyond what 16-bit offsets reach.
std::optional<std::string> forkBytes(const std::vector<ForkEntry> &entries);

}  // namespace toolbox::resources
