#include "film/marks.h"

#include <cstring>
#include <utility>

#include "film/drawing/film_points.h"
#include "io/decimal.h"

namespace riders::film {

namespace {

// In points: the letters' size, and their baseline from the top of the label.
struct LabelLine {
    double size, baseline;
};
constexpr LabelLine kPlateLine{10, 9}, kScreenLine{7, 18}, kJobLine{7, 27};

std::string screenWords(double frequency, double angle, int digits)
{
    return io::decimal(frequency, digits) + " lpi, " + io::decimal(angle, digits) + "°";
}

std::string screenText(const Label &label)
{
    if (label.askedFrequency <= 0)
        return {};
    const std::string shape = label.shape.empty() ? "" : ", " + nameInLine(label.shape);
    return screenWords(label.askedFrequency, label.askedAngle, 3) + shape +
           " (reached: " + screenWords(label.reachedFrequency, label.reachedAngle, 3) + ")";
}

std::string jobText(const Label &label, const screening::Resolution &resolution)
{
    const std::string across = io::decimal(resolution.across, 2), down = io::decimal(resolution.down, 2);
    return nameInLine(label.job) + ", page " + std::to_string(label.page) + ", " + label.date + ", " +
           (across == down ? across : across + " x " + down) + " dpi";
}

}  // namespace

PlateMarks::PlateMarks(const Sheet &sheet, const Label &label) : sheet_(sheet)
{
    if (sheet.labelBox())
        drawLabel(*sheet.labelBox(), label);
}

void PlateMarks::drawLabel(const PixelBox &box, const Label &label)
{
    const FilmPoints points(sheet_.resolution());
    const double width = static_cast<double>(box.width()) * 72 / sheet_.resolution().across;
    const auto draw = [&](const std::string &text, const LabelLine &place, bool bold) {
        LetteredLine line = sheet_.lettering()->line(text, {.size = place.size, .bold = bold, .width = width});
        label_.picture(box.left + line.left, box.top + points.down(place.baseline) + line.top,
                       std::move(line.picture));
    };
    draw(nameInLine(label.plate), kPlateLine, true);
    draw(screenText(label), kScreenLine, false);
    draw(jobText(label, sheet_.resolution()), kJobLine, false);
}

void PlateMarks::tones(std::size_t y, std::uint8_t *row) const
{
    for (const WedgeStep &step : sheet_.wedge())
        if (const auto at = static_cast<std::int64_t>(y); at >= step.box.top && at < step.box.bottom)
            std::memset(row + step.box.left, (step.percent * 255 + 50) / 100,
                        static_cast<std::size_t>(step.box.width()));
}

void PlateMarks::draw(std::size_t y, std::uint8_t *bits) const
{
    sheet_.drawing().draw(static_cast<std::int64_t>(y), bits, sheet_.columns());
    label_.draw(static_cast<std::int64_t>(y), bits, sheet_.columns());
}

}  // namespace riders::film
