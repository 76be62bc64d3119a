#include "meter/spots.h"

#include <cmath>
#include <numbers>

namespace riders::meter {
namespace {

double ellipse(double x, double y)
{
    const double a = std::abs(x), b = std::abs(y), w = 3 * a + 4 * b - 3;
    if (w < 0)
        return 1 - (a * a + b * b / 0.5625) / 4;
    return w > 1 ? ((1 - a) * (1 - a) + (1 - b) * (1 - b) / 0.5625) / 4 - 1 : 0.5 - w;
}

double diamond(double x, double y)
{
    const double a = std::abs(x), b = std::abs(y);
    if (a + b <= 0.75)
        return 1 - (a * a + b * b);
    return a + b <= 1.23 ? 1 - (0.85 * a + b) : (a - 1) * (a - 1) + (b - 1) * (b - 1) - 1;
}

double euclidean(double x, double y)
{
    const double a = std::abs(x), b = std::abs(y);
    return a + b <= 1 ? 1 - (a * a + b * b) : (a - 1) * (a - 1) + (b - 1) * (b - 1) - 1;
}

}  // namespace

const std::vector<NamedSpot> &namedSpots()
{
    static const std::vector<NamedSpot> spots = {
        {"Round", [](double x, double y) { return 1 - (x * x + y * y); }},
        {"Ellipse", ellipse},
        {"Line", [](double, double y) { return -std::abs(y); }},
        {"Square", [](double x, double y) { return -std::max(std::abs(x), std::abs(y)); }},
        {"Diamond", diamond},
        {"Cross", [](double x, double y) { return -std::min(std::abs(x), std::abs(y)); }},
        {"Euclidean", euclidean},
        {"CosineDot",
         [](double x, double y) { return (std::cos(std::numbers::pi * x) + std::cos(std::numbers::pi * y)) / 2; }},
        {"Rhomboid", [](double x, double y) { return (0.9 * std::abs(x) + std::abs(y)) / 2; }},
    };
    return spots;
}

const std::vector<NamedSpot> &rarerSpots()
{
    static const std::vector<NamedSpot> spots = {
        {"InvertedSimpleDot", [](double x, double y) { return x * x + y * y - 1; }},
        {"EllipseA", [](double x, double y) { return 1 - (x * x + 0.9 * y * y); }},
        {"InvertedEllipseA", [](double x, double y) { return x * x + 0.9 * y * y - 1; }},
        {"EllipseB", [](double x, double y) { return 1 - std::sqrt(x * x + 0.625 * y * y); }},
        {"EllipseC", [](double x, double y) { return 1 - (0.9 * x * x + y * y); }},
        {"InvertedEllipseC", [](double x, double y) { return 0.9 * x * x + y * y - 1; }},
        {"LineY", [](double, double y) { return y; }},
    };
    return spots;
}

}  // namespace riders::meter
