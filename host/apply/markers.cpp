#include "apply/markers.h"

#include <charconv>

namespace riders::apply {

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
    return line + (marker.landscape ? ", landscape\n" : "\n");
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
    // The rest has only eight forms: write each and compare.
    for (int form = 0; form < 8; ++form) {
        marker.lineEndBefore = form & 1;
        marker.lineEndAfter = form & 2;
        marker.landscape = form & 4;
        if (openingLine(marker) == line)
            return marker;
    }
    return {};
}

}  // namespace riders::apply
