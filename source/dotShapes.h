// The built-in dot shapes: the spot popup's items from the third on, in this
// order.
//
// To add one: its PostScript in resources/ps/, a line in pieces.res, its name
// in menus.res after the last shape, and a row here with free numbers. A menu that
// changes needs a new version in strings.res. Tests say what is missing or taken.
#pragma once

#include "source/reasons.h"
#include "source/resourceNumbers.h"

struct DotShape {
    int16_t piece;    // 'TEXT': the body of the spot function
    int16_t missing;  // the reason reported without it
};

inline constexpr DotShape kDotShapes[] = {
    {16128, kNoRoundDot},  // round
    {16129, 22},           // ellipse
    {16130, 23},           // line
    {16131, 24},           // square
    {16132, 25},           // diamond
    {16133, 26},           // cross
    {16134, 27},           // Euclidean
};

// Item 1 leaves the shape to the printer, item 2 is a divider.
inline constexpr int16_t kFirstShapeItem = 3;
inline constexpr int16_t kDotShapeCount = sizeof kDotShapes / sizeof kDotShapes[0];
