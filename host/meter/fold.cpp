#include "meter/fold.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "meter/bin_counts.h"

namespace riders::meter {

namespace {

constexpr int kBlocksASide = 12;
constexpr int kSmallestBlock = 16;  // pixels
static_assert(kBins == FoldedCell::kSide);

thread_local std::uint64_t laid = 0;

// Bell curve weights from the middle out.
std::vector<float> bell(double spread)
{
    std::vector<float> weights;
    for (int i = 0; i <= int(std::ceil(3 * spread)) && i < kBins / 2; ++i)
        weights.push_back(float(std::exp(-0.5 * i * i / (spread * spread))));
    return weights;
}

std::vector<float> blurred(const std::vector<float> &bins, int columns, int rows,
                           const std::vector<float> &weights)
{
    const auto along = [&](const std::vector<float> &from, int size, std::size_t step, auto startOf, int lanes) {
        std::vector<float> to(from.size());
        if (size == 1)
            return from;
        for (int lane = 0; lane < lanes; ++lane)
            for (int i = 0; i < size; ++i) {
                const std::size_t start = startOf(lane);
                float sum = from[start + i * step] * weights[0];
                for (int k = 1; k < int(weights.size()); ++k)
                    sum += weights[k] *
                           (from[start + (i + k) % size * step] + from[start + (i - k + size) % size * step]);
                to[start + i * step] = sum;
            }
        return to;
    };
    const auto across = along(
        bins, columns, 1, [&](int row) { return std::size_t(row) * columns; }, rows);
    return along(
        across, rows, columns, [](int column) { return std::size_t(column); }, columns);
}

// Every so manieth bin.
void copyCounts(const BinCounts &counts, std::size_t step, std::size_t bins, float *pixels, float *inked)
{
    // No block has more pixels than a float counts exactly.
    const auto *white = reinterpret_cast<const std::int32_t *>(counts.data());
    const std::int32_t *ink = white + std::size_t(kBins) * kBins;
    if (step == 1)
        for (std::size_t i = 0; i < std::size_t(kBins) * kBins; ++i)
            pixels[i] = float(white[i] + ink[i]), inked[i] = float(ink[i]);
    else
        for (std::size_t i = 0; i < bins; ++i)
            pixels[i] = float(white[i * step] + ink[i * step]), inked[i] = float(ink[i * step]);
}

void addAll(const std::vector<float> &from, std::vector<float> &to)
{
    const float *one = from.data();
    float *sum = to.data();
    for (std::size_t i = 0, count = to.size(); i < count; ++i)
        sum[i] += one[i];
}

// Solves the symmetric system by elimination; unknowns that nothing determines stay 0.
std::array<double, 4> solve(std::array<std::array<double, 5>, 4> m)
{
    double largest = 0;
    for (int i = 0; i < 4; ++i)
        largest = std::max(largest, m[i][i]);
    for (int i = 0; i < 4; ++i)
        m[i][i] += 1e-6 * largest + 1e-30;
    for (int i = 0; i < 4; ++i)
        for (int j = i + 1; j < 4; ++j) {
            const double factor = m[j][i] / m[i][i];
            for (int k = i; k < 5; ++k)
                m[j][k] -= factor * m[i][k];
        }
    std::array<double, 4> x{};
    for (int i = 3; i >= 0; --i) {
        double sum = m[i][4];
        for (int k = i + 1; k < 4; ++k)
            sum -= m[i][k] * x[k];
        x[i] = sum / m[i][i];
    }
    return x;
}

}  // namespace

std::uint64_t pixelsLaid()
{
    return laid;
}

double FoldedCell::ink() const
{
    double ones = 0, all = 0;
    for (std::size_t i = 0; i < bins(); ++i)
        ones += inked[i], all += pixels[i];
    return all > 0 ? ones / all : 0;
}

std::vector<float> FoldedCell::shares(double spread) const
{
    const std::vector<float> weights = bell(std::max(spread, 1.0));
    const std::vector<float> all = blurred(pixels, columns, rows, weights);
    const std::vector<float> ones = blurred(inked, columns, rows, weights);
    const float mean = float(ink());
    std::vector<float> shares(bins());
    for (std::size_t i = 0; i < bins(); ++i) {
        if (spread == 0 && pixels[i] > 0)
            shares[i] = inked[i] / pixels[i];
        else
            shares[i] = all[i] > 0 ? ones[i] / all[i] : mean;
    }
    return shares;
}

double FoldedCell::evenness() const
{
    const double mean = ink();
    double all = 0, within = 0, filled = 0;
    for (std::size_t i = 0; i < bins(); ++i)
        if (pixels[i] > 0) {
            const double share = inked[i] / pixels[i];
            within += pixels[i] * share * (1 - share);
            all += pixels[i];
            ++filled;
        }
    if (all <= 2 * filled || mean <= 0 || mean >= 1)
        return 0;
    return std::clamp(1 - within / (all - filled) / (mean * (1 - mean)), 0.0, 1.0);
}

Folding::Folding(const BitPage &page, const PageWindow &window, int pixels) : page_(page), window_(window)
{
    const int columns = std::clamp(window.width / kSmallestBlock, 1, kBlocksASide);
    const int rows = std::clamp(window.height / kSmallestBlock, 1, kBlocksASide);
    const int side = int(std::sqrt(double(pixels) / (columns * rows)));
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            const int roomX = window.width / columns, roomY = window.height / rows;
            Block block{};
            block.width = std::min(roomX, side), block.height = std::min(roomY, side);
            block.left = window.left + column * roomX + (roomX - block.width) / 2;
            block.top = window.top + row * roomY + (roomY - block.height) / 2;
            block.x = block.left + (block.width - 1) / 2.0 - (window.left + (window.width - 1) / 2.0);
            block.y = block.top + (block.height - 1) / 2.0 - (window.top + (window.height - 1) / 2.0);
            blocks_.push_back(block);
        }
}

