#include "looking/report/plate_row.h"

#include <cmath>
#include <optional>

#include "io/decimal.h"
#include "looking/facts/warnings.h"
#include "looking/report/template.h"

namespace riders::looking {
using io::decimal;

namespace {

std::string note(const std::string &text)
{
    return part("note", {{"text", text}});
}

std::string percent(double share)
{
    return part("percent", {{"number", decimal(share * 100, 1)}});
}

std::string screen(const std::optional<double> &frequency, const std::optional<double> &angle)
{
    std::string text = frequency ? part("frequency", {{"lines", decimal(*frequency, 2)}}) : "";
    if (frequency && angle)
        text += ", ";
    return part("values", {{"values", text + (angle ? decimal(*angle, 2) + "°" : "")}});
}

std::string askedCell(const PlateFacts &plate)
{
    const plates::AskedFor &asked = plate.asked;
    const bool known = asked.frequency || asked.angle;
    std::string values = known ? screen(asked.frequency, asked.angle) : "";
    if (!asked.shape.empty())
        values += (known ? ", " : "") + escaped(asked.shape);
    if (asked.refused)
        return "a dot shape" + note("by " + escaped(asked.by) + ", refused");
    if (!asked.binding)
        return "nothing" + note(plate.own + (values.empty() ? "" : ", " + values));
    return (values.empty() ? "the job’s own" : values) + note("by " + escaped(asked.by));
}

// With its sign and two digits.
std::string signedNumber(double value)
{
    const std::string size = decimal(std::abs(value), 2);
    return (size == "0" ? "±" : value < 0 ? "−" : "+") + size;
}

std::string difference(const PlateFacts &plate)
{
    std::string text;
    if (plate.asked.frequency)
        text = part("percent",
                    {{"number", signedNumber((plate.measured.frequency / *plate.asked.frequency - 1) * 100)}});
    if (plate.asked.angle)
        text += (text.empty() ? "" : ", ") +
                signedNumber(std::remainder(plate.measured.angle - *plate.asked.angle, 90)) + "°";
    return text;
}

std::string whyNoShape(const PlateFacts &plate, double dpi)
{
    if (dpi / plate.measured.frequency < plates::kTellingCell)
        return "cells too small to show the dots’ shape";
    if (plate.measured.ink < plates::kLeastTellingInk || plate.measured.ink > 1 - plates::kLeastTellingInk)
        return "a tint too " + std::string(plate.measured.ink < 0.5 ? "light" : "dark") +
               " to show the dots’ shape";
    return "dots like no shape that has a name";
}

std::string measuredCell(const PlateFacts &plate, double dpi)
{
    if (!plate.measured.found)
        return plate.tints.tint ? "no screen found" : "solid ink only";
    const std::string values = screen(plate.measured.frequency, plate.measured.angle);
    const std::string apart = plate.asked.binding ? difference(plate) : "";
    const std::string shape =
        plate.measured.shape.empty() ? note(whyNoShape(plate, dpi)) : ", " + escaped(plate.measured.shape);
    return (!whatIsOff(plate).empty() ? part("off", {{"values", values}}) : values) + shape +
           (apart.empty() ? "" : note(apart));
}

std::string inkCell(const PlateFacts &plate)
{
    std::string text;
    if (plate.tints.tint)
        text = plate.tints.least == plate.tints.most
                   ? percent(plate.tints.least)
                   : percent(plate.tints.least) + " to " + percent(plate.tints.most);
    if (plate.tints.solid)
        text += text.empty() ? "solid" : ", and solid";
    if (plate.measured.found && plate.flatTint > 0)
        text += note(percent(plate.flatTint) + " is " + percent(plate.measured.ink) + " on the film");
    return text.empty() ? "a trace" : text;
}

std::string levelsCell(const PlateFacts &plate, double dpi)
{
    if (plate.levels > 0)
        return std::to_string(plate.levels);
    if (!plate.measured.found)
        return "–";
    return std::to_string(levelsOfCell(plate.measured.frequency, dpi)) + note("a cell");
}

}  // namespace

std::string plateRow(const PlateFacts &plate, double dpi)
{
    const std::string colour = hexColour(plate.ink), name = escaped(plate.name);
    if (plate.picture.empty())
        return part("bare-row", {{"colour", colour},
                                 {"plate", name},
                                 {"ink", plate.tints.tint || plate.tints.solid ? inkCell(plate) : "no ink"}});
    return part("row", {{"colour", colour},
                        {"plate", name},
                        {"asked", askedCell(plate)},
                        {"measured", measuredCell(plate, dpi)},
                        {"ink", inkCell(plate)},
                        {"levels", levelsCell(plate, dpi)},
                        {"film", plate.film.empty() ? "–"
                                                    : part("film", {{"file", escaped(plate.film)},
                                                                    {"kind", escaped(plate.kind)}})}});
}

}  // namespace riders::looking
