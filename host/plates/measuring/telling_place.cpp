#include "plates/measuring/telling_place.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace riders::plates {
namespace {

constexpr int kBlock = 16;  // pixels a side, in which telling places are counted

const std::array<float, 256> &tellingTable()
{
    static const std::array<float, 256> table = [] {
        std::array<float, 256> values{};
        for (int ink = 0; ink < 256; ++ink)
            values[static_cast<size_t>(ink)] = static_cast<float>(telling(ink));
        return values;
    }();
    return table;
}

// Sums over all blocks above and to the left.
class BlockSums {
public:
    explicit BlockSums(const TintPlate &plate)
        : across((plate.width + kBlock - 1) / kBlock), down((plate.height + kBlock - 1) / kBlock),
          sums_(static_cast<size_t>(across + 1) * static_cast<size_t>(down + 1))
    {
        const std::array<float, 256> &table = tellingTable();
        for (int y = 0; y < plate.height; ++y) {
            const std::uint8_t *row = plate.row(y);
            for (int x = 0; x < plate.width;) {
                double sum = 0;
                const int block = x / kBlock;
                for (const int end = std::min((block + 1) * kBlock, plate.width); x < end; ++x)
                    sum += table[row[x]];
                at(block + 1, y / kBlock + 1) += sum;
            }
        }
        for (int y = 1; y <= down; ++y)
            for (int x = 1; x <= across; ++x)
                at(x, y) += at(x - 1, y) + at(x, y - 1) - at(x - 1, y - 1);
    }

    double of(int left, int top, int width, int height) const
    {
        const int right = std::min(left + width, across), bottom = std::min(top + height, down);
        return value(right, bottom) - value(left, bottom) - value(right, top) + value(left, top);
    }

    const int across, down;

private:
    size_t index(int x, int y) const { return static_cast<size_t>(y) * static_cast<size_t>(across + 1) + x; }
    double &at(int x, int y) { return sums_[index(x, y)]; }
    double value(int x, int y) const { return sums_[index(x, y)]; }

    std::vector<double> sums_;
};

// A square within another, in whose middle it lies: what is seen first.
constexpr int kMiddle = 4;  // its side is a quarter

// What a square of so many blocks a side shows of a plate, and what its middle does, as if that were all of it.
double shown(const BlockSums &plate, int left, int top, int blocks)
{
    const int middle = std::max(1, blocks / kMiddle), edge = (blocks - middle) / 2;
    const double larger = static_cast<double>(blocks) * blocks / (static_cast<double>(middle) * middle);
    return plate.of(left, top, blocks, blocks) + larger * plate.of(left + edge, top + edge, middle, middle);
}

// Roots, so that a place with some of each plate is worth more than one with all of one.
double worth(const std::vector<BlockSums> &plates, int left, int top, int blocks)
{
    double sum = 0;
    for (const BlockSums &plate : plates)
        sum += std::sqrt(std::max(0.0, shown(plate, left, top, blocks)));
    return sum;
}

struct Candidate {
    int left, top;
    double worth;
};

// Of those that are as good as the best, the one in their middle: not the
// corner of a flat tint.
Candidate middleOfBest(std::vector<Candidate> all)
{
    const auto byWorth = [](const Candidate &one, const Candidate &other) { return one.worth < other.worth; };
    const double enough = 0.995 * std::max_element(all.begin(), all.end(), byWorth)->worth;
    std::erase_if(all, [enough](const Candidate &candidate) { return candidate.worth < enough; });
    double left = 0, top = 0;
    for (const Candidate &candidate : all) {
        left += candidate.left / static_cast<double>(all.size());
        top += candidate.top / static_cast<double>(all.size());
    }
    const auto apart = [left, top](const Candidate &candidate) {
        return std::hypot(candidate.left - left, candidate.top - top);
    };
    return *std::min_element(all.begin(), all.end(), [&apart](const Candidate &one, const Candidate &other) {
        return apart(one) < apart(other);
    });
}

}  // namespace

double telling(int ink)
{
    const double tint = ink / 255.0;
    return ink == 255 ? 0.05 : 4 * tint * (1 - tint);
}

Place tellingPlace(const std::vector<const TintPlate *> &plates, double dpi, double side)
{
    if (plates.empty())
        return {};
    const double pageWidth = plates[0]->width / dpi, pageHeight = plates[0]->height / dpi;
    const double width = std::min(side, pageWidth), height = std::min(side, pageHeight);
    std::vector<BlockSums> sums;
    sums.reserve(plates.size());
    for (const TintPlate *plate : plates)
        sums.emplace_back(*plate);
    const int blocks = std::max(1, static_cast<int>(std::lround(side * dpi / kBlock)));
    std::vector<Candidate> all;
    for (int top = 0; top == 0 || top + blocks <= sums[0].down; ++top)
        for (int left = 0; left == 0 || left + blocks <= sums[0].across; ++left)
            all.push_back({left, top, worth(sums, left, top, blocks)});
    const Candidate best = middleOfBest(std::move(all));
    return {std::min(best.left * kBlock / dpi, pageWidth - width),
            std::min(best.top * kBlock / dpi, pageHeight - height), width, height};
}

Place middleOf(const Place &place)
{
    const double width = place.width / kMiddle, height = place.height / kMiddle;
    return {place.left + (place.width - width) / 2, place.top + (place.height - height) / 2, width, height};
}

double tellingShare(const TintPlate &plate, double dpi, const Place &place)
{
    const std::array<float, 256> &table = tellingTable();
    const int left = std::max(0, static_cast<int>(place.left * dpi)),
              top = std::max(0, static_cast<int>(place.top * dpi));
    const int right = std::min(plate.width, static_cast<int>((place.left + place.width) * dpi));
    const int bottom = std::min(plate.height, static_cast<int>((place.top + place.height) * dpi));
    double sum = 0;
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            sum += table[plate.row(y)[x]];
    return right > left && bottom > top ? sum / (static_cast<double>(right - left) * (bottom - top)) : 0;
}

}  // namespace riders::plates
