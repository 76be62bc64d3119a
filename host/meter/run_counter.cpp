#include "meter/run_counter.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace riders::meter {

namespace {

constexpr int kAtOnce = 57;  // bits that are in 64 from the beginning of a byte, wherever in it they begin

std::uint64_t bitsFrom(const std::uint8_t *bytes, int bit)
{
    std::uint64_t word;
    std::memcpy(&word, bytes + (bit >> 3), sizeof word);
    if constexpr (std::endian::native == std::endian::little)
        word = __builtin_bswap64(word);
    return word << (bit & 7);
}

// Inlined into its callers, and so made of what their processors can do.
[[gnu::always_inline]] inline void addRuns(const std::uint8_t *bytes, int first, int width, int runs, float *sums)
{
    if (width <= kAtOnce) {
        for (int run = 0; run < runs; ++run, first += width)
            sums[run] += float(__builtin_popcountll(bitsFrom(bytes, first) >> (64 - width)));
        return;
    }
    for (int run = 0; run < runs; ++run, first += width) {
        int ones = 0;
        for (int done = 0; done < width; done += kAtOnce)
            ones += __builtin_popcountll(bitsFrom(bytes, first + done) >> (64 - std::min(width - done, kAtOnce)));
        sums[run] += float(ones);
    }
}

#if defined(__x86_64__)
__attribute__((target("popcnt"))) void addRunsQuickly(const std::uint8_t *bytes, int first, int width, int runs,
                                                      float *sums)
{
    addRuns(bytes, first, width, runs, sums);
}
#endif

}  // namespace

RunCounter::RunCounter(int left, int width, int runs)
    : left_(left), width_(width), runs_(runs),
      bytes_((static_cast<std::size_t>(left & 7) + std::size_t(width) * std::size_t(runs) + 7) / 8 + 8)
{
}

void RunCounter::add(const std::uint8_t *row, float *sums)
{
    std::memcpy(bytes_.data(), row + (left_ >> 3), bytes_.size() - 8);
#if defined(__x86_64__)
    static const bool counts = __builtin_cpu_supports("popcnt") != 0;
    if (counts)
        return addRunsQuickly(bytes_.data(), left_ & 7, width_, runs_, sums);
#endif
    addRuns(bytes_.data(), left_ & 7, width_, runs_, sums);
}

}  // namespace riders::meter
