// Measures the halftone screen on a page of one bit per pixel: the dots that are
// there, whatever was asked for.
//
// How: a Fourier transform of a patch finds the screen's two waves; then every
// pixel of the window is laid over one cell, and the waves are turned and
// stretched (least squares, Gauss-Newton steps) until the dots of the
// whole window fall on each other. Ideal screens of 20 to 150 lines per inch at
// 600 to 2400 dpi, 4 pixels per cell and more, are read within 0.02 % of the
// frequency and 0.01 degrees in a window of 3 inches; a smaller window is less
// exact in proportion. Dots or gaps of less than two pixels can be taken for those
// of another screen.
//
// All calls may come from several threads at once. None throws except for memory, and a Refusal where FFTW is not
// installed; a page without a screen is a result, not an error.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "meter/bit_page.h"
#include "meter/spots.h"
#include "meter/wave.h"

namespace riders::meter {

enum class ScreenKind { none, dots, lines };

// A regular unevenness that is coarser than the screen itself.
struct Beat {
    double strength = 0;   // its amplitude divided by that of the screen's wave, 0 and up
    double frequency = 0;  // periods per inch
    double direction = 0;  // degrees of its wave, clockwise from the right, 0 to below 180
};

struct ScreenReading {
    ScreenKind kind = ScreenKind::none;
    PageWindow window;     // where it was measured; empty when there was no tint
    double frequency = 0;  // lines per inch
    // Degrees as setscreen takes them, which is clockwise on the upright sheet.
    // Dots: 0 to below 90, a quarter turn more looks the same (see likenessTo).
    // Lines: 0 to below 180, the direction in which they run, as for -|y|.
    double angle = 0;
    double ink = 0;         // 0 to 1, of the window
    double cellPixels = 0;  // pixels along a cell's side
    // Share of the window's light and dark that one cell, repeated, explains:
    // near 1 for even screens, 0 for noise. Below 0.3 is called no screen.
    double evenness = 0;
    Beat beat;
    Wave waves[2];  // of the cell's x and y axis, x at the angle; lines: y across them
    // The average cell, cellSide rows of as many values from 0 to 1; its place
    // is arbitrary. Lines: cellSide rows alike within themselves.
    std::vector<float> cell;
    int cellSide = 0;
};

// Reads the screen of the window, or of the largest flat tint that has one.
// A page of A4 at 2400 dpi takes well under a second. kind is none where the
// window is smaller than about 4 cells, is white, solid, or has no screen.
ScreenReading readScreen(const BitPage &page, const std::optional<PageWindow> &window = {});

// How closely the dots of a reading resemble those of a spot function at the
// same ink, frequency and angle on the same pixels: the correlation, -1 to 1,
// the best of all positions of the cell and of its four quarter turns. Of pixels
// whose spot values are equal (within 0.002) any may be the inked ones.
struct Likeness {
    double correlation = -1;
    int quarterTurns = 0;  // 0 to 3, to add to the angle
};
Likeness likenessTo(const BitPage &page, const ScreenReading &reading, const SpotFunction &spot);

// The correlation with a named spot function; -1 where there is none of that name.
double likenessToNamed(const BitPage &page, const ScreenReading &reading, const std::string &spot);

// The one of namedSpots that is most like the reading's cell; empty for no
// screen. At low and high ink many look the same: then the first of them.
std::string nearestSpot(const BitPage &page, const ScreenReading &reading);

}  // namespace riders::meter
