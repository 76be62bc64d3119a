#include "plates/interpreter/spot_shape.h"

#include <cmath>

#include "meter/spots.h"

namespace riders::plates {
namespace {

constexpr int kSide = 7;  // values along a cell's side, as in prolog.ps
static_assert(std::size_t{kSide} * kSide == kShapeValues);

// Whether both give the same order, which is all that counts for the dots.
bool isSameOrder(const std::vector<double> &one, const std::vector<double> &other)
{
    constexpr double kAlike = 1e-3;
    for (size_t i = 0; i < one.size(); ++i)
        for (size_t j = 0; j < i; ++j) {
            const double a = one[i] - one[j], b = other[i] - other[j];
            if ((a > kAlike && b < -kAlike) || (a < -kAlike && b > kAlike) ||
                (std::abs(a) <= kAlike / 10 && std::abs(b) > kAlike) ||
                (std::abs(b) <= kAlike / 10 && std::abs(a) > kAlike))
                return false;
        }
    return true;
}

std::vector<double> idealOf(const meter::NamedSpot &spot)
{
    std::vector<double> ideal;
    ideal.reserve(kShapeValues);
    for (int y = -kSide / 2; y <= kSide / 2; ++y)
        for (int x = -kSide / 2; x <= kSide / 2; ++x)
            ideal.push_back(spot.value(x / 3.3, y / 3.5));
    return ideal;
}

}  // namespace

std::string shapeOf(const std::vector<double> &values)
{
    for (const std::vector<meter::NamedSpot> *known : {&meter::namedSpots(), &meter::rarerSpots()})
        for (const meter::NamedSpot &spot : *known)
            if (isSameOrder(values, idealOf(spot)))
                return spot.name;
    return {};
}

}  // namespace riders::plates
