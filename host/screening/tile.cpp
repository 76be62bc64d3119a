#include "screening/tile.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <stdexcept>
#include <vector>

#include "screening/remainder.h"

namespace riders::screening {
namespace {

// 256 steps need this many pixels to be within a tenth of a point of their tints.
constexpr std::int64_t kLeastPixels = 1024;

struct Vector {
    std::int64_t x, y;  // pixels
    std::int64_t i, j;  // cells
    double length;      // cells
};

// From cells to pixels, for the screen as it was asked for.
class Cells {
public:
    Cells(const Screen &screen, const Resolution &resolution)
        : screen_(screen), resolution_(resolution), cos_(std::cos(screen.angle * std::numbers::pi / 180)),
          sin_(std::sin(screen.angle * std::numbers::pi / 180))
    {
    }

    Vector nearestPixels(std::int64_t i, std::int64_t j) const
    {
        const double across = (double(i) * cos_ - double(j) * sin_) / screen_.frequency,
                     down = (double(i) * sin_ + double(j) * cos_) / screen_.frequency;
        return {std::llround(across * resolution_.across), std::llround(down * resolution_.down), i, j,
                std::hypot(double(i), double(j))};
    }
    // How far the vector's end is from that many cells, along it and across it, in parts of its length and
    // radians.
    bool isWithin(const Vector &vector, double along, double across) const
    {
        const double x = double(vector.x) / resolution_.across * screen_.frequency,
                     y = double(vector.y) / resolution_.down * screen_.frequency;
        const double i = x * cos_ + y * sin_, j = y * cos_ - x * sin_;
        const double square = vector.length * vector.length;
        return std::abs((i * double(vector.i) + j * double(vector.j)) / square - 1) <= along &&
               std::abs((j * double(vector.i) - i * double(vector.j)) / square) <= across;
    }
    // Of a wave of that many periods to a pixel, across and down.
    double frequencyError(double across, double down) const
    {
        return std::abs(std::hypot(across * resolution_.across, down * resolution_.down) - screen_.frequency);
    }
    double angleError(double across, double down, double turned) const
    {
        const double angle =
            std::atan2(down * resolution_.down, across * resolution_.across) * 180 / std::numbers::pi;
        return std::abs(std::remainder(angle - screen_.angle - turned, 360));
    }
    // A cell's side along the shorter side of the pixels.
    double side() const { return std::max(resolution_.across, resolution_.down) / screen_.frequency; }

private:
    Screen screen_;
    Resolution resolution_;
    double cos_, sin_;
};

// One of each two vectors that differ only in sign.
template <typename Take>
void eachVector(std::int64_t within, Take take)
{
    for (std::int64_t i = 0; i <= within; ++i)
        for (std::int64_t j = i == 0 ? 1 : -within; j <= within; ++j)
            if (i * i + j * j <= within * within)
                take(i, j);
}

// The vector of the lattice that is `height` rows down, where height is the least there is: how far to the right.
std::int64_t shiftOf(const Vector &a, const Vector &b)
{
    std::int64_t y = a.y, x = a.x, nextY = b.y, nextX = b.x;
    while (nextY != 0) {
        const std::int64_t times = y / nextY;
        y -= times * nextY, x -= times * nextX;
        std::swap(y, nextY), std::swap(x, nextX);
    }
    return y < 0 ? -x : x;
}

// The tile of two vectors: its pixels, its screen's waves, and their frequency's error. The rest is costly.
Tile tileOf(const Vector &a, const Vector &b, const Cells &cells)
{
    Tile tile;
    const std::int64_t turn = a.x * b.y - a.y * b.x, sign = turn < 0 ? -1 : 1;
    tile.pixels = std::abs(turn);
    tile.rightU = sign * (a.i * b.y - b.i * a.y), tile.downU = sign * (b.i * a.x - a.i * b.x);
    tile.rightV = sign * (a.j * b.y - b.j * a.y), tile.downV = sign * (b.j * a.x - a.j * b.x);
    tile.firstX = a.x, tile.firstY = a.y, tile.secondX = b.x, tile.secondY = b.y;
    const double pixels = double(tile.pixels);
    tile.frequencyError =
        std::max(cells.frequencyError(double(tile.rightU) / pixels, double(tile.downU) / pixels),
                 cells.frequencyError(double(tile.rightV) / pixels, double(tile.downV) / pixels));
    return tile;
}

void addAngleError(Tile &tile, const Cells &cells)
{
    const double pixels = double(tile.pixels);
    tile.angleError = std::max(cells.angleError(double(tile.rightU) / pixels, double(tile.downU) / pixels, 0),
                               cells.angleError(double(tile.rightV) / pixels, double(tile.downV) / pixels, 90));
}

void addSides(Tile &tile, const Vector &a, const Vector &b)
{
    tile.height = std::gcd(a.y, b.y);
    tile.width = tile.pixels / tile.height;
    tile.shift = remainderFrom0(shiftOf(a, b), tile.width);
}

// Of all pairs of the vectors, the one with the fewest pixels that keeps within the tolerance; else the closest.
class Choice {
public:
    explicit Choice(const Tolerance &tolerance) : tolerance_(tolerance) {}

