// How large a film is, and where its page and marks lie.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "film/marks.h"
#include "film_pixels.h"
#include "io/refusal.h"
#include "screening/compare.h"

namespace {

using namespace riders;
using film_tests::drawn;
using film_tests::PixelBox;
using film_tests::Pixels;

// Points.
plates::TonePage pageOf(double width, double height, const screening::Resolution &resolution)
{
    plates::TonePage page;
    page.number = 7;
    page.width = width / 72;
    page.height = height / 72;
    page.columns = static_cast<size_t>(std::lround(page.width * resolution.across));
    page.rows = static_cast<size_t>(std::lround(page.height * resolution.down));
    return page;
}

std::string refusalOf(const std::string &size)
{
    try {
        film::sheetSizeFrom(size);
    } catch (const io::Refusal &refusal) {
        return refusal.message;
    }
    return "";
}

const screening::Resolution kResolutions[] = {{300, 300}, {720, 360}, {180, 360}, {301, 199}};

TEST(FilmSize, IsANameOrAWidthAndAHeight)
{
    const auto expect = [](const char *text, double width, double height, bool turns) {
        const film::SheetSize size = film::sheetSizeFrom(text);
        EXPECT_NEAR(size.width * 25.4, width, 1e-9) << text;
        EXPECT_NEAR(size.height * 25.4, height, 1e-9) << text;
        EXPECT_EQ(size.turns, turns) << text;
    };
    expect("a3", 297, 420, true);
    expect("A3+", 329, 483, true);
    expect("sra3", 320, 450, true);
    expect("Letter", 215.9, 279.4, true);
    expect("420x297mm", 420, 297, false);
    expect("42x29.7CM", 420, 297, false);
    expect("12x18in", 304.8, 457.2, false);
    expect("720x360pt", 254, 127, false);
}

TEST(FilmSize, RefusesWhatIsNone)
{
    for (const char *text : {"", "a", "a99", "420x297", "420mm", "x", "420xmm", "420x297 mm", "420x297mmm",
                             "-420x297mm", "nanxnanmm", "infxinfin", "1e9x1e9mm", "0x10001x3mm", "420,5x297mm"})
        EXPECT_NE(refusalOf(text).find("a film's size is a name such as a3"), std::string::npos) << text;
    for (const char *text : {"0x0mm", "12x0in", "0.99x5in", "12x401in"})
        EXPECT_NE(refusalOf(text).find("from 1 to 400 inches"), std::string::npos) << text;
}

TEST(FilmSheet, IsThePageWhereNothingIsAsked)
{
    const screening::Resolution resolution{300, 300};
    const film::Sheet sheet(pageOf(595, 842, resolution), resolution, {});
    EXPECT_EQ(sheet.columns(), 2479u);
    EXPECT_EQ(sheet.rows(), 3508u);
    EXPECT_EQ(sheet.left() + sheet.top(), 0u);
}

TEST(FilmSheet, OfASizeHasThePageInItsMiddleAndTurnsAsItLies)
{
    const screening::Resolution resolution{300, 150};
    film::MarksAsked asked;
    asked.sheet = film::sheetSizeFrom("a3");
    const film::Sheet upright(pageOf(595, 842, resolution), resolution, asked);
    EXPECT_EQ(upright.columns(), 3508u);
    EXPECT_EQ(upright.rows(), 2480u);
    EXPECT_EQ(upright.left(), (3508u - 2479) / 2);
    EXPECT_EQ(upright.top(), (2480u - 1754) / 2);
    const film::Sheet lying(pageOf(842, 595, resolution), resolution, asked);
    EXPECT_EQ(lying.columns(), 4961u);
    EXPECT_EQ(lying.rows(), 1754u);
    asked.sheet = film::sheetSizeFrom("297x420mm");
    EXPECT_EQ(film::Sheet(pageOf(800, 595, resolution), resolution, asked).columns(), 3508u);
}

TEST(FilmSheet, RefusesWhatDoesNotFit)
{
    const screening::Resolution resolution{300, 300};
    const auto refusal = [&](const char *size, bool marks) {
        film::MarksAsked asked{
            .label = marks, .registerMarks = marks, .cropMarks = marks, .wedge = marks, .sheet = {}};
        asked.sheet = film::sheetSizeFrom(size);
        try {
            film::Sheet(pageOf(595.28, 841.89, resolution), resolution, asked);
        } catch (const io::Refusal &refusal) {
            return refusal.message;
        }
        return std::string();
    };
    EXPECT_EQ(refusal("a4", false), "");
    EXPECT_EQ(refusal("A4", true),
              "page 7 with its marks is 229.8 x 328.3 mm: it does not fit on a film of 210 x 297 mm (A4)");
    EXPECT_EQ(refusal("8x20in", false),
              "page 7 is 210 x 297 mm: it does not fit on a film of 203.2 x 508 mm (8x20in)");
    EXPECT_EQ(refusal("sra3", true), "");
}

// Every shape of the marks is looked for among the pixels, by what it must be in points.
TEST(FilmSheet, HasCropMarksWhereTheTrimIs)
{
    for (const screening::Resolution &resolution : kResolutions) {
        plates::TonePage page = pageOf(120, 90, resolution);
        page.trim = {.left = 30, .bottom = 20, .right = 80, .top = 70};
        page.bleed = {.left = 21, .bottom = 16, .right = 84, .top = 79};  // 9 points on two sides, 4 on the others
        const film::Sheet sheet(page, resolution, {.cropMarks = true, .sheet = {}});
        const std::vector<PixelBox> marks = film_tests::shapes(drawn(sheet, film::PlateMarks(sheet, {})));
        ASSERT_EQ(marks.size(), 8u);
        const double across = resolution.across / 72, down = resolution.down / 72;
        double thickAcross = 0, thickDown = 0;
        for (const PixelBox &mark : marks) {
            const double middleX = double(mark.left + mark.right) / 2 - double(sheet.left());
            const double middleY = double(mark.top + mark.bottom) / 2 - double(sheet.top());
            const bool upright = double(mark.height()) / down > double(mark.width()) / across;
            (upright ? thickAcross : thickDown) = double(upright ? mark.width() : mark.height());
            // On the trim along the line, 9 points of bleed and half of 18 from it in the other direction.
            const double wantX[] = {30 * across, 80 * across, (30 - 18) * across, (80 + 18) * across};
            const double wantY[] = {20 * down, 70 * down, (20 - 18) * down, (70 + 18) * down};
            const auto off = [](double is, const double *want) {
                return std::min(std::fabs(is - want[0]), std::fabs(is - want[1]));
            };
            EXPECT_LE(off(middleX, wantX + (upright ? 0 : 2)), 1.5);
            EXPECT_LE(off(middleY, wantY + (upright ? 2 : 0)), 1.5);
            EXPECT_NEAR(double(upright ? mark.height() : mark.width()), 18 * (upright ? down : across), 1);
        }
        EXPECT_NEAR(thickAcross / across, thickDown / down, 0.51 * std::max(1 / across, 1 / down));
        EXPECT_NEAR(thickAcross / across, 0.5, 0.51 / across + 0.51 / down);
    }
}

TEST(FilmSheet, PutsCropMarksOutsideThePageThatHasNoTrim)
{
    const screening::Resolution resolution{300, 300};
    const plates::TonePage page = pageOf(60, 40, resolution);
    const film::Sheet sheet(page, resolution, {.cropMarks = true, .sheet = {}});
    const Pixels pixels = drawn(sheet, film::PlateMarks(sheet, {}));
    const auto left = static_cast<std::int64_t>(sheet.left()), top = static_cast<std::int64_t>(sheet.top());
    const PixelBox onPage{left, top, left + static_cast<std::int64_t>(page.columns),
                          top + static_cast<std::int64_t>(page.rows)};
    EXPECT_TRUE(film_tests::shapes(pixels.part(onPage)).empty());
    EXPECT_EQ(film_tests::shapes(pixels).size(), 8u);
}

TEST(FilmSheet, HasRegisterMarksThatAreAlikeOnBothSidesAndRound)
{
    for (const screening::Resolution &resolution : kResolutions) {
        const plates::TonePage page = pageOf(60, 41, resolution);
        const film::Sheet sheet(page, resolution, {.registerMarks = true, .sheet = {}});
        const Pixels pixels = drawn(sheet, film::PlateMarks(sheet, {}));
        const std::vector<PixelBox> marks = film_tests::shapes(pixels);
        ASSERT_EQ(marks.size(), 4u);
        for (const PixelBox &box : marks) {
            const Pixels mark = pixels.part(box);
            EXPECT_NEAR(double(mark.columns) * 72 / resolution.across, 20, 2 * 72 / resolution.across);
            EXPECT_NEAR(double(mark.rows) * 72 / resolution.down, 20, 2 * 72 / resolution.down);
            // The same from the left and the right, from above and below.
            for (std::int64_t y = 0; y < mark.rows; ++y)
                for (std::int64_t x = 0; x < mark.columns; ++x)
                    ASSERT_TRUE(mark.at(x, y) == mark.at(mark.columns - 1 - x, y) &&
                                mark.at(x, y) == mark.at(x, mark.rows - 1 - y));
            // Halfway between the lines, the circle's line is 6 points from the middle.
            double farthest = 0;
            for (std::int64_t y = mark.rows * 5 / 8; y < mark.rows; ++y)
                for (std::int64_t x = mark.columns * 5 / 8; x < mark.columns; ++x)
                    if (mark.at(x, y))
                        farthest = std::max(
                            farthest,
                            std::hypot((double(x) + 0.5 - double(mark.columns) / 2) * 72 / resolution.across,
                                       (double(y) + 0.5 - double(mark.rows) / 2) * 72 / resolution.down));
            EXPECT_NEAR(farthest, 6, 0.2);
        }
        EXPECT_NEAR(double(marks[0].left + marks[0].right) / 2, double(sheet.left()) + double(page.columns) / 2,
                    1);
        EXPECT_EQ(marks[0].left, marks[3].left);
    }
}

film::Label label(const std::string &plate)
{
    return {.plate = plate,
            .job = "job.ps",
            .page = 7,
            .date = "2026-11-22",
            .askedFrequency = 45,
            .askedAngle = 22.5,
            .shape = "Round",
            .reachedFrequency = 45.003,
            .reachedAngle = 22.499};
}

TEST(FilmMarks, AreTheSameOnAllPlatesButForTheLabel)
{
    for (const screening::Resolution &resolution : kResolutions) {
        const film::Sheet sheet(pageOf(60, 40, resolution), resolution, {true, true, true, true, {}});
        Pixels cyan = drawn(sheet, film::PlateMarks(sheet, label("Cyan")));
        Pixels gold = drawn(sheet, film::PlateMarks(sheet, label(std::string(300, 'W'))));
        ASSERT_TRUE(sheet.labelBox());
        const PixelBox box = *sheet.labelBox();
        EXPECT_NE(cyan.part(box).black, gold.part(box).black);
        // Only in the label's box, which lies on the film, is anything different: no letter reaches out of it.
        ASSERT_TRUE(box.left > 0 && box.top > 0 && box.right < cyan.columns && box.bottom < cyan.rows);
        for (std::int64_t y = box.top; y < box.bottom; ++y)
            for (std::int64_t x = box.left; x < box.right; ++x)
                cyan.black[static_cast<size_t>(y * cyan.columns + x)] =
                    gold.black[static_cast<size_t>(y * gold.columns + x)];
        EXPECT_EQ(cyan.black, gold.black);
    }
}

TEST(FilmMarks, LieBesideThePageAndHaveAMarginOnTheFilm)
{
    for (const double width : {60.0, 200.0, 640.0}) {
        const screening::Resolution resolution{200, 100};
        plates::TonePage page = pageOf(width, 80, resolution);
        const film::Sheet sheet(page, resolution, {true, true, true, true, {}});
        const Pixels pixels = drawn(sheet, film::PlateMarks(sheet, label("Cyan")));
        const auto left = static_cast<std::int64_t>(sheet.left()), top = static_cast<std::int64_t>(sheet.top());
        const PixelBox onPage{left, top, left + static_cast<std::int64_t>(page.columns),
                              top + static_cast<std::int64_t>(page.rows)};
        EXPECT_TRUE(film_tests::shapes(pixels.part(onPage)).empty());
        PixelBox all = film_tests::shapes(pixels).front();
        for (const PixelBox &shape : film_tests::shapes(pixels))
            all = all.with(shape);
        EXPECT_GE(all.left, 10) << width;
        EXPECT_GE(all.top, 5) << width;
        EXPECT_LE(all.right, pixels.columns - 10) << width;
        EXPECT_LE(all.bottom, pixels.rows - 5) << width;
    }
}

TEST(FilmMarks, HaveAWedgeInThePlatesScreen)
{
    const screening::Resolution resolution{1440, 720};
    const film::Sheet sheet(pageOf(200, 30, resolution), resolution, {.wedge = true, .sheet = {}});
    const film::PlateMarks marks(sheet, {});
    const screening::Thresholds thresholds(screening::findTile({65, 45}, resolution),
                                           [](double x, double y) { return 1 - x * x - y * y; });
    std::vector<int> percents;
    std::vector<double> inked(13), pixels(13);
    for (std::size_t y = 0; y < sheet.rows(); ++y) {
        std::vector<std::uint8_t> tones(sheet.columns()), bits((sheet.columns() + 7) / 8);
        marks.tones(y, tones.data());
        screening::screenRow(thresholds, 0, static_cast<std::int64_t>(y), tones.data(), tones.size(), bits.data());
        for (std::size_t step = 0; step < sheet.wedge().size(); ++step) {
            const PixelBox &box = sheet.wedge()[step].box;
            if (static_cast<std::int64_t>(y) < box.top || static_cast<std::int64_t>(y) >= box.bottom)
                continue;
            for (std::int64_t x = box.left; x < box.right; ++x) {
                inked[step] += bits[static_cast<size_t>(x) / 8] >> (7 - x % 8) & 1;
                ++pixels[step];
                tones[static_cast<size_t>(x)] = 0;
            }
        }
        // Nothing beside the steps.
        ASSERT_EQ(std::count(tones.begin(), tones.end(), 0), static_cast<std::ptrdiff_t>(tones.size()));
    }
    ASSERT_EQ(sheet.wedge().size(), 13u);
    for (std::size_t step = 0; step < 13; ++step) {
        percents.push_back(sheet.wedge()[step].percent);
        EXPECT_NEAR(100 * inked[step] / pixels[step], sheet.wedge()[step].percent, 0.8);
        EXPECT_GE(sheet.wedge()[step].box.width(), 1440 * 16 / 72);
    }
    EXPECT_EQ(percents, (std::vector<int>{2, 5, 10, 20, 30, 40, 50, 60, 70, 80, 90, 95, 98}));
}

}  // namespace
