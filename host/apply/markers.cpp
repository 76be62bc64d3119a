#include "apply/markers.h"

#include <algorithm>
#include <charconv>

namespace riders::apply {

namespace {

constexpr std::string_view kPaddedWord = ", padded: ";
constexpr size_t kPaddingLine = 128;  // with its line end; the comments of a job have fewer than 256 bytes

// 0 where it is not said.
size_t paddingIn(std::string_view line)
{
    size_t padding = 0;
    if (const size_t at = line.find(kPaddedWord); at != std::string_view::npos)
        std::from_chars(line.data() + at + kPaddedWord.size(), line.data() + line.size(), padding);
    return padding;
}

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
    line += marker.landscape ? ", landscape" : "";
    if (marker.padding > 0)
        line.append(kPaddedWord) += std::to_string(marker.padding);
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
    marker.padding = paddingIn(line);
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

std::string paddingLines(size_t bytes)
{
    std::string lines;
    for (size_t line; bytes > 0; bytes -= line) {
        line = std::min(bytes, kPaddingLine);
        lines += line > 1 ? "%" + std::string(line - 2, ' ') + "\n" : "\n";
    }
    return lines;
}

}  // namespace riders::apply
