#include "film/tone_band.h"

#include <algorithm>
#include <cstring>

namespace riders::film {

void ToneBand::begin(std::size_t plates, std::size_t columns, std::size_t bytes)
{
    constexpr std::size_t kMostRows = 256;
    columns_ = columns;
    count_ = 0;
    room_ = std::clamp<std::size_t>(bytes / std::max<std::size_t>(1, plates * columns), 1, kMostRows);
    tones_.resize(plates * room_ * columns);
}

void ToneBand::add(const std::vector<const std::uint8_t *> &tones)
{
    for (std::size_t plate = 0; plate < tones.size(); ++plate)
        std::memcpy(tones_.data() + (plate * room_ + count_) * columns_, tones[plate], columns_);
    ++count_;
}

}  // namespace riders::film
