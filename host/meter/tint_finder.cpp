#include "meter/tint_finder.h"

#include <algorithm>
#include <cmath>

#include "meter/ink_of_columns.h"

namespace riders::meter {

namespace {

constexpr double kLargest = 3;  // inches
constexpr double kLeastInk = 0.015;
constexpr double kCoarsestScreen = 20;  // lines per inch

// Ink of the page in square blocks, and sums over any rectangle of them.
class Blocks {
public:
    Blocks(const BitPage &page, int side) : side_(side), columns(page.width / side), rows(page.height / side)
    {
        sums_.assign(std::size_t(columns + 1) * (rows + 1), 0);
        for (int row = 0; row < rows; ++row) {
            const std::vector<std::int64_t> band = inkOfColumns(page, columns, side, row * side, (row + 1) * side);
            double sum = 0;
            for (int column = 0; column < columns; ++column) {
                sum += double(band[column]);
                sums_[index(column + 1, row + 1)] = sums_[index(column + 1, row)] + sum;
            }
        }
    }

    double ink(int column, int row, int width, int height) const
    {
        const double sum = sums_[index(column + width, row + height)] - sums_[index(column, row + height)] -
                           sums_[index(column + width, row)] + sums_[index(column, row)];
        return sum / (double(width) * height * side_ * side_);
    }

private:
    std::size_t index(int column, int row) const { return std::size_t(row) * (columns + 1) + column; }

    int side_;

public:
    const int columns, rows;

private:
    std::vector<double> sums_;
};

// A rectangle of blocks.
struct Area {
    int column, row, width, height;
    bool meets(const Area &other) const
    {
        return column < other.column + other.width && other.column < column + width &&
               row < other.row + other.height && other.row < row + height;
    }
};

class TintSearch {
public:
    TintSearch(const BitPage &page, int side)
        : inches_(side / page.dpi), blocks_(page, side), largest_(std::clamp(int(kLargest / inches_), 2, 1000))
    {
    }

    std::vector<Area> find(int most)
    {
        for (int side = std::min({largest_, blocks_.columns, blocks_.rows}); side >= 2;
             side -= std::max(1, side / 8))
            for (int row = 0; row + side <= blocks_.rows; ++row)
                for (int column = 0; column + side <= blocks_.columns; ++column) {
                    if (int(found_.size()) == most)
                        return found_;
                    const Area area{column, row, side, side};
                    if (!taken(area) && even(area))
                        found_.push_back(grown(area));
                }
        return found_;
    }

private:
    bool taken(const Area &area) const
    {
        return std::any_of(found_.begin(), found_.end(), [&](const Area &other) { return other.meets(area); });
    }

    // How much a coarse screen's dots, cut by the edges, add to or take from a part of `side` blocks a side.
    double slack(double ink, int side) const
    {
        return 0.01 + std::min(ink, 1 - ink) * 1.2 / (kCoarsestScreen * side * inches_);
    }

    bool even(const Area &area) const
    {
        const double ink = blocks_.ink(area.column, area.row, area.width, area.height);
        if (ink < kLeastInk || ink > 1 - kLeastInk)
            return false;
        return evenAt(area, ink, std::max(1, std::min(area.width, area.height) / 3)) && evenAt(area, ink, 1);
    }

    // Whether every part of `side` blocks a side has the ink of the whole.
    bool evenAt(const Area &area, double ink, int side) const
    {
        const double most = slack(ink, side);
        for (int row = area.row; row + side <= area.row + area.height; row += side)
            for (int column = area.column; column + side <= area.column + area.width; column += side)
                if (std::abs(blocks_.ink(column, row, side, side) - ink) > most)
                    return false;
        return true;
    }

    Area grown(Area area) const
    {
        const auto tryTo = [&](const Area &larger) {
            if (larger.column < 0 || larger.row < 0 || larger.column + larger.width > blocks_.columns ||
                larger.row + larger.height > blocks_.rows || larger.width > largest_ || larger.height > largest_ ||
                taken(larger) || !even(larger))
                return false;
            area = larger;
            return true;
        };
        for (bool more = true; more;) {
            more = tryTo({area.column - 1, area.row, area.width + 1, area.height});
            more |= tryTo({area.column, area.row, area.width + 1, area.height});
            more |= tryTo({area.column, area.row - 1, area.width, area.height + 1});
            more |= tryTo({area.column, area.row, area.width, area.height + 1});
        }
        return area;
    }

    double inches_;
    Blocks blocks_;
    int largest_;
    std::vector<Area> found_;
};

}  // namespace

std::vector<PageWindow> findTints(const BitPage &page, int most)
{
    const int side = std::max(8, int(page.dpi / 10));
    std::vector<PageWindow> tints;
    if (page.width < 2 * side || page.height < 2 * side || most <= 0)
        return tints;
    for (const Area &area : TintSearch(page, side).find(most))
        tints.push_back({area.column * side, area.row * side, area.width * side, area.height * side});
    std::stable_sort(tints.begin(), tints.end(), [](const PageWindow &a, const PageWindow &b) {
        return double(a.width) * a.height > double(b.width) * b.height;
    });
    return tints;
}

}  // namespace riders::meter
