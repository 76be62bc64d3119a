#include "film/plate_film.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "film/film_rows.h"
#include "screening/compare.h"

namespace riders::film {

PlateFilm::PlateFilm(PlateFilmPlan plan)
    : plan_(std::move(plan)), window_(plan_.measuredAt, plan_.sheet.resolution, plan_.place->left(),
                                      plan_.place->top(), plan_.sheet.columns, plan_.sheet.rows),
      tones_(plan_.sheet.columns), bits_((plan_.sheet.columns + 7) / 8), mirrored_(bits_.size())
{
    if (plan_.inked)
        begin();
}

void PlateFilm::take(const std::uint8_t *tones)
{
    const std::size_t row = pageRow_++;
    if (!writer_ && !hasInk(tones))
        return;
    if (!writer_)
        begin();
    writeBlankUntil(plan_.place->top() + row);
    std::memcpy(tones_.data() + plan_.place->left(), tones, plan_.pageColumns);
    writeRow();
}

void PlateFilm::takeLast()
{
    if (writer_)
        writeBlankUntil(plan_.sheet.rows);
}

bool PlateFilm::hasInk(const std::uint8_t *tones) const
{
    return std::any_of(tones, tones + plan_.pageColumns, [](std::uint8_t tone) { return tone != 0; });
}

void PlateFilm::begin()
{
    screening_ = plan_.screen();
    Label label = plan_.label;
    label.reachedFrequency = screening_->frequency;
    label.reachedAngle = screening_->angle;
    marks_ = std::make_unique<const PlateMarks>(*plan_.place, label);
    writer_ = plan_.write(plan_.sheet);
}

// tones_ is blank between rows.
void PlateFilm::writeBlankUntil(std::size_t y)
{
    while (y_ < y)
        writeRow();
}

void PlateFilm::writeRow()
{
    const std::size_t columns = plan_.sheet.columns;
    marks_->tones(y_, tones_.data());
    screening::screenRow(screening_->thresholds, 0, static_cast<std::int64_t>(y_), tones_.data(), columns,
                         bits_.data());
    std::memset(tones_.data(), 0, tones_.size());
    window_.take(y_, bits_.data());
    for (const std::shared_ptr<KeptWindow> &window : plan_.shown)
        window->take(y_, bits_.data());
    if (plan_.tiles)
        plan_.tiles->take(y_, bits_.data());
    marks_->draw(y_, bits_.data());
    if (plan_.side.negative)
        invertRow(bits_.data(), columns);
    if (plan_.side.mirrored)
        mirrorRow(bits_.data(), columns, mirrored_.data());
    writer_->row(plan_.side.mirrored ? mirrored_.data() : bits_.data());
    ++y_;
}

}  // namespace riders::film
