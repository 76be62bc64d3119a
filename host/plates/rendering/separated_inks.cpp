#include "plates/rendering/separated_inks.h"

#include <initializer_list>
#include <string_view>

#include "io/hex_string.h"

namespace riders::plates {

// inks_begin.ps, process_inks.ps, spot_as_black.ps and inks_end.ps: parts of one program, which opens a
// dictionary in the first and closes it in the last but one.
extern const std::string_view kInksBegin, kProcessInks, kSpotAsBlack, kInksEnd;

namespace {

// With an empty line before each.
std::string joined(std::initializer_list<std::string_view> parts)
{
    std::string text;
    for (std::string_view part : parts)
        (text += '\n') += part;
    return text;
}

}  // namespace

std::string processInksOnly()
{
    return joined({kInksBegin, kProcessInks, kInksEnd});
}

std::string spotInkAsBlack(const std::string &ink)
{
    const std::string spot = "/spot " + io::hexString(ink) + " cvn def\n";
    return joined({kInksBegin}) + spot + joined({kSpotAsBlack, kInksEnd});
}

}  // namespace riders::plates
