#include "screening/even_order.h"

#include <algorithm>
#include <cmath>

#include "screening/remainder.h"
#include "screening/weighted_sums.h"

namespace riders::screening {
namespace {

// Pixels of a cell from which on there is nothing to gain.
constexpr double kEnoughPixels = 48;
// The fewer pixels repeat, the longer it takes for them to find their places, and the less time.
constexpr int kTones = 8, kTimes = 8, kTimesOfFew = 24;
constexpr std::int64_t kFewPixels = 1 << 15;
constexpr std::int32_t kWhole = 1 << 16;  // a tint of 100 %

struct CellSize {
    double across, down, pixels;
};

CellSize cellSizeOf(const Tile &tile)
{
    const double pixels = double(tile.pixels);
    const double area = double(tile.rightU) * double(tile.downV) - double(tile.rightV) * double(tile.downU);
    return {pixels / std::hypot(double(tile.rightU), double(tile.rightV)),
            pixels / std::hypot(double(tile.downU), double(tile.downV)), pixels / std::abs(area) * pixels};
}

// A bell curve over so many pixels. The weights' sum is 255, so that a sum of sums has 16 bits.
std::vector<std::uint16_t> bellOver(double side)
{
    const double spread = 0.4 * side;
    const int reach = static_cast<int>(std::ceil(2.5 * spread));
    std::vector<double> curve;
    double sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        curve.push_back(std::exp(-i * i / (2 * spread * spread)));
        sum += curve.back();
    }
    std::vector<std::uint16_t> weights;
    int left = 255;
    for (const double value : curve) {
        weights.push_back(static_cast<std::uint16_t>(std::lround(255 * value / sum)));
        left -= weights.back();
    }
    weights[static_cast<std::size_t>(reach)] = static_cast<std::uint16_t>(weights[std::size_t(reach)] + left);
    return weights;
}

// Ink around each pixel of a tile.
class Surroundings {
public:
    explicit Surroundings(const Tile &tile)
        : tile_(tile), width_(static_cast<std::size_t>(tile.width)), across_(bellOver(cellSizeOf(tile).across)),
          down_(bellOver(cellSizeOf(tile).down)), row_(width_ + across_.size()),
          sums_(2 * static_cast<std::size_t>(tile.pixels))
    {
    }

    // Of the pixels whose level is below that, 255 * 255 where all are.
    void measure(const std::vector<std::uint16_t> &levels, std::int32_t below, std::vector<std::uint16_t> &ink)
    {
        ink.resize(levels.size());
        for (std::size_t y = 0; y < static_cast<std::size_t>(tile_.height); ++y)
            sumAcross(&levels[y * width_], below, &sums_[2 * y * width_]);
        for (std::int64_t y = 0; y < tile_.height; ++y)
            sumDown(y, &ink[static_cast<std::size_t>(y) * width_]);
    }

private:
    // Twice side by side, so that a row can be read from any column on.
    void sumAcross(const std::uint16_t *levels, std::int32_t below, std::uint16_t *sums)
    {
        const std::size_t reach = across_.size() / 2;
        for (std::size_t x = 0; x < width_; ++x)
            row_[reach + x] = levels[x] < below;
        for (std::size_t i = 0; i < reach; ++i)
            row_[reach + width_ + i] = row_[reach + i % width_];
        for (std::size_t i = reach; i-- > 0;)
            row_[i] = row_[i + width_];
        rows_.clear();
        for (std::size_t i = 0; i < across_.size(); ++i)
            rows_.push_back(row_.data() + i);
        sumWeighted(across_, rows_, width_, sums);
        std::copy_n(sums, width_, sums + width_);
    }
    void sumDown(std::int64_t y, std::uint16_t *ink)
    {
        const auto reach = static_cast<std::int64_t>(down_.size() / 2);
        rows_.clear();
        for (std::int64_t at = y - reach; at <= y + reach; ++at) {
            const std::int64_t row = remainderFrom0(at, tile_.height), tilesDown = (at - row) / tile_.height;
            rows_.push_back(&sums_[static_cast<std::size_t>(
                2 * row * tile_.width + remainderFrom0(-tilesDown * tile_.shift, tile_.width))]);
        }
        sumWeighted(down_, rows_, width_, ink);
    }

