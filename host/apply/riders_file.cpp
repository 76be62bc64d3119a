#include "apply/riders_file.h"

#include <algorithm>
#include <iterator>

namespace riders::apply {

namespace {

// What the last line but one is in files that were made before there was such a line; the last is kEarlierLast.
constexpr std::string_view kEarlierEnds[] = {"/setglobal riderHas {riderGlobal setglobal} if",
                                             "systemdict /setglobal known {riderGlobal setglobal} if",
                                             "  {riderSetScreen} if"};
constexpr std::string_view kEarlierLast = "end end";

// Takes that line off the end. Programs that keep texts may have changed the line ends or left blanks.
bool takeLastLine(std::string_view &bytes, std::string_view line)
{
    std::string_view rest = bytes.substr(0, bytes.find_last_not_of(" \t\r\n") + 1);
    if (!rest.ends_with(line))
        return false;
    rest.remove_suffix(line.size());
    if (!rest.ends_with('\n') && !rest.ends_with('\r'))
        return false;
    bytes = rest;
    return true;
}

}  // namespace

bool isRidersFile(std::string_view bytes)
{
    return bytes.size() >= kMagicWithin &&
           bytes.substr(0, kMagicWithin).find(kRidersMagic) != std::string_view::npos;
}

bool isWholeRiders(std::string_view riders)
{
    if (takeLastLine(riders, kRidersLastLine))
        return true;
    return takeLastLine(riders, kEarlierLast) &&
           std::any_of(std::begin(kEarlierEnds), std::end(kEarlierEnds),
                       [&](std::string_view end) { return takeLastLine(riders, end); });
}

bool isRidersAlone(std::string_view bytes)
{
    if (!isRidersFile(bytes))
        return false;
    const size_t last = bytes.find(kRidersLastLine);
    return last == std::string_view::npos ||
           bytes.find_first_not_of(" \t\r\n", last + kRidersLastLine.size()) == std::string_view::npos;
}

}  // namespace riders::apply
