// Any bits as a page: whatever is read there is in its range.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "meter/meter.h"
#include "meter/tint_finder.h"

namespace {

constexpr size_t kRowBytes = 8;
constexpr int kSide = 8 * kRowBytes;  // pixels

bool inRange(double value, double least, double most)
{
    return std::isfinite(value) && value >= least && value <= most;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // The bytes over and over, down the page.
    std::vector<uint8_t> bits(kRowBytes * kSide);
    for (size_t i = 0; size > 0 && i < bits.size(); ++i)
        bits[i] = data[i % size];
    const riders::meter::BitPage page{bits.data(), kSide, kSide, kRowBytes, 600};
    const riders::meter::ScreenReading reading = riders::meter::readScreen(page, riders::meter::PageWindow{0, 0, kSide, kSide});
    if (!inRange(reading.ink, 0, 1) || !inRange(reading.angle, 0, 180) || !inRange(reading.frequency, 0, 600))
        abort();
    if (reading.kind == riders::meter::ScreenKind::dots && reading.angle >= 90)
        abort();
    for (const riders::meter::PageWindow &tint : riders::meter::findTints(page))
        if (tint.empty() || tint.left < 0 || tint.top < 0 || tint.left + tint.width > kSide ||
            tint.top + tint.height > kSide)
            abort();
    return 0;
}
