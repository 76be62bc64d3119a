#include "textedit/selecting.h"

#include <algorithm>
#include <cctype>

#include "textedit/record.h"

namespace toolbox::textedit {
namespace {

// The latest selection of which it is known which end moves.
struct Latest {
    TEHandle text = nullptr;
    Extent extent{};
};
Latest latest;

bool isWordCharacter(const std::string &characters, int offset)
{
    auto c = static_cast<unsigned char>(characters[static_cast<std::size_t>(offset)]);
    return c >= 0x80 || isalnum(c) || c == '\'';
}

}  // namespace

Extent extentOf(TEHandle text, int direction)
{
    const int start = (**text).selStart, end = (**text).selEnd;
    const auto [low, high] = std::minmax(latest.extent.anchor, latest.extent.moving);
    if (latest.text == text && low == start && high == end)
        return latest.extent;
    return direction < 0 ? Extent{end, start} : Extent{start, end};
}

void selectTo(TEHandle text, int anchor, int moving)
{
    latest = {text, {anchor, moving}};
    select(text, std::min(anchor, moving), std::max(anchor, moving), moving);
}

void forgetExtent()
{
    latest = {};
}

WordRange wordAt(const std::string &characters, int offset)
{
    const int length = static_cast<int>(characters.size());
    int start = std::min(offset, length), end = start;
    while (start > 0 && isWordCharacter(characters, start - 1))
        --start;
    while (end < length && isWordCharacter(characters, end))
        ++end;
    return {start, end};
}

int wordBefore(const std::string &characters, int offset)
{
    while (offset > 0 && !isWordCharacter(characters, offset - 1))
        --offset;
    while (offset > 0 && isWordCharacter(characters, offset - 1))
        --offset;
    return offset;
}

int wordAfter(const std::string &characters, int offset)
{
    const int length = static_cast<int>(characters.size());
    while (offset < length && !isWordCharacter(characters, offset))
        ++offset;
    while (offset < length && isWordCharacter(characters, offset))
        ++offset;
    return offset;
}

}  // namespace toolbox::textedit
