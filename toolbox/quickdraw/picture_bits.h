// The pixel images inside a 'PICT'. Private to QuickDraw.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "toolbox/host/machine.h"
#include "toolbox/types.h"

namespace toolbox::quickdraw {

// Thrown where a picture's bytes make no sense.
struct DamagedPicture {};

// A picture's bytes from front to back; reading beyond the end throws.
class PictureBytes {
public:
    explicit PictureBytes(std::string_view bytes) : bytes_(bytes) {}

    std::size_t position() const { return at_; }
    std::string_view take(std::size_t count)
    {
        if (count > bytes_.size() - at_)
            throw DamagedPicture{};
        at_ += count;
        return bytes_.substr(at_ - count, count);
    }
    void skip(std::size_t count) { take(count); }
    void toEven()
    {
        if (at_ % 2)
            skip(1);
    }
    unsigned byte() { return static_cast<unsigned char>(take(1)[0]); }
    int16_t offset() { return static_cast<signed char>(byte()); }
    unsigned word()
    {
        unsigned high = byte();
        return high << 8 | byte();
    }
    int16_t number() { return static_cast<int16_t>(word()); }
    std::uint32_t longWord()
    {
        std::uint32_t high = word();
        return high << 16 | word();
    }
    Point point()
    {
        int16_t v = number();
        return {v, number()};
    }
    Rect rect()
    {
        Point first = point(), last = point();
        return {first.v, first.h, last.v, last.h};
    }
    // 0x00RRGGBB from three words.
    std::uint32_t color()
    {
        std::uint32_t red = word() >> 8, green = word() >> 8;
        return red << 16 | green << 8 | word() >> 8;
    }
    // The bounds of a region, which begins with its size.
    Rect region()
    {
        constexpr unsigned least = 10;
        unsigned size = word();
        if (size < least)
            throw DamagedPicture{};
        Rect bounds = rect();
        skip(size - least);
        return bounds;
    }

private:
    std::string_view bytes_;
    std::size_t at_ = 0;
};

struct PictureBits {
    Picture pixels;      // the source rectangle's part
    Rect destination{};
    int mode = 0;        // the transfer mode as stored
};

// What follows one of the opcodes 0x90, 0x91, 0x98 to 0x9B. fore and back are
// the colours of a bitmap's pixels. pixelsLeft is reduced by what was read; an
// image with more is damaged.
PictureBits readBits(PictureBytes &in, unsigned opcode, std::uint32_t fore, std::uint32_t back,
                     std::size_t &pixelsLeft);

}  // namespace toolbox::quickdraw
