#include "film/tabulated_spot.h"

#include <cmath>
#include <cstddef>
#include <memory>
#include <stdexcept>

namespace riders::film {
namespace {

struct Table {
    std::vector<float> values;
    int side;

    double at(int x, int y) const
    {
        return values[static_cast<std::size_t>(y % side) * static_cast<std::size_t>(side) +
                      static_cast<std::size_t>(x % side)];
    }
    double between(double x, double y) const
    {
        const double across = (x + 1) / 2 * side, down = (y + 1) / 2 * side;
        const int column = static_cast<int>(std::floor(across)), row = static_cast<int>(std::floor(down));
        const double right = across - column, below = down - row;
        // Places outside the cell are in another one.
        const int i = (column % side + side) % side, j = (row % side + side) % side;
        const double upper = at(i, j) * (1 - right) + at(i + 1, j) * right,
                     lower = at(i, j + 1) * (1 - right) + at(i + 1, j + 1) * right;
        return upper * (1 - below) + lower * below;
    }
};

}  // namespace

screening::SpotFunction tabulatedSpot(const std::vector<float> &values, int side)
{
    if (side < 1 || values.size() != static_cast<std::size_t>(side) * static_cast<std::size_t>(side))
        throw std::invalid_argument("a table that is not square");
    const auto table = std::make_shared<const Table>(Table{values, side});
    return [table](double x, double y) { return table->between(x, y); };
}

}  // namespace riders::film
