// Pages to measure, painted pixel by pixel from a spot function: slow and plain.
#pragma once

#include <cstdint>
#include <vector>

#include "meter/meter.h"

struct IdealScreen {
    double frequency, angle, ink, dpi;
    double (*spot)(double x, double y) = nullptr;  // round if not given
};

// A white page that holds its bits.
class PaintedPage {
public:
    PaintedPage(int width, int height, double dpi);

    const riders::meter::BitPage &page() const { return page_; }
    void set(int x, int y, bool ink);
    // Screens a rectangle: a pixel is inked where the spot function at its
    // middle is among the highest values that make up the ink.
    void tint(const riders::meter::PageWindow &where, const IdealScreen &screen);
    void tint(const IdealScreen &screen) { tint({0, 0, page_.width, page_.height}, screen); }
    // Fills a rectangle with ink.
    void fill(const riders::meter::PageWindow &where);

private:
    std::vector<std::uint8_t> bits_;
    riders::meter::BitPage page_;
};
