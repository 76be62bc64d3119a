// What is drawn on a film in solid black, at exact pixels, a row at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace riders::film {

// Of whole pixels; right and bottom are the first that are outside.
struct PixelBox {
    std::int64_t left = 0, top = 0, right = 0, bottom = 0;

    std::int64_t width() const { return right - left; }
    std::int64_t height() const { return bottom - top; }
    PixelBox moved(std::int64_t right, std::int64_t down) const;
    PixelBox grown(std::int64_t across, std::int64_t down) const;  // on each side
    PixelBox with(const PixelBox &other) const;                    // the smallest box that holds both
};

// A picture in dots: a row is (columns + 7) / 8 bytes, the leftmost pixel in the highest bit.
struct BitPicture {
    std::size_t columns = 0, rows = 0;
    std::vector<std::uint8_t> bits;

    std::size_t rowBytes() const { return (columns + 7) / 8; }
};

class Drawing {
public:
    void rectangle(const PixelBox &box) { boxes_.push_back(box); }
    // A circle, or an ellipse where the box is no square; its line lies inside the box and is as thick as said.
    void ring(const PixelBox &box, std::int64_t across, std::int64_t down);
    void picture(std::int64_t left, std::int64_t top, BitPicture picture);

    // Moves all that has been drawn so far.
    void move(std::int64_t right, std::int64_t down);
    // The smallest box that holds all of it and the one given.
    PixelBox boundsWith(PixelBox box) const;
    // Sets the bits of row y that are black and lie in 0 to columns - 1. From several threads at once, if wanted.
    void draw(std::int64_t y, std::uint8_t *bits, std::size_t columns) const;

private:
    struct Ring {
        PixelBox outer, inner;
    };
    struct Placed {
        PixelBox box;
        BitPicture picture;
    };
    std::vector<PixelBox> boxes_;
    std::vector<Ring> rings_;
    std::vector<Placed> pictures_;
};

}  // namespace riders::film
