#include "app/dot_words.h"

#include <cmath>
#include <cstdio>

#include "app/words.h"
#include "toolbox/host/session.h"
#include "viewing/enough_resolution.h"

namespace riders::app {
namespace {

// Within this the eye sees what was asked for.
constexpr double kAngleOff = 1;  // degrees

// The angle nearest to `near` that looks the same.
double alike(double angle, double near, double turn)
{
    return angle + turn * std::round((near - angle) / turn);
}

double measuredAngle(const viewing::Dots &dots)
{
    return alike(dots.measured.angle, dots.asked.angle.value_or(dots.measured.angle),
                 dots.measured.lines ? 180 : 90);
}

std::string asked(const viewing::Dots &dots)
{
    const plates::AskedFor &by = dots.asked;
    std::string text;
    if (by.frequency)
        text += words(Words::lines, {numberText(*by.frequency)});
    if (by.angle)
        text += (text.empty() ? "" : " ") + words(Words::atAngle, {numberText(*by.angle)});
    if (!by.shape.empty())
        text += (text.empty() ? "" : ", ") + by.shape;
    return text;
}

}  // namespace

std::string numberText(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", value == 0 ? 0.0 : value);
    std::string number = text;
    if (number.ends_with(".0"))
        number.erase(number.size() - 2);
    if (const size_t point = number.find('.'); point != number.npos)
        number[point] = toolbox::configuration().decimalPoint;
    return number == "-0" ? "0" : number;
}

std::string verdictOn(const viewing::Dots &dots, double dpi)
{
    if (dots.plate.empty())
        return words(Words::noInkThere);
    if (!dots.measured.found)
        return words(Words::noScreenThere);
    const std::string at = numberText(dpi), angle = numberText(measuredAngle(dots));
    const auto &by = dots.asked;
    if (viewing::frequencyMissed(dots))
        return words(Words::frequencyMissed,
                     {numberText(*by.frequency), at, numberText(dots.measured.frequency)}) +
               (dots.enoughDpi > 0 ? " " + words(Words::wouldDo, {std::to_string(dots.enoughDpi)}) : "");
    if (by.angle && std::abs(measuredAngle(dots) - *by.angle) > kAngleOff)
        return words(Words::angleMissed, {numberText(*by.angle), at, angle});
    return words(by.binding ? Words::asAskedFor : Words::nobodyAsks, {numberText(dots.measured.frequency), angle});
}

std::string factsAbout(const viewing::Dots &dots)
{
    std::string text;
    if (const std::string screen = asked(dots); !screen.empty())
        text = words(dots.asked.by == "the riders file" ? Words::askedByRiders
                     : dots.asked.by == "the job"       ? Words::askedByJob
                                                        : Words::interpretersOwn,
                     {screen});
    if (dots.measured.found) {
        std::string shape = dots.measured.shape.empty() ? "" : ", " + dots.measured.shape;
        text += (text.empty() ? "" : "\r") +
                words(Words::measuredOn,
                      {dots.plate, numberText(dots.measured.frequency), numberText(measuredAngle(dots)),
                       numberText(std::round(100 * dots.measured.ink)) + " %" + shape});
    }
    if (dots.asked.annotated)
        text += "\r" + words(Words::annotated);
    return text;
}

}  // namespace riders::app
