#include "emitters.h"
#include "toolbox/host/big_bytes.h"

namespace rescomp {

using namespace toolbox;

void readCorner(Cursor &source, Area &area)
{
    area.left = source.number(INT16_MIN, INT16_MAX, "a left edge");
    area.top = source.number(INT16_MIN, INT16_MAX, "a top edge");
}

void readSize(Cursor &source, Area &area, std::int64_t least)
{
    area.width = source.number(least, INT16_MAX, "a width");
    area.height = source.number(least, INT16_MAX, "a height");
}

std::string rectBytes(const Cursor &source, const Area &area)
{
    if (area.left + area.width > INT16_MAX || area.top + area.height > INT16_MAX)
        source.wrongBefore("the right or bottom edge is beyond 32767");
    std::string bytes;
    for (std::int64_t edge : {area.top, area.left, area.top + area.height, area.left + area.width})
        appendWord(bytes, static_cast<std::uint16_t>(edge));
    return bytes;
}

}  // namespace rescomp
