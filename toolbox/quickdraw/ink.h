// What a shape is filled with. Private to QuickDraw.
#pragma once

#include <cstdint>

#include "toolbox/quickdraw.h"

namespace toolbox::quickdraw {

// What happens to a destination pixel; each pattern mode is a pair of these,
// one for the pattern's black pixels and one for its white ones.
enum class Action { keep, fore, back, invert };

struct Ink {
    Pattern pattern;
    Point origin;      // the global point to which the pattern is anchored
    Action onBlack;
    Action onWhite;
    int32_t fore;      // colour constants
    int32_t back;

    static Ink of(const GrafPort &port, const Pattern &pattern, int16_t mode);
    static Ink pen(const GrafPort &port) { return of(port, port.pnPat, port.pnMode); }
    static Ink background(const GrafPort &port) { return of(port, port.bkPat, patCopy); }
    static Ink inverting(const GrafPort &port);
};

// What a display shows, 0x00RRGGBB, for a colour constant or a directColor; at
// one bit all constants but white are black, and so are numbers that are not
// colours.
std::uint32_t pixelOf(int32_t color, int depth);

}  // namespace toolbox::quickdraw
