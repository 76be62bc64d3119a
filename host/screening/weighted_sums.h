// Weighted sums of rows of numbers, many at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace riders::screening {

// to[i] becomes the sum of weights[k] * rows[k][i], of which 16 bits are kept, for each i below `count`. As fast
// as the processor's vector instructions allow; the sums are the same without them.
void sumWeighted(const std::vector<std::uint16_t> &weights, const std::vector<const std::uint16_t *> &rows,
                 std::size_t count, std::uint16_t *to);

// The same by plain code.
void sumWeightedPlainly(const std::vector<std::uint16_t> &weights, const std::vector<const std::uint16_t *> &rows,
                        std::size_t count, std::uint16_t *to);

}  // namespace riders::screening
