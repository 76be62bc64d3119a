// AppleDouble version 2: the file "._name" that carries what a plain file
// cannot, in numbered entries.
//
// Header of 26 bytes (magic, version, 16 of filler, entry count), a table of
// 12 bytes per entry (id, offset, length), then the entries' bytes. All numbers
// are big-endian. Nothing here touches files or needs a session.
// docs/riders-file.md says what riders keeps in such a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace toolbox::files {

inline constexpr std::uint32_t resourceForkEntry = 2;
inline constexpr std::uint32_t finderInfoEntry = 9;
inline constexpr std::size_t finderInfoBytes = 32;

struct AppleDouble {
    struct Entry {
        std::uint32_t id;
        std::string bytes;
        // Where it lay in the file it was read from; 0 for a new entry.
        std::uint32_t offset = 0;
    };

    std::string filler = std::string(16, '\0');
    std::vector<Entry> entries;  // in the order of the table

    // Nil if there is no such entry; the view below is then empty. Both are valid
    // until an entry is added or changed.
    const Entry *find(std::uint32_t id) const;
    std::string_view bytes(std::uint32_t id) const;
    // Adds an entry at the end, or replaces the bytes of the one that is there.
    void set(std::uint32_t id, std::string_view bytes);

    // The first 32 bytes of the entry, zeros where it has fewer. Some systems
    // keep attributes of their own after them, which setFinderInfo leaves alone.
    std::string finderInfo() const;
    void setFinderInfo(std::string_view info);
};

// A companion with blank Finder information and an empty fork: the usual two
// entries, at 50 and 82.
AppleDouble newAppleDouble();

// The entries are copies. Nothing if the bytes are not AppleDouble of version 2, name an entry
// twice, or place one outside the file, over another or over the header.
std::optional<AppleDouble> parseAppleDouble(std::string_view bytes);

// The file's bytes. The resource fork comes last, so that it can grow; the others stay at their
// offsets if those are still free, and are otherwise laid out afresh.
std::string composeAppleDouble(const AppleDouble &file);

}  // namespace toolbox::files
