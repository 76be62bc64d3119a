#include "plates/measuring/flat_tint.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "plates/measuring/telling_place.h"

namespace riders::plates {
namespace {

constexpr double kMillimetre = 1 / 25.4;
constexpr double kLongestWindow = 1.5, kShortestWindow = 0.1;  // inches
constexpr int kStep = 2;                                       // every second pixel is looked at

struct Rectangle {
    int left = 0, top = 0, width = 0, height = 0;
};

// Finds rectangles of one tint, each as large as possible, row by row of the
// page: how far up each column keeps its tint, and for each stretch of a row
// the rectangles that end there.
class FlatRectangles {
public:
    FlatRectangles(const TintPlate &plate, double most)
        : plate_(plate), most_(most), columns_(plate.width / kStep), up_(static_cast<size_t>(columns_))
    {
    }

    Rectangle best()
    {
        for (int y = 0; y < plate_.height; y += kStep) {
            growColumns(y);
            for (int x = 0; x < columns_;)
                x = stretch(x, y);
        }
        return best_;
    }

private:
    int at(int column, int y) const { return plate_.row(y)[std::ptrdiff_t{column} * kStep]; }

    void growColumns(int y)
    {
        for (int x = 0; x < columns_; ++x) {
            const bool same = y >= kStep && at(x, y) == at(x, y - kStep);
            up_[static_cast<size_t>(x)] = same ? up_[static_cast<size_t>(x)] + 1 : 1;
        }
    }

    // Judges what ends in the stretch from the column to where the tint changes; returns that place.
    int stretch(int first, int y)
    {
        const int tint = at(first, y);
        int end = first + 1;
        while (end < columns_ && at(end, y) == tint)
            ++end;
        if (tint >= 10 && tint <= 245)
            judge(first, end, y, tint);
        return end;
    }

    void judge(int first, int end, int y, int tint)
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

    void offer(const Rectangle &found, int tint)
    {
        const double score =
            std::min<double>(found.width, most_) * std::min<double>(found.height, most_) * (0.1 + telling(tint));
        if (score <= score_)
            return;
        score_ = score;
        best_ = {found.left * kStep, found.top - (found.height - 1) * kStep, found.width * kStep,
                 found.height * kStep};
    }

    const TintPlate &plate_;
    const double most_;
    const int columns_;
    std::vector<int> up_;
    std::vector<Rectangle> open_;
    Rectangle best_;
    double score_ = 0;
};

}  // namespace

TintRange tintRange(const TintPlate &plate, double dpi)
{
    std::array<size_t, 256> counts{};
    for (std::uint8_t ink : plate.ink)
        ++counts[ink];
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

Place flatTint(const TintPlate &plate, double dpi)
{
    const Rectangle found = FlatRectangles(plate, kLongestWindow * dpi / kStep).best();
    const double edge = 2 * kStep;
    Place place{(found.left + edge) / dpi, (found.top + edge) / dpi, (found.width - 2 * edge) / dpi,
                (found.height - 2 * edge) / dpi};
    if (place.width < kShortestWindow || place.height < kShortestWindow)
        return {};
    const double width = std::min(place.width, kLongestWindow), height = std::min(place.height, kLongestWindow);
    return {place.left + (place.width - width) / 2, place.top + (place.height - height) / 2, width, height};
}

}  // namespace riders::plates
