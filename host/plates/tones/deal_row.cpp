#include "plates/tones/deal_row.h"

#include <cstring>

namespace riders::plates {
namespace {

// The compiler makes of these what the processor has.
constexpr std::size_t kAtOnce = 16;
using Bytes = std::uint8_t __attribute__((vector_size(kAtOnce)));

Bytes load(const std::uint8_t *from)
{
    Bytes bytes;
    std::memcpy(&bytes, from, kAtOnce);
    return bytes;
}

void store(std::uint8_t *to, Bytes bytes)
{
    std::memcpy(to, &bytes, kAtOnce);
}

// The first half of each, in turn; and the second half.
Bytes firstHalves(Bytes one, Bytes other)
{
    return __builtin_shufflevector(one, other, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
}

Bytes secondHalves(Bytes one, Bytes other)
{
    return __builtin_shufflevector(one, other, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31);
}

// Each byte's place in its pixel and the pixel's number change places, one bit a time.
void shuffle(Bytes &a, Bytes &b, Bytes &c, Bytes &d)
{
    const Bytes one = firstHalves(a, c), two = secondHalves(a, c), three = firstHalves(b, d);
    d = secondHalves(b, d);
    a = one;
    b = two;
    c = three;
}

void dealSixteen(const std::uint8_t *pixels, std::size_t at, std::uint8_t *const (&plates)[4])
{
    Bytes a = load(pixels), b = load(pixels + kAtOnce), c = load(pixels + 2 * kAtOnce),
          d = load(pixels + 3 * kAtOnce);
    shuffle(a, b, c, d);
    shuffle(a, b, c, d);
    shuffle(a, b, c, d);
    shuffle(a, b, c, d);
    store(plates[0] + at, a);
    store(plates[1] + at, b);
    store(plates[2] + at, c);
    store(plates[3] + at, d);
}

}  // namespace

void dealRow(const std::uint8_t *pixels, std::size_t columns, std::uint8_t *const (&plates)[4])
{
    std::size_t x = 0;
    for (; x + kAtOnce <= columns; x += kAtOnce)
        dealSixteen(pixels + 4 * x, x, plates);
    for (; x < columns; ++x)
        for (std::size_t plate = 0; plate < 4; ++plate)
            plates[plate][x] = pixels[4 * x + plate];
}

void invertTones(std::uint8_t *tones, std::size_t count)
{
    std::size_t i = 0;
    for (; i + kAtOnce <= count; i += kAtOnce)
        store(tones + i, ~load(tones + i));
    for (; i < count; ++i)
        tones[i] = static_cast<std::uint8_t>(~tones[i]);
}

}  // namespace riders::plates
