#include "choosing/sample.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <vector>

#include "io/refusal.h"
#include "screening/compare.h"
#include "screens/number_text.h"
#include "tables/formulas.h"
#include "tables/screen_tables.h"

namespace riders::choosing {
namespace {

constexpr int kAllInk = 255;
constexpr std::uint32_t kInk = 0x000000, kNoInk = 0xFFFFFF;
// How many of QuickDraw's pixels an inch of film is shown in: the usual resolutions are a whole number of times
// less.
constexpr int kPixelsPerInch = 1200;

screening::Thresholds thresholdsFor(const SampleWanted &wanted, io::Beside &unwanted)
{
    const screening::Screen screen{wanted.frequency, wanted.angle};
    const screening::Resolution resolution{double(wanted.dpi), double(wanted.dpi)};
    try {
        if (!wanted.file.empty())
            return tables::thresholdsOf(screens::shapeIn(wanted.file), screen, resolution,
                                        {.seconds = 5, .beside = &unwanted});
        return tables::thresholdsOf(tables::builtInShape(wanted.shape).value(), screen, resolution);
    } catch (const std::invalid_argument &) {
        throw io::Refusal(screens::numberText(wanted.frequency) + " lpi cannot be made at " +
                          std::to_string(wanted.dpi) + " dpi");
    }
}

// Tones of one row, the same in all rows.
toolbox::Picture screened(const screening::Thresholds &thresholds, const std::vector<std::uint8_t> &tones,
                          int rows)
{
    toolbox::Picture picture{static_cast<int>(tones.size()), rows, {}};
    std::vector<std::uint8_t> bits((tones.size() + 7) / 8);
    for (int y = 0; y < rows; ++y) {
        screening::screenRow(thresholds, 0, y, tones.data(), tones.size(), bits.data());
        for (std::size_t x = 0; x < tones.size(); ++x)
            picture.pixels.push_back(bits[x / 8] & 0x80 >> x % 8 ? kInk : kNoInk);
    }
    return picture;
}

// From no ink at the left to all at the right.
std::vector<std::uint8_t> rampOf(int columns)
{
    std::vector<std::uint8_t> tones;
    for (int x = 0; x < columns; ++x)
        tones.push_back(static_cast<std::uint8_t>(std::lround(double(x) * kAllInk / std::max(columns - 1, 1))));
    return tones;
}

int toneOf(int percent)
{
    return static_cast<int>(std::lround(percent * double(kAllInk) / 100));
}

double shareInked(const toolbox::Picture &picture)
{
    const auto inked = std::count(picture.pixels.begin(), picture.pixels.end(), kInk);
    return 100 * double(inked) / double(picture.pixels.size());
}

}  // namespace

Sample sampleOf(const SampleWanted &wanted, io::Beside &unwanted)
{
    const screening::Thresholds thresholds = thresholdsFor(wanted, unwanted);
    const screening::Tile &tile = thresholds.tile();
    Sample sample;
    sample.enlargement = std::clamp(static_cast<int>(std::lround(double(kPixelsPerInch) / wanted.dpi)), 1, 4);
    const int times = sample.enlargement;
    sample.ramp = screened(thresholds, rampOf(kRampWidth / times), kRampHeight / times);
    for (std::size_t i = 0; i < kTints.size(); ++i) {
        const int tone = toneOf(kTints[i]);
        sample.tints[i] =
            screened(thresholds, std::vector<std::uint8_t>(std::size_t(kTintWidth / times), std::uint8_t(tone)),
                     kTintHeight / times);
        sample.inked[i] = shareInked(sample.tints[i]);
    }
    const double across = double(tile.rightU) / double(tile.pixels),
                 down = double(tile.downU) / double(tile.pixels);
    sample.frequency = std::hypot(across, down) * wanted.dpi;
    const double angle = std::atan2(down, across) * 180 / std::numbers::pi;
    sample.angle = wanted.angle + std::remainder(angle - wanted.angle, 360);
    return sample;
}

}  // namespace riders::choosing
