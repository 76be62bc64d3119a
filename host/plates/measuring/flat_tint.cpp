#include "plates/measuring/flat_tint.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "plates/measuring/telling_place.h"

namespace riders::plates {
namespace {

constexpr double kMillimetre = 1 / 25.4;
constexpr double kLongestWindow = 1.5, kShortestWindow = 0.1;  // inches
constexpr double kFineEnough = 100;                            // looks to an inch

// Neighbours are often alike, and one number cannot be counted up twice at a time: so there are four of each.
std::array<size_t, 256> countsOf(const std::vector<std::uint8_t> &tints)
{
    std::array<std::array<size_t, 256>, 4> counts{};
    for (size_t i = 0; i < tints.size(); ++i)
        ++counts[i % 4][tints[i]];
    for (size_t tint = 0; tint < 256; ++tint)
        counts[0][tint] += counts[1][tint] + counts[2][tint] + counts[3][tint];
    return counts[0];
}

}  // namespace

TintRange tintRange(const TintPlate &plate, double dpi)
{
    const std::array<size_t, 256> counts = countsOf(plate.ink);
    const double enough = dpi * dpi * kMillimetre * kMillimetre;
    TintRange range;
    range.solid = counts[255] > 0;
    for (size_t ink = 1; ink < 255; ++ink) {
        if (static_cast<double>(counts[ink]) < enough)
            continue;
        if (!range.tint)
            range.least = static_cast<double>(ink) / 255;
        range.most = static_cast<double>(ink) / 255;
        range.tint = true;
    }
    return range;
}

FlatTint::FlatTint(int columns, double dpi)
    : dpi_(dpi), step_(std::max(1, static_cast<int>(dpi / kFineEnough))), columns_(columns / step_),
      up_(static_cast<size_t>(columns_)), row_(static_cast<size_t>(columns_))
{
}

void FlatTint::row(const std::uint8_t *tints)
{
    const int y = y_++;
    if (y % step_ != 0)
        return;
    for (int x = 0; x < columns_; ++x) {
        const std::uint8_t tint = tints[std::ptrdiff_t{x} * step_];
        int &up = up_[static_cast<size_t>(x)];
        std::uint8_t &above = row_[static_cast<size_t>(x)];
        up = y > 0 && tint == above ? up + 1 : 1;
        above = tint;
    }
    for (int x = 0; x < columns_;)
        x = stretch(x, y);
}

// Judges what ends in the stretch from the column to where the tint changes; returns that place.
int FlatTint::stretch(int first, int y)
{
    const int tint = row_[static_cast<size_t>(first)];
    int end = first + 1;
    while (end < columns_ && row_[static_cast<size_t>(end)] == tint)
        ++end;
    if (tint >= 10 && tint <= 245)
        judge(first, end, y, tint);
    return end;
}

void FlatTint::judge(int first, int end, int y, int tint)
{
    open_.clear();
    for (int x = first; x <= end; ++x) {
        const int height = x < end ? up_[static_cast<size_t>(x)] : 0;
        int left = x;
        while (!open_.empty() && open_.back().height >= height) {
            left = open_.back().left;
            offer({left, y, x - left, open_.back().height}, tint);
            open_.pop_back();
        }
        open_.push_back({left, 0, 0, height});
    }
}

void FlatTint::offer(const Rectangle &found, int tint)
{
    const double most = kLongestWindow * dpi_ / step_;
    const double score =
        std::min<double>(found.width, most) * std::min<double>(found.height, most) * (0.1 + telling(tint));
    if (score <= score_)
        return;
    score_ = score;
    best_ = {found.left * step_, found.top - (found.height - 1) * step_, found.width * step_,
             found.height * step_};
}

Place FlatTint::place() const
{
    const double edge = 2 * step_;
    Place place{(best_.left + edge) / dpi_, (best_.top + edge) / dpi_, (best_.width - 2 * edge) / dpi_,
                (best_.height - 2 * edge) / dpi_};
    if (place.width < kShortestWindow || place.height < kShortestWindow)
        return {};
    const double width = std::min(place.width, kLongestWindow), height = std::min(place.height, kLongestWindow);
    return {place.left + (place.width - width) / 2, place.top + (place.height - height) / 2, width, height};
}

Place flatTint(const TintPlate &plate, double dpi)
{
    FlatTint tint(plate.width, dpi);
    for (int y = 0; y < plate.height; ++y)
        tint.row(plate.row(y));
    return tint.place();
}

}  // namespace riders::plates
