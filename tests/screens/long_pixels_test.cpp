// The screens of riders files on devices whose pixels are not square: fills and images, one ink and four.
#include <gtest/gtest.h>

#include <cmath>

#include "meter/meter.h"
#include "printed/postscript_support.h"
#include "screens/plain_bitmap.h"
#include "support/screen_pairs.h"

namespace {

namespace meter = riders::meter;

struct Device {
    const char *name, *options;
    bool fourInks;
    int across, down;                   // pixels per inch
    double frequencyError, angleError;  // at most, %, degrees
};

std::ostream &operator<<(std::ostream &out, const Device &device)
{
    return out << device.name;
}

constexpr double kSide = 1.25;  // inches of each tint

std::string jobFor(const ScreenPair &pair, bool fourInks)
{
    std::ostringstream frequency, angle;
    frequency << pair.frequency, angle << pair.angle;
    return "%!PS\n{} settransfer\n" +
           composeRiders({.frequency = frequency.str(), .angle = angle.str(), .spotBody = pieceBytes(16128)}) +
           (fourInks ? ".5 .5 .5 .5 setcmykcolor" : ".5 setgray") +
           " 0 0 108 108 rectfill gsave 108 0 translate 108 108 scale 1 1 8 [1 0 0 1 0 0] " +
           (fourInks ? "{<80808080>} false 4 colorimage" : "{<80>} image") + " grestore showpage\n";
}

// Each pixel of the first ink as often as it takes to make it square, as it is on paper.
class SquaredPage {
public:
    SquaredPage(const std::string &file, const Device &device)
        : wide_(device.across < device.down ? device.down / device.across : 1),
          high_(device.down < device.across ? device.across / device.down : 1),
          columns_(int(2 * kSide * device.across)), rows_(int(kSide * device.down)),
          rowBytes_(std::size_t(columns_ * wide_ + 7) / 8), bits_(rowBytes_ * std::size_t(rows_ * high_))
    {
        const std::string bytes = contentsOf(file);
        const std::size_t rowOfFile = std::size_t(device.fourInks ? columns_ / 2 : (columns_ + 7) / 8);
        const std::size_t start = bytes.size() - rowOfFile * std::size_t(rows_);
        for (int y = 0; y < rows_ * high_; ++y)
            for (int x = 0; x < columns_ * wide_; ++x) {
                const int column = x / wide_;
                const auto byte = static_cast<unsigned char>(bytes.at(
                    start + std::size_t(y / high_) * rowOfFile + std::size_t(column / (device.fourInks ? 2 : 8))));
                if ((device.fourInks ? byte & (column % 2 ? 0x08 : 0x80) : byte >> (7 - column % 8) & 1) != 0)
                    bits_[std::size_t(y) * rowBytes_ + std::size_t(x / 8)] |=
                        static_cast<std::uint8_t>(0x80 >> x % 8);
            }
        dpi_ = std::max(device.across, device.down);
    }
    meter::ScreenReading read(bool image) const
    {
        const int side = rows_ * high_;
        return meter::readScreen({bits_.data(), columns_ * wide_, side, rowBytes_, dpi_},
                                 meter::PageWindow{image ? side : 0, 0, side, side});
    }

private:
    int wide_, high_, columns_, rows_;
    std::size_t rowBytes_;
    std::vector<std::uint8_t> bits_;
    double dpi_ = 0;
};

class LongPixels : public ::testing::TestWithParam<Device> {
protected:
    TemporaryFolder folder;
};

// A few of the pairs; all of them with RIDERS_EVERY_PAIR=1.
TEST_P(LongPixels, GetTheScreenThatWasAskedFor)
{
    const Device &device = GetParam();
    const std::size_t step = std::getenv("RIDERS_EVERY_PAIR") != nullptr ? 1 : 31;
    double worstFrequency = 0, worstAngle = 0;
    for (std::size_t i = 2; i < screenPairs().size(); i += step) {
        const ScreenPair pair = screenPairs()[i];
        if (std::min(device.across, device.down) * std::max(device.across, device.down) <
            17 * pair.frequency * pair.frequency)
            continue;  // fewer than 16 pixels: another screen, and a message
        SCOPED_TRACE(std::to_string(pair.frequency) + " lpi, " + std::to_string(pair.angle) + " degrees");
        const auto result = runGhostscript(folder, jobFor(pair, device.fourInks), "page",
                                           std::string(device.options) + " -r" + std::to_string(device.across) +
                                               "x" + std::to_string(device.down) + " -g" +
                                               std::to_string(int(2 * kSide * device.across)) + "x" +
                                               std::to_string(int(kSide * device.down)));
        EXPECT_EQ(result.output + result.errors, "");
        const SquaredPage page(folder / "page", device);
        for (const bool image : {false, true}) {
            const meter::ScreenReading reading = page.read(image);
            ASSERT_EQ(reading.kind, meter::ScreenKind::dots);
            if (step == 1)
                std::printf("%s %g@%g: %.3f %.3f\n", device.name, pair.frequency, pair.angle,
                            reading.frequency - pair.frequency, std::remainder(reading.angle - pair.angle, 90));
            worstFrequency = std::max(worstFrequency, 100 * std::abs(reading.frequency / pair.frequency - 1));
            worstAngle = std::max(worstAngle, std::abs(std::remainder(reading.angle - pair.angle, 90)));
            EXPECT_NEAR(reading.ink, 0.5, 0.007);
            EXPECT_LT(reading.beat.strength, 0.35);
        }
    }
    EXPECT_LT(worstFrequency, device.frequencyError);
    EXPECT_LT(worstAngle, device.angleError);
    if (step == 1)
        std::printf("%s: at most %.3f %% and %.3f degrees off\n", device.name, worstFrequency, worstAngle);
}

INSTANTIATE_TEST_SUITE_P(Devices, LongPixels,
                         ::testing::Values(Device{"Inkjet", "-sDEVICE=pbmraw", false, 720, 360, 0.4, 0.3},
                                           Device{"FineInkjet", "-sDEVICE=pbmraw", false, 1440, 720, 0.4, 0.3},
                                           Device{"HighPixels", "-sDEVICE=pbmraw", false, 360, 720, 0.4, 0.3},
                                           Device{"FourInks", "-sDEVICE=bitcmyk", true, 720, 360, 0.5, 0.5}),
                         [](const auto &test) { return std::string(test.param.name); });

}  // namespace
