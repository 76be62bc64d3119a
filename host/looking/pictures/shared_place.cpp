#include "looking/pictures/shared_place.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace riders::looking {
namespace {

constexpr double kBlocksPerInch = 20;

// For each block, how well all plates show their dots there, 0 to 1: the product of what each shows.
class SharedBlocks {
public:
    explicit SharedBlocks(const std::vector<const InkBlocks *> &plates)
        : across(plates[0]->across), down(plates[0]->down), inches(plates[0]->inches),
          values_(static_cast<size_t>(across) * static_cast<size_t>(down), 1)
    {
        for (const InkBlocks *plate : plates)
            for (size_t i = 0; i < values_.size(); ++i) {
                const float share = static_cast<float>(plate->ink[i]) / 255;
                values_[i] *= 4 * share * (1 - share);
            }
    }

    double at(int x, int y) const { return values_[static_cast<size_t>(y) * static_cast<size_t>(across) + x]; }

    const int across, down;
    const double inches;  // of a block's side

private:
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

InkBlocks inkBlocks(const plates::TintPlate &plate, double dpi)
{
    const int side = std::max(1, static_cast<int>(std::lround(dpi / kBlocksPerInch)));
    InkBlocks blocks{plate.width / side, plate.height / side, side / dpi, plate.width / dpi, plate.height / dpi};
    std::vector<int> sums(static_cast<size_t>(blocks.across));
    for (int y = 0; y < blocks.down; ++y) {
        std::fill(sums.begin(), sums.end(), 0);
        for (int line = y * side; line < (y + 1) * side; ++line)
            for (int block = 0; block < blocks.across; ++block) {
                const std::uint8_t *first =
                    plate.row(line) + static_cast<size_t>(block) * static_cast<size_t>(side);
                sums[static_cast<size_t>(block)] =
                    std::accumulate(first, first + side, sums[static_cast<size_t>(block)]);
            }
        for (const int sum : sums)
            blocks.ink.push_back(static_cast<std::uint8_t>((sum + side * side / 2) / (side * side)));
    }
    return blocks;
}

double sharedArea(const std::vector<const InkBlocks *> &plates)
{
    const SharedBlocks blocks(plates);
    double sum = 0;
    for (int y = 0; y < blocks.down; ++y)
        for (int x = 0; x < blocks.across; ++x)
            sum += blocks.at(x, y);
    return sum * blocks.inches * blocks.inches;
}

plates::Place sharedPlace(const std::vector<const InkBlocks *> &plates, double side)
{
    const double pageWidth = plates[0]->pageWidth, pageHeight = plates[0]->pageHeight;
    const SharedBlocks blocks(plates);
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

}  // namespace riders::looking
