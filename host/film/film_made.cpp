#include "film/film_made.h"

#include <algorithm>
#include <cmath>

#include "io/decimal.h"

namespace riders::film {
namespace {

using io::decimal;

// A little more than what can be measured on less than an inch of tint.
constexpr double kFrequencyOff = 0.003;  // of the frequency asked for
constexpr double kAngleOff = 0.15;       // degrees

double anglesApart(double one, double other, bool lines)
{
    return std::abs(std::remainder(one - other, lines ? 180 : 90));
}

std::string notAsked(const std::string &is, const std::string &asked)
{
    return is + " on the film, " + asked + " asked for";
}

}  // namespace

double uprightAngle(const plates::MeasuredScreen &onFilm, int rotation, double asked)
{
    return asked + std::remainder(onFilm.angle + rotation - asked, onFilm.lines ? 180 : 90);
}

std::vector<std::string> warningsOf(const PlateMade &made)
{
    std::vector<std::string> warnings;
    if (made.asked.shapeUnknown)
        warnings.push_back("the job has a dot shape of its own; the dots are " + made.asked.shape.name +
                           " instead: name one with --spot");
    const plates::MeasuredScreen &measured = made.measured;
    const bool found = measured.found;
    const double frequency = found ? measured.frequency : made.frequency,
                 angle = found ? measured.angle : made.angle;
    if (std::abs(frequency / made.asked.frequency - 1) > kFrequencyOff)
        warnings.push_back(notAsked(decimal(frequency, 2) + " lines per inch", decimal(made.asked.frequency, 2)));
    if (anglesApart(angle, made.asked.angle, found && measured.lines) > kAngleOff)
        warnings.push_back(notAsked(decimal(angle, 2) + "°", decimal(made.asked.angle, 2) + "°"));
    if (made.asked.shape.body.empty() && !measured.shape.empty() && measured.shape != made.asked.shape.name)
        warnings.push_back(notAsked("dots like " + measured.shape, made.asked.shape.name));
    return warnings;
}

}  // namespace riders::film
