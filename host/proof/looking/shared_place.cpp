// Looks at the ink of small blocks.
#include <algorithm>
#include <bit>
#include <cmath>

#include "proof/looking/pattern_picture.h"

namespace riders::proof {
namespace {

constexpr double kBlocksPerInch = 20;

// For each block, how well all plates show their dots there, 0 to 1: the product of what each shows.
class SharedBlocks {
public:
    SharedBlocks(const std::vector<const plates::BitPlate *> &plates, double dpi)
        : bytes_(std::max(1, static_cast<int>(std::lround(dpi / kBlocksPerInch / 8)))),
          across(static_cast<int>(plates[0]->rowBytes) / bytes_), down(plates[0]->height / (bytes_ * 8)),
          inches(bytes_ * 8 / dpi), values_(static_cast<size_t>(across) * static_cast<size_t>(down), 1)
    {
        for (const plates::BitPlate *plate : plates)
            multiplyBy(*plate);
    }

    double at(int x, int y) const { return values_[static_cast<size_t>(y) * static_cast<size_t>(across) + x]; }

private:
    const int bytes_;  // of a block's row

public:
    const int across, down;
    const double inches;  // of a block's side

private:
    void multiplyBy(const plates::BitPlate &plate)
    {
        const int side = bytes_ * 8;
        std::vector<int> ink(static_cast<size_t>(across));
        for (int y = 0; y < down; ++y) {
            std::fill(ink.begin(), ink.end(), 0);
            for (int line = y * side; line < (y + 1) * side; ++line) {
                const std::uint8_t *byte = plate.row(line);
                for (int &block : ink)
                    for (const std::uint8_t *const end = byte + bytes_; byte < end; ++byte)
                        block += std::popcount(*byte);
            }
            for (int x = 0; x < across; ++x) {
                const float share =
                    static_cast<float>(ink[static_cast<size_t>(x)]) / static_cast<float>(side * side);
                values_[static_cast<size_t>(y) * static_cast<size_t>(across) + x] *= 4 * share * (1 - share);
            }
        }
    }

    std::vector<float> values_;
};

// The sums of all squares of so many blocks a side, from their upper left corners.
std::vector<double> squareSums(const SharedBlocks &blocks, int side)
{
    const int columns = blocks.across - side + 1, rows = blocks.down - side + 1;
    std::vector<double> above(static_cast<size_t>(blocks.across), 0), sums;  // above: of the rows of a square
    for (int y = 0; y < blocks.down; ++y) {
        for (int x = 0; x < blocks.across; ++x)
            above[static_cast<size_t>(x)] += blocks.at(x, y) - (y >= side ? blocks.at(x, y - side) : 0);
        if (y < side - 1)
            continue;
        double sum = 0;
        for (int x = 0; x < blocks.across; ++x) {
            sum += above[static_cast<size_t>(x)] - (x >= side ? above[static_cast<size_t>(x - side)] : 0);
            if (x >= side - 1)
                sums.push_back(sum);
        }
    }
    return columns > 0 && rows > 0 ? sums : std::vector<double>{};
}

}  // namespace

double sharedArea(const std::vector<const plates::BitPlate *> &plates, double dpi)
{
    const SharedBlocks blocks(plates, dpi);
    double sum = 0;
    for (int y = 0; y < blocks.down; ++y)
        for (int x = 0; x < blocks.across; ++x)
            sum += blocks.at(x, y);
    return sum * blocks.inches * blocks.inches;
}

plates::Place sharedPlace(const std::vector<const plates::BitPlate *> &plates, double dpi, double side)
{
    const double pageWidth = plates[0]->width / dpi, pageHeight = plates[0]->height / dpi;
    const SharedBlocks blocks(plates, dpi);
    const int most = std::min(blocks.across, blocks.down);
    const int inBlocks = std::clamp(static_cast<int>(std::lround(side / blocks.inches)), std::min(1, most), most);
    const std::vector<double> sums = squareSums(blocks, inBlocks);
    const double width = std::min(side, pageWidth), height = std::min(side, pageHeight);
    if (sums.empty())
        return {0, 0, width, height};
    const auto best = std::max_element(sums.begin(), sums.end()) - sums.begin();
    const auto columns = blocks.across - inBlocks + 1;
    return {std::clamp(static_cast<double>(best % columns) * blocks.inches, 0.0, pageWidth - width),
            std::clamp(static_cast<double>(best / columns) * blocks.inches, 0.0, pageHeight - height), width,
            height};
}

}  // namespace riders::proof