    const Tile &tile_;
    std::size_t width_;
    std::vector<std::uint16_t> across_, down_, row_, sums_;
    std::vector<const std::uint16_t *> rows_;
};

// At which tint each pixel is inked, from 0 to below kWhole, by the order of numbers from 0 to below 2 * kWhole.
class Levels {
public:
    void set(const std::vector<std::int32_t> &order, std::vector<std::uint16_t> &levels)
    {
        std::fill(counts_.begin(), counts_.end(), 0);
        for (const std::int32_t number : order)
            ++counts_[static_cast<std::size_t>(number)];
        const auto size = static_cast<double>(order.size());
        std::int64_t sum = 0;
        for (std::size_t number = 0; number < counts_.size(); ++number) {
            const std::int64_t count = counts_[number];
            if (count == 0)
                continue;
            // Those with one number are taken for the middle one of them. A quotient of such numbers is too far
            // from the next whole one to be rounded to it.
            sum += count;
            const double level = static_cast<double>((2 * sum - count) * (kWhole / 2)) / size;
            of_[number] = static_cast<std::uint16_t>(std::min(static_cast<std::int32_t>(level), kWhole - 1));
        }
        for (std::size_t i = 0; i < order.size(); ++i)
            levels[i] = of_[static_cast<std::size_t>(order[i])];
    }

private:
    std::vector<std::uint32_t> counts_ = std::vector<std::uint32_t>(2 * kWhole);
    std::vector<std::uint16_t> of_ = std::vector<std::uint16_t>(2 * kWhole);
};

// Of a tint's ink around a pixel, where it is even.
constexpr std::int32_t inkOf(std::int32_t tone)
{
    return static_cast<std::int32_t>(std::int64_t(255) * 255 * tone / kWhole);
}

}  // namespace

bool hasSmallCells(const Tile &tile)
{
    return cellSizeOf(tile).pixels < kEnoughPixels;
}

std::vector<float> evenOrder(const Tile &tile, const std::vector<std::uint8_t> &thresholds)
{
    std::vector<std::int32_t> order(thresholds.begin(), thresholds.end());
    for (std::int32_t &number : order)
        number = number * 256 + kWhole / 2;
    std::vector<std::uint16_t> levels(order.size());
    constexpr std::int32_t kStep = kWhole / kTones;
    // There is nothing to even out in no ink and in all of it.
    std::vector<std::vector<std::uint16_t>> inks(kTones + 1, std::vector<std::uint16_t>(order.size()));
    std::fill(inks.back().begin(), inks.back().end(), static_cast<std::uint16_t>(inkOf(kWhole)));
    Surroundings surroundings(tile);
    Levels byOrder;
    const int most = tile.pixels <= kFewPixels ? kTimesOfFew : kTimes;
    for (int times = 0; times < most; ++times) {
        byOrder.set(order, levels);
        for (int tone = 1; tone < kTones; ++tone)
            surroundings.measure(levels, tone * kStep, inks[static_cast<std::size_t>(tone)]);
        for (std::size_t i = 0; i < order.size(); ++i) {
            const std::int32_t level = levels[i], tone = level / kStep, rest = level % kStep;
            const std::int32_t lower = inks[std::size_t(tone)][i] - inkOf(tone * kStep),
                               upper = inks[std::size_t(tone) + 1][i] - inkOf((tone + 1) * kStep);
            const std::int32_t more = lower + (upper - lower) * (rest >> 4) / (kStep >> 4);
            order[i] = std::clamp(level + more + kWhole / 2, 0, 2 * kWhole - 1);
        }
    }
    return {order.begin(), order.end()};
}

}  // namespace riders::screening
