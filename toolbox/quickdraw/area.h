// A set of pixels as disjoint rectangles: pixman's region with ordinary value
// behaviour. Private to the Toolbox.
#pragma once

#include <pixman.h>

#include <span>
#include <utility>
#include <vector>

#include "toolbox/types.h"

namespace toolbox::quickdraw {

using Box = pixman_box32_t;

class Area {  // NOLINT(cppcoreguidelines-special-member-functions): one assignment copies and moves
public:
    Area() { pixman_region32_init(&region_); }
    explicit Area(const Rect &r);
    // Boxes may overlap and come in any order.
    explicit Area(const std::vector<Box> &boxes);
    Area(const Area &other);
    Area(Area &&other) noexcept;
    Area &operator=(Area other) noexcept;
    ~Area() { pixman_region32_fini(&region_); }

    Area operator&(const Area &other) const;
    Area operator|(const Area &other) const;
    Area operator-(const Area &other) const;
    Area operator^(const Area &other) const { return (*this - other) | (other - *this); }
    bool operator==(const Area &other) const;
    Area movedBy(int dh, int dv) const;
    // Each pixel becomes factor by factor pixels.
    Area scaledBy(int factor) const;

    bool empty() const;
    bool contains(int h, int v) const;
    bool touches(const Rect &r) const;
    Rect bounds() const;   // all zero when empty; limited to the range of coordinates
    Box extent() const;    // the same, not limited
    // Disjoint, top to bottom and left to right.
    std::span<const Box> boxes() const;
    const pixman_region32_t *pixman() const { return &region_; }

private:
    // pixman does not change what it reads, but its declarations do not say so.
    pixman_region32_t *get() const { return const_cast<pixman_region32_t *>(&region_); }
    pixman_region32_t region_;
};

// Whether the right or bottom edge is not beyond the left or top one.
bool emptyRect(const Rect &r);

}  // namespace toolbox::quickdraw
