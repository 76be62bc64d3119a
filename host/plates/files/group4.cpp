#include "plates/files/group4.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace riders::plates {

namespace {

constexpr int kEnds = 4;                          // how often a row's end is noted: so far ahead is looked
constexpr std::size_t kMostChanges = 64 + kEnds;  // beyond one for each pixel
constexpr std::size_t kMostBytes = 64;            // of a row, beyond one for each pixel

// Eight bytes, the first in the highest place; those after the end are 0.
std::uint64_t wordAt(const std::uint8_t *bits, std::size_t at, std::size_t size)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bits + at, std::min<std::size_t>(8, size - at));
    return std::endian::native == std::endian::little ? __builtin_bswap64(word) : word;
}

}  // namespace

Group4Encoder::Group4Encoder(std::size_t columns)
    : columns_(static_cast<std::uint32_t>(columns)), changes_(columns + kMostChanges, columns_), above_(changes_)
{
}

void Group4Encoder::row(const std::uint8_t *bits)
{
    makeRoom(columns_ + kMostBytes);
    findChanges(bits);
    putRow();
    std::swap(changes_, above_);
}

void Group4Encoder::end()
{
    makeRoom(kMostBytes);
    put(kEndOfBlock);
    for (; pendingCount_ > 0; pendingCount_ -= 8)
        bytes_[size_++] = static_cast<std::uint8_t>(pendingCount_ >= 8 ? pending_ >> (pendingCount_ - 8)
                                                                       : pending_ << (8 - pendingCount_));
}

void Group4Encoder::makeRoom(std::size_t size)
{
    if (bytes_.size() < size_ + size)
        bytes_.resize(std::max(2 * bytes_.size(), size_ + size));
}

// A word that differs from itself moved by a pixel has its bits where the colour changes.
void Group4Encoder::findChanges(const std::uint8_t *bits)
{
    const std::size_t size = (columns_ + 7) / 8;
    std::uint32_t *next = changes_.data();
    std::uint64_t before = 0;  // the pixel before the word, in the highest place
    for (std::size_t at = 0; at < size; at += 8) {
        const std::uint64_t word = wordAt(bits, at, size);
        for (std::uint64_t changed = word ^ (word >> 1 | before); changed != 0;) {
            const int place = std::countl_zero(changed);
            *next++ = static_cast<std::uint32_t>(at * 8) + static_cast<std::uint32_t>(place);
            changed ^= std::uint64_t(1) << (63 - place);
        }
        before = word << 63;
    }
    // One after the last pixel is the end of a black run.
    while (next != changes_.data() && next[-1] >= columns_)
        --next;
    std::fill_n(next, kEnds, columns_);
}

// In the words of the standard: from a0 on, a1 and a2 are the next changes in this row, b1 and b2 those above, b1
// being the first beyond a0 that changes as a1 does.
void Group4Encoder::putRow()
{
    std::uint32_t a0 = 0;
    int colour = 0;
    std::size_t a = 0, b = 0;  // of a1 and b1; odd ones are changes to white
    bool begun = false;        // a0 is a pixel, not the place before the first
    while (a0 < columns_) {
        if (b > 0 && (b & 1) == static_cast<std::size_t>(1 - colour))
            --b;
        else if ((b & 1) != static_cast<std::size_t>(colour))
            ++b;
        while (above_[b] < columns_ && begun && above_[b] <= a0)
            b += 2;
        const std::uint32_t a1 = changes_[a], b1 = above_[b];
        const std::uint32_t b2 = b1 < columns_ ? above_[b + 1] : columns_;
        if (b2 < a1) {
            put(kPass);
            a0 = b2;
        } else if (const std::int64_t right = std::int64_t(a1) - b1; right >= -3 && right <= 3) {
            put(kVertical[static_cast<std::size_t>(right + 3)]);
            a0 = a1;
            colour = 1 - colour;
            ++a;
        } else {
            put(kHorizontal);
            putRun(a1 - a0, colour);
            putRun(changes_[a + 1] - a1, 1 - colour);
            a0 = changes_[a + 1];
            a += 2;
        }
        begun = true;
    }
}

void Group4Encoder::putRun(std::uint32_t length, int colour)
{
    const RunCodes &codes = kRunCodes[static_cast<std::size_t>(colour)];
    for (; length >= kLongestRun + 64; length -= kLongestRun)
        put(codes.back());
    if (length >= 64)
        put(codes[kShortRuns - 1 + length / 64]);
    put(codes[length % 64]);
}

void Group4Encoder::put(const CodeWord &word)
{
    pending_ = pending_ << word.length | word.bits;
    pendingCount_ += word.length;
    if (pendingCount_ < 32)
        return;
    pendingCount_ -= 32;
    const auto four = static_cast<std::uint32_t>(pending_ >> pendingCount_);
    for (const int shift : {24, 16, 8, 0})
        bytes_[size_++] = static_cast<std::uint8_t>(four >> shift);
}

}  // namespace riders::plates
