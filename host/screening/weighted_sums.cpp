#include "screening/weighted_sums.h"

#include <cstring>

namespace riders::screening {
namespace {

void sumFrom(std::size_t first, const std::vector<std::uint16_t> &weights,
             const std::vector<const std::uint16_t *> &rows, std::size_t count, std::uint16_t *to)
{
    for (std::size_t i = first; i < count; ++i) {
        unsigned sum = 0;
        for (std::size_t k = 0; k < weights.size(); ++k)
            sum += unsigned(weights[k]) * rows[k][i];
        to[i] = static_cast<std::uint16_t>(sum);
    }
}

#if defined(__x86_64__)

__attribute__((target("avx2"))) void sumInVectors(const std::vector<std::uint16_t> &weights,
                                                  const std::vector<const std::uint16_t *> &rows,
                                                  std::size_t count, std::uint16_t *to)
{
    // The compiler's own vectors: sums and products are of 16 bits, as in plain code.
    using Vector = std::uint16_t __attribute__((vector_size(32)));
    constexpr std::size_t kStep = sizeof(Vector) / sizeof(std::uint16_t);
    std::size_t at = 0;
    for (; at + 2 * kStep <= count; at += 2 * kStep) {
        Vector first = {}, second = {};
        for (std::size_t k = 0; k < weights.size(); ++k) {
            Vector one, other;
            std::memcpy(&one, rows[k] + at, sizeof one);
            std::memcpy(&other, rows[k] + at + kStep, sizeof other);
            first += one * weights[k];
            second += other * weights[k];
        }
        std::memcpy(to + at, &first, sizeof first);
        std::memcpy(to + at + kStep, &second, sizeof second);
    }
    sumFrom(at, weights, rows, count, to);
}

bool hasVectors()
{
    static const bool has = __builtin_cpu_supports("avx2");
    return has;
}

#endif

}  // namespace

void sumWeightedPlainly(const std::vector<std::uint16_t> &weights, const std::vector<const std::uint16_t *> &rows,
                        std::size_t count, std::uint16_t *to)
{
    sumFrom(0, weights, rows, count, to);
}

void sumWeighted(const std::vector<std::uint16_t> &weights, const std::vector<const std::uint16_t *> &rows,
                 std::size_t count, std::uint16_t *to)
{
#if defined(__x86_64__)
    if (hasVectors())
        return sumInVectors(weights, rows, count, to);
#endif
    sumWeightedPlainly(weights, rows, count, to);
}

}  // namespace riders::screening
