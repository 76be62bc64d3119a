#include "desktop/scale.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace toolbox::desktop {
namespace {

constexpr double plainDotsPerInch = 96;

int within(double scale)
{
    return static_cast<int>(std::clamp(std::round(scale), 1.0, static_cast<double>(largestScale)));
}

// A whole number above 0, cut to the largest scale; 0 for any other text.
int scaleNamed(const std::string &text)
{
    int scale = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), scale);
    if (error != std::errc() || end != text.data() + text.size() || scale < 1)
        return 0;
    return within(scale);
}

// A factor from 0.1 to 100; 0 for any other text.
double factorNamed(const std::string &text)
{
    double factor = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), factor);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole && factor >= 0.1 && factor <= 100 ? factor : 0;
}

}  // namespace

int chooseScale(const DisplayFacts &facts)
{
    if (facts.wanted > 0)
        return within(facts.wanted);
    if (int scale = scaleNamed(facts.environment))
        return scale;
    if (facts.pixelsPerPoint > 1)
        return within(facts.pixelsPerPoint);
    if (int scale = scaleNamed(facts.toolkitScale))
        return scale;
    if (double factor = factorNamed(facts.toolkitFactor); factor > 0)
        return within(factor);
    if (facts.wantedDotsPerInch > 0)
        return within(facts.wantedDotsPerInch / plainDotsPerInch);
    return within(facts.dotsPerInch / plainDotsPerInch);
}

}  // namespace toolbox::desktop
