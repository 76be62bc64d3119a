// How a picture differs from the one that is kept for the same moment.
#pragma once

#include <string>

#include "toolbox/host/machine.h"

struct PictureDifference {
    int pixels = 0;   // how many differ, including those that only one picture has
    // The first one, rows from the top; what only one picture has comes last.
    int h = 0, v = 0;
    std::uint32_t expected = 0, actual = 0;
    // No size for a picture that could not be read.
    int expectedWidth = 0, expectedHeight = 0, actualWidth = 0, actualHeight = 0;

    bool sameSize() const { return expectedWidth == actualWidth && expectedHeight == actualHeight; }
    bool same() const { return sameSize() && pixels == 0; }
    // "12 of 400 pixels differ, the first at 3,4: kept 0xFFFFFF, now 0x000000".
    std::string text() const;
};

PictureDifference comparison(const toolbox::Picture &expected, const toolbox::Picture &actual);
// Large enough for both: red where they differ, elsewhere a pale copy.
toolbox::Picture differencePicture(const toolbox::Picture &expected, const toolbox::Picture &actual);
