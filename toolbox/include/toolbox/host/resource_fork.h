// A resource fork as bytes: reading what others wrote, writing what any reader
// accepts. Knows nothing of open files or the heap, and needs no session: the
// resource compiler uses it too. docs/riders-file.md says what riders keeps in one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "toolbox/types.h"

namespace toolbox::resources {

// One resource as the map describes it: attributes are resLocked and the others of
// toolbox/resources.h. The name is Mac OS Roman. Both views are of bytes that the
// caller keeps.
struct ForkEntry {
    ResType type = 0;
    std::int16_t id = 0;
    std::uint8_t attributes = 0;
    std::optional<std::string_view> name;
    std::string_view data;
};

// Fills entries with the resources of a fork, in the order of its map; the views
// are of bytes, which must outlive them. noErr, or, with no entries: eofErr, the
// fork is empty; mapReadErr, an offset or a length leads outside the part of the
// fork that it must stay in.
OSErr parseFork(std::string_view bytes, std::vector<ForkEntry> &entries);

// The fork that holds the entries: grouped by type in order of appearance,
// otherwise in their order. Names beyond 255 bytes are cut. Without entries it
// is a fork with an empty map. Nothing if they do not fit the format: data that
// would begin at 16 MiB or later, or a map beyond what 16-bit offsets reach.
std::optional<std::string> forkBytes(const std::vector<ForkEntry> &entries);

}  // namespace toolbox::resources
