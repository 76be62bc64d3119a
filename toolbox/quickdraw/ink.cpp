#include "quickdraw/ink.h"

#include <algorithm>
#include <iterator>

#include "quickdraw/palette.h"
#include "quickdraw/port.h"

namespace toolbox::quickdraw {

static constexpr Pattern solid = {{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};

Ink Ink::of(const GrafPort &port, const Pattern &pattern, int16_t mode)
{
    const Rect &bounds = port.portBits.bounds;
    Ink ink{pattern, {bounds.top, bounds.left}, Action::fore, Action::back, port.fgColor, port.bkColor};
    switch (mode & ~8) {  // the pattern modes are the source modes plus 8
    case srcOr:
        ink.onWhite = Action::keep;
        break;
    case srcXor:
        ink.onBlack = Action::invert;
        ink.onWhite = Action::keep;
        break;
    case srcBic:
        ink.onBlack = Action::back;
        ink.onWhite = Action::keep;
        break;
    default:
        break;
    }
    return ink;
}

Ink Ink::inverting(const GrafPort &port)
{
    return of(port, solid, patXor);
}

namespace {

struct NamedColor {
    int32_t color;
    std::uint32_t rgb;
};

// The high bytes of the 16-bit components.
constexpr NamedColor namedColors[] = {
    {blackColor, 0x000000}, {whiteColor, 0xFFFFFF}, {redColor, 0xDD0806},     {greenColor, 0x008011},
    {blueColor, 0x0000D4},  {cyanColor, 0x02ABEA},  {magentaColor, 0xF20884}, {yellowColor, 0xFCF305},
};

}  // namespace

std::uint32_t pixelOf(int32_t color, int depth)
{
    if (color & directColorFlag)
        return shownColor(static_cast<std::uint32_t>(color & 0xFFFFFF), depth);
    const auto *named = std::find_if(std::begin(namedColors), std::end(namedColors),
                                     [&](const NamedColor &each) { return each.color == color; });
    if (named == std::end(namedColors) || (depth == 1 && color != whiteColor))
        return 0x000000;
    return shownColor(named->rgb, depth);
}

}  // namespace toolbox::quickdraw
