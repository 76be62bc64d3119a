#include "shapes/growth.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <numeric>

namespace riders::shapes {
namespace {

std::size_t at(int x, int y)
{
    const auto wrapped = [](int i) { return static_cast<std::size_t>((i % kSide + kSide) % kSide); };
    return wrapped(y) * kSide + wrapped(x);
}

// Any order without a direction.
std::uint32_t scattered(std::size_t sample)
{
    return static_cast<std::uint32_t>(sample) * 2654435761U;
}

// Calls `take` for each band of values that fall.
void eachBand(const std::vector<float> &falling, const std::function<void(Band)> &take)
{
    for (std::size_t from = 0, to = 0; from < falling.size(); from = to) {
        while (to < falling.size() && falling[to] >= falling[from] - kAlike)
            ++to;
        take({from, to - from});
    }
}

// Those whose value is highest first.
std::vector<std::size_t> inOrder(const std::vector<float> &values)
{
    std::vector<std::size_t> order(values.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return values[a] > values[b]; });
    std::vector<float> falling;
    falling.reserve(values.size());
    for (const std::size_t sample : order)
        falling.push_back(values[sample]);
    eachBand(falling, [&](Band band) {
        const auto first = order.begin() + static_cast<std::ptrdiff_t>(band.from);
        if (static_cast<double>(band.size) <= kLineShare * static_cast<double>(values.size()))
            std::sort(first, first + static_cast<std::ptrdiff_t>(band.size),
                      [](std::size_t a, std::size_t b) { return scattered(a) < scattered(b); });
        else
            std::sort(first, first + static_cast<std::ptrdiff_t>(band.size));
    });
    return order;
}

}  // namespace

Bands bandsOf(std::vector<float> values)
{
    std::sort(values.begin(), values.end(), std::greater<>());
    Bands bands;
    eachBand(values, [&](Band band) {
        ++bands.count;
        if (band.size > bands.widest.size)
            bands.widest = band;
    });
    return bands;
}

Growth growthOf(const std::vector<float> &values)
{
    Growth growth(values.size());
    std::size_t inked = 0;
    for (const std::size_t sample : inOrder(values))
        growth[sample] = static_cast<float>(++inked) / static_cast<float>(values.size());
    return growth;
}

Growth spreadGrowth(const Growth &growth, double spread)
{
    const double radius = spread * kSide;
    const int reach = static_cast<int>(radius);
    std::vector<std::pair<int, int>> disc;
    for (int y = -reach; y <= reach; ++y)
        for (int x = -reach; x <= reach; ++x)
            if (x * x + y * y <= radius * radius)
                disc.emplace_back(x, y);
    Growth spreads = growth;
    for (int y = 0; y < kSide; ++y)
        for (int x = 0; x < kSide; ++x)
            for (const auto &[dx, dy] : disc)
                spreads[at(x, y)] = std::min(spreads[at(x, y)], growth[at(x + dx, y + dy)]);
    std::sort(spreads.begin(), spreads.end());
    return spreads;
}

double inkWithSpread(const Growth &spread, double tint)
{
    const auto inked = std::upper_bound(spread.begin(), spread.end(), static_cast<float>(tint)) - spread.begin();
    return static_cast<double>(inked) / static_cast<double>(spread.size());
}

}  // namespace riders::shapes
