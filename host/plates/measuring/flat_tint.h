// The tints of a plate, and where one is flat enough to measure a screen on.
#pragma once

#include <cstdint>
#include <vector>

#include "plates/files/plate.h"
#include "plates/measuring/place.h"

namespace riders::plates {

struct TintRange {
    bool solid = false;          // there is full ink
    bool tint = false;           // there is ink that is not full
    double least = 0, most = 0;  // of those tints, 0 to 1; tints of less than a square millimetre do not count
};
TintRange tintRange(const TintPlate &plate, double dpi);

// The best flat tint of a plate to measure a screen on: large, and not too light or dark. The rows are looked at
// as they go by, a hundred to the inch.
class FlatTint {
public:
    FlatTint(int columns, double dpi);

    // From the top down.
    void row(const std::uint8_t *tints);
    // 1.5 inches a side at most, which is exact enough here, and a little away from the tint's edges. Empty where
    // no tint is as large as a tenth of an inch.
    Place place() const;

private:
    struct Rectangle {
        int left = 0, top = 0, width = 0, height = 0;
    };

    int stretch(int first, int y);
    void judge(int first, int end, int y, int tint);
    void offer(const Rectangle &found, int tint);

    // Finds rectangles of one tint, each as large as possible: how far up each column keeps its tint, and for each
    // stretch of a row the rectangles that end there.
    const double dpi_;
    const int step_;  // pixels from one that is looked at to the next
    const int columns_;
    int y_ = 0;
    std::vector<int> up_;
    std::vector<std::uint8_t> row_;
    std::vector<Rectangle> open_;
    Rectangle best_;
    double score_ = 0;
};

// Of a whole plate.
Place flatTint(const TintPlate &plate, double dpi);

}  // namespace riders::plates
