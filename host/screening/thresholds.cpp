#include "screening/thresholds.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <tuple>
#include <utility>

#include "screening/even_order.h"
#include "screening/pixel_places.h"
#include "screening/remainder.h"

namespace riders::screening {
namespace {

constexpr int kBins = 1 << 16;

std::int64_t floorDivided(std::int64_t number, std::int64_t by)
{
    return (number - remainderFrom0(number, by)) / by;
}

// How many of so many pixels a tone inks.
std::int64_t inked(std::int64_t pixels, int tone)
{
    return (2 * pixels * tone + 255) / 510;
}

std::vector<float> valuesOf(const Tile &tile, const SpotFunction &spot)
{
    std::vector<float> values;
    values.reserve(static_cast<std::size_t>(tile.pixels));
    eachPlace(placesOf(tile), [&](double x, double y) { values.push_back(static_cast<float>(spot(x, y))); });
    return values;
}

// In which order pixels are inked, the least first: the highest spot values, and of equal ones those at one side
// of the cell, so that cells stay alike.
std::vector<float> orderOf(const Tile &tile, std::vector<float> values)
{
    if (values.size() != static_cast<std::size_t>(tile.pixels))
        throw std::invalid_argument("other spot values than a tile has pixels");
    auto value = values.begin();
    eachPlace(placesOf(tile), [&](double x, double y) {
        *value = static_cast<float>(1e-4 * (0.38 * x + 0.62 * y) - double(*value));
        ++value;
    });
    return values;
}

// Spreads a number's lowest bits, the last of them first: 0, 1/2, 1/4, 3/4, ...
std::uint32_t bitsReversed(std::uint32_t number)
{
    std::uint32_t reversed = 0;
    for (int bit = 0; bit < 16; ++bit)
        reversed |= (number >> bit & 1) << (15 - bit);
    return reversed;
}

// In which order pixels whose values are equal are inked: copies of the same cells far from each other.
std::uint64_t turnOf(const Tile &tile, std::int64_t index)
{
    const std::int64_t x = index % tile.width, y = index / tile.width, copies = tile.copies;
    const std::int64_t area = tile.firstX * tile.secondY - tile.firstY * tile.secondX, sign = area < 0 ? -1 : 1;
    const std::int64_t first = floorDivided(sign * (x * tile.secondY - y * tile.secondX), sign * area),
                       second = floorDivided(sign * (y * tile.firstX - x * tile.firstY), sign * area);
    const auto one = static_cast<std::uint32_t>(remainderFrom0(first, copies)),
               other = static_cast<std::uint32_t>(remainderFrom0(second, copies));
    // As in an ordered dither, the lowest bits of both count most.
    std::uint64_t turn = 0;
    const std::uint32_t odd = bitsReversed(one ^ other), reversed = bitsReversed(other);
    for (int bit = 15; bit >= 0; --bit)
        turn = turn << 2 | (odd >> bit & 1) << 1 | (reversed >> bit & 1);
    // What is left are places that the pixels of different rows share: any fixed order will do.
    return turn << 32 | static_cast<std::uint32_t>(static_cast<std::uint64_t>(index) * 2654435769U);
}

// Sorts only the pixels of those bins in which a tone begins: all others have one threshold.
class Ranking {
public:
    Ranking(const Tile &tile, std::vector<float> values) : tile_(tile), values_(std::move(values))
    {
        const auto [least, most] = std::minmax_element(values_.begin(), values_.end());
        least_ = *least;
        scale_ = *most > *least ? (kBins - 1) / (*most - *least) : 0;
        std::vector<std::int64_t> counts(kBins);
        for (const float value : values_)
            ++counts[binOf(value)];
        setBins(counts);
    }

    std::vector<std::uint8_t> thresholds()
    {
        std::vector<std::uint8_t> result(values_.size());
        for (std::size_t i = 0; i < values_.size(); ++i) {
            Bin &bin = bins_[binOf(values_[i])];
            result[i] = bin.threshold;
            if (bin.sorted >= 0)
                sorted_[static_cast<std::size_t>(bin.sorted)].push_back(static_cast<std::int64_t>(i));
        }
        for (const Bin &bin : bins_)
            if (bin.sorted >= 0)
                sort(bin, sorted_[static_cast<std::size_t>(bin.sorted)], result);
        return result;
    }

private:
    struct Bin {
        std::int64_t before = 0;  // pixels of lower bins
        std::uint8_t threshold = 255;
        int sorted = -1;  // number of its list, where a tone begins in it
    };

