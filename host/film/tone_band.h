// Some rows of a page's plates, copied to be screened while the next ones come.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace riders::film {

class ToneBand {
public:
    // For a page of so many plates and columns, as many rows as take about `bytes`, at least one.
    void begin(std::size_t plates, std::size_t columns, std::size_t bytes);
    // There must be room.
    void add(const std::vector<const std::uint8_t *> &tones);
    void clear() { count_ = 0; }

    bool isFull() const { return count_ == room_; }
    std::size_t count() const { return count_; }
    const std::uint8_t *row(std::size_t plate, std::size_t i) const
    {
        return tones_.data() + (plate * room_ + i) * columns_;
    }

private:
    std::size_t columns_ = 0, room_ = 0, count_ = 0;
    std::vector<std::uint8_t> tones_;
};

}  // namespace riders::film
