#include <algorithm>
#include <cmath>

#include "shapes/growth.h"

namespace riders::shapes {
namespace {

// What a line of equal values through the cell takes up at most, there and back (Square, Cross).
constexpr double kMostOnLines = 0.04;
constexpr std::size_t kFewValues = 48;
constexpr float kAlike = 1e-5F;  // what the interpreter's arithmetic leaves

std::string percent(double share)
{
    return std::to_string(std::lround(100 * share)) + " %";
}

struct Band {
    std::size_t from = 0, size = 0;  // in the order of the values, highest first
    float value = 0;
};

struct Bands {
    Band widest;
    std::size_t count = 0;
};

Bands bandsIn(std::vector<float> values)
{
    std::sort(values.begin(), values.end(), std::greater<>());
    Bands bands;
    for (std::size_t from = 0, to = 0; from < values.size(); from = to) {
        while (to < values.size() && values[to] >= values[from] - kAlike / 10)
            ++to;
        ++bands.count;
        if (to - from > bands.widest.size)
            bands.widest = {from, to - from, values[from]};
    }
    return bands;
}

// Whether the cell looks the same when x or y, or both, are counted from the other side.
bool isSame(const std::vector<float> &values, bool otherX, bool otherY)
{
    for (std::size_t y = 0; y < kSide; ++y)
        for (std::size_t x = 0; x < kSide; ++x) {
            const std::size_t fromX = otherX ? kSide - 1 - x : x, fromY = otherY ? kSide - 1 - y : y;
            if (std::abs(values[y * kSide + x] - values[fromY * kSide + fromX]) > kAlike)
                return false;
        }
    return true;
}

std::string symmetryOf(const std::vector<float> &values)
{
    const bool sides = isSame(values, true, false), ends = isSame(values, false, true);
    if (sides && ends)
        return {};
    if (sides || ends)
        return std::string("it is not symmetric: its ") + (sides ? "upper and lower" : "left and right") +
               " halves differ, so the dots grow to one side";
    return isSame(values, true, true)
               ? "it is not symmetric: its halves are the same only when turned by 180 degrees"
               : "it is not symmetric: all its quarters differ";
}

}  // namespace

std::vector<std::string> notesOn(const std::vector<float> &values)
{
    std::vector<std::string> notes;
    const Bands bands = bandsIn(values);
    const double size = static_cast<double>(values.size());
    const double from = static_cast<double>(bands.widest.from) / size;
    const double share = static_cast<double>(bands.widest.size) / size;
    if (bands.count == 1)
        notes.emplace_back("all its values are equal: it gives no dots");
    else if (share > kMostOnLines)
        notes.push_back(percent(share) + " of the cell has one value: from " + percent(from) + " to " +
                        percent(from + share) + " of ink it does not say where the dot grows");
    else if (bands.count < kFewValues)
        notes.push_back("it gives only " + std::to_string(bands.count) +
                        " different values: it does not say where "
                        "the dot grows from one to the next");
    if (std::string symmetry = symmetryOf(values); !symmetry.empty())
        notes.push_back(std::move(symmetry));
    return notes;
}

}  // namespace riders::shapes