void Folding::lay(const Lattice &lattice)
{
    lines_ = lattice.lines();
    for (Block &block : blocks_)
        layBlock(block, lattice);
    cell_ = blocks_[0].cell;
    for (std::size_t b = 1; b < blocks_.size(); ++b) {
        addAll(blocks_[b].cell.pixels, cell_.pixels);
        addAll(blocks_[b].cell.inked, cell_.inked);
    }
}

void Folding::layBlock(Block &block, const Lattice &lattice)
{
    BinCounts counts{};
    const double x0 = block.x - (block.width - 1) / 2.0, y0 = block.y - (block.height - 1) / 2.0;
    const std::uint32_t stepU = phaseStep(lattice.across.x), stepV = phaseStep(lattice.down.x);
    for (int y = 0; y < block.height; ++y)
        countBins(page_.row(block.top + y), block.left, block.left + block.width,
                  {phaseAt(lattice.across, x0, y0 + y), phaseAt(lattice.down, x0, y0 + y), stepU, stepV}, counts);
    laid += std::uint64_t(block.width) * std::uint64_t(block.height);
    FoldedCell &cell = block.cell;
    cell.columns = lines_ ? 1 : kBins;
    cell.rows = kBins;
    cell.pixels.resize(std::size_t(cell.columns) * kBins);
    cell.inked.resize(cell.pixels.size());
    copyCounts(counts, std::size_t(kBins / cell.columns), cell.bins(), cell.pixels.data(), cell.inked.data());
}

Lattice Folding::correction(double spread, double slopeSpread) const
{
    const int columns = cell_.columns, rows = cell_.rows;
    const std::vector<float> shares = cell_.shares(spread), smooth = cell_.shares(slopeSpread);
    std::array<std::array<double, 5>, 4> equations{};
    std::vector<double> slopeU(shares.size()), slopeV(shares.size());
    for (int v = 0; v < rows; ++v)
        for (int u = 0; u < columns; ++u) {
            const auto at = [&](int du, int dv) {
                return smooth[std::size_t((v + dv + rows) % rows) * columns + (u + du + columns) % columns];
            };
            slopeU[v * columns + u] = (at(1, 0) - at(-1, 0)) * float(columns) / 2;
            slopeV[v * columns + u] = (at(0, 1) - at(0, -1)) * float(rows) / 2;
        }
    for (const Block &block : blocks_) {
        double uu = 0, uv = 0, vv = 0, ru = 0, rv = 0;
        const float *pixels = block.cell.pixels.data(), *inked = block.cell.inked.data();
        for (std::size_t i = 0; i < shares.size(); ++i) {
            const double n = pixels[i], rest = inked[i] - n * shares[i], byU = slopeU[i], byV = slopeV[i];
            uu += n * byU * byU, uv += n * byU * byV, vv += n * byV * byV;
            ru += rest * byU, rv += rest * byV;
        }
        const double place[2] = {block.x, block.y};
        for (int i = 0; i < 2; ++i) {
            for (int j = 0; j < 2; ++j) {
                const double square = place[i] * place[j];
                equations[i][j] += uu * square, equations[2 + i][2 + j] += vv * square;
                equations[i][2 + j] += uv * square, equations[2 + i][j] += uv * square;
            }
            equations[i][4] += ru * place[i], equations[2 + i][4] += rv * place[i];
        }
    }
    const std::array<double, 4> by = solve(equations);
    return lines_ ? Lattice{{}, {by[2], by[3]}} : Lattice{{by[0], by[1]}, {by[2], by[3]}};
}

CellFit::CellFit(const BitPage &page, const PageWindow &window, const Lattice &lattice)
    : page_(page), lattice_(lattice), middleX_(window.left + (window.width - 1) / 2.0),
      middleY_(window.top + (window.height - 1) / 2.0)
{
    Folding folding(page, window, 500'000);
    folding.lay(lattice);
    columns_ = folding.cell().columns;
    shares_ = folding.cell().shares(0);
}

double CellFit::disagreement(const PageWindow &part) const
{
    constexpr int kMostRows = 200;
    const int step = std::max(1, part.height / kMostRows) | 1;  // odd: not in step with the cells
    BinCounts counts{};
    const std::uint32_t stepU = phaseStep(lattice_.across.x), stepV = phaseStep(lattice_.down.x);
    for (int y = part.top; y < part.top + part.height; y += step)
        countBins(page_.row(y), part.left, part.left + part.width,
                  {phaseAt(lattice_.across, part.left - middleX_, y - middleY_),
                   phaseAt(lattice_.down, part.left - middleX_, y - middleY_), stepU, stepV},
                  counts);
    double sum = 0, pixels = 0;
    for (std::size_t bin = 0; bin < std::size_t(kBins) * kBins; ++bin) {
        const double share = shares_[columns_ == 1 ? bin / kBins : bin], all = pixelsIn(counts, bin);
        const double inked = inkedIn(counts, bin);
        sum += inked * (1 - share) + (all - inked) * share;
        pixels += all;
    }
    return pixels > 0 ? sum / pixels : 0;
}

double Folding::effect(const Lattice &by) const
{
    const double x = window_.width / 2.0, y = window_.height / 2.0;
    return std::max(std::abs(by.across.x) * x + std::abs(by.across.y) * y,
                    std::abs(by.down.x) * x + std::abs(by.down.y) * y);
}

}  // namespace riders::meter
