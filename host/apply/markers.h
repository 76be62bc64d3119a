// The lines around a riders file in a job; docs/riders-file.md
// describes them for other programs.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace riders::apply {

// What the opening line says. From it the fragment is taken out byte for byte,
// whatever the fragment or the job contains.
struct Marker {
    size_t length = 0;           // of the fragment in bytes
    bool lineEndBefore = false;  // the job's line before the marker had no line end: one LF was added
    bool lineEndAfter = false;   // the fragment had no line end: one LF was added
    bool landscape = false;      // kLandscapeLine follows the opening line
    size_t padding = 0;          // bytes of paddingLines between the fragment and the closing line

    bool operator==(const Marker &) const = default;
};

// How every opening line begins, even a damaged one.
inline constexpr std::string_view kOpeningWord = "%RidersBegin:";
inline constexpr std::string_view kClosingLine = "%RidersEnd\n";
// Lets the fragment know that the pages are turned by a quarter to the left: an
// interpreter does not see the comment that says so, and most programs have
// turned the axes back by the time they put a sheet out.
inline constexpr std::string_view kLandscapeLine = "userdict /Zu3_RidersTurns 1 put\n";
// No opening line is longer, its line end included.
inline constexpr size_t kLongestOpening = 96;
inline constexpr size_t kMostPadding = size_t(128) << 10;

std::string openingLine(const Marker &marker);  // with its line end
// Takes the line with its line end; empty unless it is exactly what openingLine writes.
std::optional<Marker> parseOpening(std::string_view line);
// As many bytes of comment lines without words. They make all that is added as long as whole blocks of a file
// system, so that a job's other bytes can be shared instead of copied.
std::string paddingLines(size_t bytes);

}  // namespace riders::apply
