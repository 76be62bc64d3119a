#include "quickdraw/globals.h"

QDGlobals qd;

namespace toolbox {
namespace {

// The usual pointer: tip at the hot spot, outlined by its mask in white.
constexpr Cursor arrowCursor = {
    {0x0000, 0x4000, 0x6000, 0x7000, 0x7800, 0x7C00, 0x7E00, 0x7F00,
     0x7F80, 0x7C00, 0x6C00, 0x4600, 0x0600, 0x0300, 0x0300, 0x0000},
    {0xC000, 0xE000, 0xF000, 0xF800, 0xFC00, 0xFE00, 0xFF00, 0xFF80,
     0xFFC0, 0xFFE0, 0xFE00, 0xEF00, 0xCF00, 0x8780, 0x0780, 0x0380},
    {1, 1}};

constexpr Pattern rows(unsigned char even, unsigned char odd)
{
    return {{even, odd, even, odd, even, odd, even, odd}};
}

}  // namespace

void quickdraw::resetGlobals()
{
    qd = {};
    qd.arrow = arrowCursor;
    qd.white = rows(0x00, 0x00);
    qd.black = rows(0xFF, 0xFF);
    qd.gray = rows(0xAA, 0x55);
    qd.ltGray = rows(0x88, 0x22);
    qd.dkGray = rows(0x77, 0xDD);
    qd.randSeed = 1;
}

}  // namespace toolbox

// The product of a 31-bit seed and the multiplier needs 46 bits.
int16_t Random(void)
{
    constexpr int64_t modulus = 0x7FFFFFFF;
    int64_t seed = qd.randSeed % modulus;
    if (seed <= 0)
        seed += modulus - 1;  // from zero the generator would not move
    qd.randSeed = static_cast<int32_t>(seed * 16807 % modulus);
    auto low = static_cast<int16_t>(qd.randSeed);
    return low == INT16_MIN ? 0 : low;
}
