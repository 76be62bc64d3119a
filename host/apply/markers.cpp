#include "apply/markers.h"

#include <charconv>

namespace riders {

namespace {

std::string_view addedWords(const Marker &marker)
{
    if (marker.lineEndBefore)
        return marker.lineEndAfter ? "both" : "before";
    return marker.lineEndAfter ? "after" : "none";
}

}  // namespace

std::string openingLine(const Marker &marker)
{
    std::string line(kOpeningWord);
    line += " " + std::to_string(marker.length) + " bytes, line ends added: ";
    line += addedWords(marker);
    return line + "\n";
}

std::optional<Marker> parseOpening(std::string_view line)
{
    if (!line.starts_with(kOpeningWord) || line.size() > kLongestOpening)
        return {};
    const char *digits = line.data() + kOpeningWord.size() + 1;
    const char *end = line.data() + line.size();
    Marker marker;
    if (digits >= end || std::from_chars(digits, end, marker.length).ec != std::errc())
        return {};
    // The rest has four forms only: write each and compare.
    for (bool before : {false, true})
        for (bool after : {false, true}) {
            marker.lineEndBefore = before;
            marker.lineEndAfter = after;
            if (openingLine(marker) == line)
                return marker;
        }
    return {};
}

}  // namespace riders
