// The screens of films, measured as dots: on every pair of frequency and angle.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "meter/meter.h"
#include "screening/compare.h"
#include "support/screen_pairs.h"

namespace {

namespace meter = riders::meter;
namespace screening = riders::screening;

double roundDot(double x, double y)
{
    return 1 - (x * x + y * y);
}

class Film {
public:
    Film(const ScreenPair &pair, int dpi, double inches, int tone)
        : side_(static_cast<int>(inches * dpi)), rowBytes_((static_cast<std::size_t>(side_) + 7) / 8),
          bits_(rowBytes_ * static_cast<std::size_t>(side_)), dpi_(dpi)
    {
        const screening::Resolution resolution = {double(dpi), double(dpi)};
        const screening::Thresholds thresholds(screening::findTile({pair.frequency, pair.angle}, resolution),
                                               roundDot);
        const std::vector<std::uint8_t> tones(static_cast<std::size_t>(side_), static_cast<std::uint8_t>(tone));
        for (std::size_t y = 0; y < static_cast<std::size_t>(side_); ++y)
            screening::screenRow(thresholds, 0, std::int64_t(y), tones.data(), tones.size(),
                                 &bits_[y * rowBytes_]);
    }

    meter::BitPage page() const { return {bits_.data(), side_, side_, rowBytes_, double(dpi_)}; }
    meter::ScreenReading read() const { return meter::readScreen(page(), meter::PageWindow{0, 0, side_, side_}); }

private:
    int side_;
    std::size_t rowBytes_;
    std::vector<std::uint8_t> bits_;
    int dpi_;
};

// 0.02 lines per inch and 0.004 degrees are what makers of precise screens aim at.
TEST(FilmScreen, IsWithinTheAimOfPreciseScreens)
{
    const std::vector<ScreenPair> pairs = screenPairs();
    for (std::size_t i = 0; i < pairs.size(); i += 7) {  // ./measure takes them all
        const ScreenPair &pair = pairs[i];
        SCOPED_TRACE(std::to_string(pair.frequency) + " lpi, " + std::to_string(pair.angle) + " degrees");
        const Film film(pair, 1200, 1.5, 128);
        const meter::ScreenReading reading = film.read();
        ASSERT_EQ(reading.kind, meter::ScreenKind::dots);
        EXPECT_NEAR(reading.frequency, pair.frequency, 0.02);
        EXPECT_NEAR(std::remainder(reading.angle - pair.angle, 90), 0, 0.004);
        EXPECT_NEAR(reading.ink, 128 / 255.0, 0.002);
        EXPECT_LT(reading.beat.strength, 0.1);
        EXPECT_GT(meter::likenessTo(film.page(), reading, roundDot).correlation, 0.995);
    }
}

}  // namespace
