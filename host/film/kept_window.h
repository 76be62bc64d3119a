// The part of a film on which its screen is measured, kept while the rows go by.
#pragma once

#include <cstddef>
#include <cstdint>

#include "plates/files/plate.h"
#include "plates/measuring/measured_screen.h"
#include "plates/measuring/place.h"
#include "screening/tile.h"

namespace riders::film {

class KeptWindow {
public:
    // `place`: on the page as it lies on the film; an empty one keeps nothing. The page's first pixel is pixel
    // (left, top) of the film, which has so many columns and rows.
    KeptWindow(const plates::Place &place, const screening::Resolution &resolution, std::size_t left,
               std::size_t top, std::size_t columns, std::size_t rows);

    // The film's row y; each once.
    void take(std::size_t y, const std::uint8_t *bits);
    // In the middle, once all rows have gone by. Angles count on the film. `shape` is the one expected: the result
    // when the dots are like it, another when they are like that one; no shape is looked for where it is empty.
    plates::MeasuredScreen measure(double aboutFrequency, const std::string &shape) const;
    // What was kept, upright, as the place was before `turned`, in square pixels of the higher resolution.
    plates::BitPlate upright(int rotation) const;

private:
    plates::BitPlate inSquarePixels() const;

    const screening::Resolution resolution_;
    std::size_t firstByte_ = 0, left_ = 0, top_ = 0;
    plates::BitPlate bits_;
};

// Where a place of a page of that size (inches) lies once the page is turned anticlockwise by 0, 90, 180 or 270
// degrees.
plates::Place turned(const plates::Place &place, int rotation, double width, double height);

}  // namespace riders::film