    std::size_t binOf(float value) const { return static_cast<std::size_t>((value - least_) * scale_); }

    void setBins(const std::vector<std::int64_t> &counts)
    {
        std::int64_t before = 0;
        int tone = 1;
        for (std::size_t at = 0; at < bins_.size(); ++at) {
            tone = thresholdOf(before, tone);
            bins_[at] = {before, static_cast<std::uint8_t>(tone), -1};
            before += counts[at];
            if (counts[at] > 0 && inked(tile_.pixels, tone) < before) {
                bins_[at].sorted = static_cast<int>(sorted_.size());
                sorted_.emplace_back();
            }
        }
    }
    // Of the pixel that is the rank-th to be inked, when it is known to be no less than `tone`.
    int thresholdOf(std::int64_t rank, int tone) const
    {
        while (tone < 255 && inked(tile_.pixels, tone) <= rank)
            ++tone;
        return tone;
    }
    void sort(const Bin &bin, const std::vector<std::int64_t> &pixels, std::vector<std::uint8_t> &result) const
    {
        std::vector<std::tuple<float, std::uint64_t, std::int64_t>> order;
        order.reserve(pixels.size());
        for (const std::int64_t pixel : pixels)
            order.emplace_back(values_[static_cast<std::size_t>(pixel)], turnOf(tile_, pixel), pixel);
        std::sort(order.begin(), order.end());
        std::int64_t rank = bin.before;
        int tone = bin.threshold;
        for (const auto &[value, turn, pixel] : order) {
            tone = thresholdOf(rank++, tone);
            result[static_cast<std::size_t>(pixel)] = static_cast<std::uint8_t>(tone);
        }
    }

    const Tile &tile_;
    std::vector<float> values_;
    float least_ = 0, scale_ = 0;
    std::vector<Bin> bins_ = std::vector<Bin>(kBins);
    std::vector<std::vector<std::int64_t>> sorted_;
};

std::vector<std::uint8_t> rankedThresholds(const Tile &tile, std::vector<float> spotValues)
{
    std::vector<std::uint8_t> thresholds = Ranking(tile, orderOf(tile, std::move(spotValues))).thresholds();
    return hasSmallCells(tile) ? Ranking(tile, evenOrder(tile, thresholds)).thresholds() : thresholds;
}

// Short rows are repeated, so that reading one seldom begins again.
std::size_t storedLength(std::int64_t width)
{
    constexpr std::int64_t kShort = 2048;
    return static_cast<std::size_t>(width * std::max<std::int64_t>(1, kShort / width));
}

}  // namespace

Thresholds::Thresholds(const Tile &tile, const SpotFunction &spot) : Thresholds(tile, valuesOf(tile, spot))
{
}

Thresholds::Thresholds(const Tile &tile, std::vector<float> spotValues)
    : Thresholds(tile, rankedThresholds(tile, std::move(spotValues)))
{
}

Thresholds::Thresholds(const Tile &tile, const std::vector<std::uint8_t> &thresholds)
    : tile_(tile), length_(storedLength(tile.width)),
      rows_(static_cast<std::size_t>(tile.height) * (length_ + kRun))
{
    const auto width = static_cast<std::size_t>(tile.width);
    for (std::size_t y = 0; y < static_cast<std::size_t>(tile.height); ++y) {
        std::uint8_t *const row = &rows_[y * (length_ + kRun)];
        for (std::size_t x = 0; x < length_ + kRun; x += width)
            std::memcpy(row + x, &thresholds[y * width], std::min(width, length_ + kRun - x));
    }
}

const std::uint8_t *Thresholds::rowOf(std::int64_t y) const
{
    return rows_.data() + static_cast<std::size_t>(remainderFrom0(y, tile_.height)) * (length_ + kRun);
}

std::size_t Thresholds::placeIn(std::int64_t x, std::int64_t y) const
{
    const std::int64_t tilesDown = remainderFrom0(floorDivided(y, tile_.height), tile_.width);
    return static_cast<std::size_t>(remainderFrom0(x - tilesDown * tile_.shift, tile_.width));
}

}  // namespace riders::screening
