// Text on films.
#include <gtest/gtest.h>

#include <string>

#include "film/drawing/lettering.h"

namespace {

using namespace riders;

TEST(FilmLettering, ShapesWhatIsNotLatin)
{
    const film::Lettering lettering({300, 300});
    const auto line = [&](const char *text) { return lettering.line(text, {.size = 10}); };
    // A character that no font has is a box; all others look like themselves.
    const film::LetteredLine none = line("\u0378");
    for (const char *text : {"я", "Ω", "ש", "ن", "ß", "Ł"})
        EXPECT_NE(line(text).picture.bits, none.picture.bits) << text;
    // Arabic letters join, and Hebrew is written from right to left.
    EXPECT_LT(line("نص").advance, line("ن").advance + line("ص").advance - 5);
    EXPECT_EQ(line("אב").picture.bits, line("\u202dבא").picture.bits);
    EXPECT_NE(line("אב").picture.bits, line("בא").picture.bits);
}

TEST(FilmLettering, IsAsLargeInPointsOnPixelsThatAreNotSquare)
{
    const film::Lettering square({600, 600}), wide({1200, 600}), high({600, 1200});
    const film::TextStyle style{.size = 9, .bold = true};
    const film::LetteredLine is = square.line("Magenta", style);
    const film::LetteredLine across = wide.line("Magenta", style), down = high.line("Magenta", style);
    EXPECT_NEAR(double(across.advance), double(2 * is.advance), 3);
    EXPECT_NEAR(double(down.advance), double(is.advance), 3);
    const auto ink = [](const film::BitPicture &picture) {
        double count = 0;
        for (const std::uint8_t byte : picture.bits)
            count += __builtin_popcount(byte);
        return count;
    };
    // Twice the pixels, and twice of them black: no letter is cut off or drawn over another.
    EXPECT_NEAR(ink(across.picture) / ink(is.picture), 2, 0.03);
    EXPECT_NEAR(ink(down.picture) / ink(is.picture), 2, 0.03);
}

TEST(FilmLettering, LosesTheMiddleOfWhatIsTooLong)
{
    const film::Lettering lettering({300, 600});
    const film::LetteredLine line = lettering.line(std::string(500, 'm'), {.size = 8, .width = 72});
    EXPECT_LE(line.advance, 300);
    EXPECT_GE(line.advance, 250);
}

}  // namespace
