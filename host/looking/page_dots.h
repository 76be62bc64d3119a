// The dots of a page's plates, whoever made them.
#pragma once

#include <cstddef>

#include "plates/files/plate.h"
#include "plates/measuring/place.h"

namespace riders::looking {

// Upright and in square pixels, as many an inch as the page's facts say.
class PageDots {
public:
    struct Part {
        const plates::BitPlate *bits = nullptr;
        plates::Place place;  // of what was asked for, in inches on the bits
    };

    PageDots() = default;
    virtual ~PageDots() = default;
    PageDots(const PageDots &) = delete;
    PageDots &operator=(const PageDots &) = delete;

    // Of a plate, by its place among the page's. From any thread. For a page's loupe, a plate's own and the places
    // of patterns.
    virtual Part at(std::size_t plate, const plates::Place &place) const = 0;
};

}  // namespace riders::looking
