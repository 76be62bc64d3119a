// Counts the ink of a row in runs of a few pixels each.
#pragma once

#include <cstdint>
#include <vector>

namespace riders::meter {

class RunCounter {
public:
    // So many runs of `width` pixels, the first from the row's pixel `left`.
    RunCounter(int left, int width, int runs);
    // Adds the ink of each run of the row to its sum; the row has all of the runs.
    void add(const std::uint8_t *row, float *sums);

private:
    int left_, width_, runs_;
    std::vector<std::uint8_t> bytes_;  // the row's, with room to read on past the last of them
};

}  // namespace riders::meter
