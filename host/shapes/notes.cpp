#include <algorithm>
#include <cmath>

#include "shapes/growth.h"

namespace riders::shapes {
namespace {

constexpr std::size_t kFewValues = 48;

std::string percentOf(double share)
{
    return std::to_string(std::lround(100 * share)) + " %";
}

// Whether the cell looks the same when x or y, or both, are counted from the other side.
bool isSame(const std::vector<float> &values, bool otherX, bool otherY)
{
    for (std::size_t y = 1; y < kSide; ++y)
        for (std::size_t x = 1; x < kSide; ++x) {
            const std::size_t fromX = otherX ? kSide - x : x, fromY = otherY ? kSide - y : y;
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
    const Bands bands = bandsOf(values);
    const double size = static_cast<double>(values.size());
    const double from = static_cast<double>(bands.widest.from) / size;
    const double share = static_cast<double>(bands.widest.size) / size;
    if (bands.count == 1)
        notes.emplace_back("all its values are equal: it gives no dots");
    else if (share > kLineShare)
        notes.push_back(percentOf(share) + " of the cell has one value: from " + percentOf(from) + " to " +
                        percentOf(from + share) + " of ink it does not say where the dot grows");
    else if (bands.count < kFewValues)
        notes.push_back("it gives only " + std::to_string(bands.count) +
                        " different values: it does not say where "
                        "the dot grows from one to the next");
    if (std::string symmetry = symmetryOf(values); !symmetry.empty())
        notes.push_back(std::move(symmetry));
    return notes;
}

}  // namespace riders::shapes