    void consider(const Vector &a, const Vector &b, const Cells &cells)
    {
        Tile tile = tileOf(a, b, cells);
        const double frequency = tile.frequencyError / tolerance_.frequency;
        // Whatever its angle is.
        if (frequency > 1 && (good_ || (best_.pixels != 0 && frequency >= error_)))
            return;
        addAngleError(tile, cells);
        const double error = std::max(frequency, tile.angleError / tolerance_.angle);
        const bool good = error <= 1;
        if (good_ && !good)
            return;
        if (best_.pixels == 0 || (good && !good_) || (good ? tile.pixels < best_.pixels : error < error_)) {
            addSides(tile, a, b);
            best_ = tile;
            error_ = error;
        }
        good_ = good_ || good;
    }
    bool mayTake(std::int64_t pixels) const
    {
        return pixels <= kMostTilePixels && (!good_ || pixels < best_.pixels);
    }
    bool good() const { return good_; }
    const Tile &best() const { return best_; }

private:
    Tolerance tolerance_;
    Tile best_;
    double error_ = 0;
    bool good_ = false;
};

void considerPairs(std::vector<Vector> &vectors, const Cells &cells, Choice &choice)
{
    constexpr std::size_t kMostVectors = 160;
    std::sort(vectors.begin(), vectors.end(),
              [](const Vector &a, const Vector &b) { return a.length < b.length; });
    vectors.resize(std::min(vectors.size(), kMostVectors));
    for (std::size_t b = 1; b < vectors.size(); ++b)
        for (std::size_t a = 0; a < b; ++a) {
            const Vector &one = vectors[a], &other = vectors[b];
            const std::int64_t pixels = std::abs(one.x * other.y - one.y * other.x);
            if (pixels != 0 && one.i * other.j != one.j * other.i && choice.mayTake(pixels))
                choice.consider(one, other, cells);
        }
}

// Vectors of at most so many cells whose ends are that close to whole pixels: multiples of the tolerance.
void considerWithin(std::int64_t within, double times, const Screen &screen, const Cells &cells,
                    const Tolerance &tolerance, Choice &choice)
{
    const double angle = times * tolerance.angle * std::numbers::pi / 180,
                 frequency = times * tolerance.frequency / screen.frequency;
    std::vector<Vector> vectors;
    eachVector(within, [&](std::int64_t i, std::int64_t j) {
        const Vector vector = cells.nearestPixels(i, j);
        if (cells.isWithin(vector, frequency, angle))
            vectors.push_back(vector);
    });
    considerPairs(vectors, cells, choice);
}

Tile search(const Screen &screen, const Cells &cells, const Tolerance &tolerance)
{
    constexpr double kMostSide = 8192;  // pixels
    Choice choice(tolerance);
    std::int64_t within = 2;
    for (; !choice.good() && double(within) * cells.side() <= kMostSide; within *= 2) {
        considerWithin(within, 1, screen, cells, tolerance, choice);
        // Where two vectors are not at right angles their errors are not the tile's.
        considerWithin(within, 4, screen, cells, tolerance, choice);
    }
    for (double times = 16; choice.best().pixels == 0; times *= 4)
        considerWithin(within, times, screen, cells, tolerance, choice);
    return choice.best();
}

// As many tiles in one as there have to be for the steps.
void enlarge(Tile &tile)
{
    while (tile.pixels * tile.copies * tile.copies < kLeastPixels)
        tile.copies *= 2;
    const std::int64_t times = tile.copies;
    tile.width *= times, tile.height *= times, tile.shift *= times;
    tile.pixels *= times * times;
    for (std::int64_t *step : {&tile.rightU, &tile.rightV, &tile.downU, &tile.downV})
        *step *= times * times;
}

}  // namespace

Tile findTile(const Screen &screen, const Resolution &resolution, const Tolerance &tolerance)
{
    const double across = resolution.across / screen.frequency, down = resolution.down / screen.frequency;
    if (!(across >= 2 && down >= 2 && across * down <= double(kMostCellPixels)) || !std::isfinite(screen.angle))
        throw std::invalid_argument("a screen that no tile can have");
    Tile tile = search(screen, Cells(screen, resolution), tolerance);
    enlarge(tile);
    return tile;
}

}  // namespace riders::screening
