// The parts of printing that need no print server.
#include <random>

#include "film/printing/film_on_sheet.h"
#include "film/printing/placed_row.h"
#include "film/printing/queue_resolution.h"
#include "io/refusal.h"
#include "support/toolbox_test.h"

namespace {

using namespace riders::printing;

bool bit(const std::vector<std::uint8_t> &row, long at)
{
    return row[static_cast<std::size_t>(at) / 8] >> (7 - at % 8) & 1;
}

TEST(PlacedRowTest, PutsEachPixelWhereItBelongs)
{
    std::mt19937 random(7);
    for (const std::size_t filmColumns : {1UL, 8UL, 13UL, 64UL})
        for (const std::size_t columns : {1UL, 16UL, 21UL, 100UL})
            for (long x = -70; x <= 110; ++x) {
                std::vector<std::uint8_t> film((filmColumns + 7) / 8);
                for (std::uint8_t &byte : film)
                    byte = static_cast<std::uint8_t>(random());
                if (filmColumns % 8 != 0)
                    film.back() &= static_cast<std::uint8_t>(0xff << (8 - filmColumns % 8));
                PlacedRow placed(filmColumns, columns, x);
                const std::vector<std::uint8_t> row = placed.place(film.data());
                for (long at = 0; at < static_cast<long>(row.size()) * 8; ++at) {
                    const long on = at - x;
                    const bool black = at < static_cast<long>(columns) && on >= 0 &&
                                       on < static_cast<long>(filmColumns) && bit(film, on);
                    ASSERT_EQ(bit(row, at), black)
                        << filmColumns << " at " << x << " on " << columns << ": " << at;
                }
                for (const std::uint8_t byte : placed.place(nullptr))
                    ASSERT_EQ(byte, 0);
            }
}

TEST(QueueResolutionTest, IsReadFromCodeAndNames)
{
    const auto code = resolutionFromCode("<</HWResolution[1440 720]/cupsCompression 9>>setpagedevice");
    ASSERT_TRUE(code);
    EXPECT_EQ(inWords(*code), "1440x720");
    EXPECT_EQ(inWords(*resolutionFromCode("<< /HWResolution [ 600 600 ] >> setpagedevice")), "600");
    for (const char *wrong : {"", "/HWResolution", "/HWResolution[", "/HWResolution[720", "/HWResolution[0 720]",
                              "/HWResolution[720 -1]", "/HWResolution 720 720", "/HWResolution[99999999999 1]"})
        EXPECT_FALSE(resolutionFromCode(wrong)) << wrong;
    EXPECT_EQ(inWords(*resolutionFromName("1200x600dpi")), "1200x600");
    EXPECT_EQ(inWords(*resolutionFromName("600dpi")), "600");
    for (const char *wrong : {"", "dpi", "600", "600x", "600xdpi", "x600dpi", "600dpix", "high"})
        EXPECT_FALSE(resolutionFromName(wrong)) << wrong;
}

TEST(QueueResolutionTest, TheSensibleOneIsFineButNotTheFinest)
{
    const auto choose = [](std::vector<QueueResolution> resolutions) {
        return inWords(sensible(resolutions).dpi);
    };
    EXPECT_EQ(choose({{"", {360, 360}}, {"", {1440, 720}}, {"", {720, 720}}, {"", {1440, 1440}}}), "1440x720");
    EXPECT_EQ(choose({{"", {2400, 2400}}, {"", {600, 600}}, {"", {1200, 1200}}}), "1200");
    EXPECT_EQ(choose({{"", {4800, 4800}}, {"", {2540, 2540}}}), "2540");
}

TEST(JobOptionTest, IsANameAndAValue)
{
    const auto option = jobOptionFromText("MediaType=Glossy=1");
    ASSERT_TRUE(option);
    EXPECT_EQ(option->name, "MediaType");
    EXPECT_EQ(option->value, "Glossy=1");
    EXPECT_EQ(jobOptionFromText("fit-to-page")->value, "true");
    EXPECT_EQ(jobOptionFromText("a=")->value, "");
    for (const char *wrong : {"", "=1", "two words=1", "a=\n", "\x7f"})
        EXPECT_FALSE(jobOptionFromText(wrong)) << wrong;
    EXPECT_TRUE(sameValue("Yes", "true") && sameValue("off", "FALSE") && !sameValue("on", "off"));
}

TEST(SheetTest, IsReadAsDriversHaveIt)
{
    const auto size = [](const char *text) {
        const auto sheet = sheetFromText(text);
        return sheet ? std::to_string(std::lround(sheet->width)) + " " + std::to_string(std::lround(sheet->height))
                     : "none";
    };
    EXPECT_EQ(size("Custom.200x300"), "200 300");
    EXPECT_EQ(size("custom.210x297mm"), "595 842");
    EXPECT_EQ(size("Custom.8.5x11in"), "612 792");
    EXPECT_EQ(size("Custom.10x20cm"), "283 567");
    for (const char *wrong : {"A4", "Custom", "Custom.", "Custom.1", "Custom.1x", "Custom.0x5", "Custom.-1x5",
                              "Custom.nanx5", "Custom.1e9x5", "Custom.5x5km", "Custom.infx5"})
        EXPECT_EQ(size(wrong), "none") << wrong;
}

PrintPlan planWith(std::vector<QueueSheet> sheets, const std::string &usual)
{
    PrintPlan plan;
    plan.queue.name = "queue";
    plan.queue.sheets = std::move(sheets);
    plan.queue.usualSheet = usual;
    plan.resolution = {"", {72, 36}};
    return plan;
}

QueueSheet sheetOf(const char *name, double width, double height)
{
    return {.name = name,
            .width = width,
            .height = height,
            .left = 10,
            .bottom = 20,
            .right = width - 10,
            .top = height - 10};
}

TEST(FilmOnSheetTest, ChoosesTheUsualSheetOrTheSmallestThatHoldsTheInk)
{
    const PrintPlan plan =
        planWith({sheetOf("big", 1000, 1000), sheetOf("small", 200, 200), sheetOf("usual", 400, 400)}, "usual");
    const FilmExtent film{.columns = 100, .rows = 50, .left = 0, .top = 0, .right = 100, .bottom = 50};
    FilmOnSheet on = layFilm(plan, film);
    EXPECT_EQ(on.choice, "usual");
    EXPECT_EQ(on.x, 150);
    EXPECT_EQ(on.y, 75);
    const FilmExtent large{.columns = 500, .rows = 50, .left = 0, .top = 0, .right = 500, .bottom = 50};
    EXPECT_EQ(layFilm(plan, large).choice, "big");
    // A film as large as the sheet, whose edge is blank.
    const FilmExtent page{.columns = 400, .rows = 200, .left = 10, .top = 5, .right = 390, .bottom = 190};
    EXPECT_EQ(layFilm(plan, page).choice, "usual");
    const FilmExtent edge{.columns = 400, .rows = 200, .left = 10, .top = 5, .right = 390, .bottom = 191};
    EXPECT_EQ(layFilm(plan, edge).choice, "big");
    const FilmExtent huge{.columns = 2000, .rows = 50, .left = 0, .top = 0, .right = 2000, .bottom = 50};
    EXPECT_THROW(layFilm(plan, huge), riders::io::Refusal);
}

TEST(FilmOnSheetTest, TheInkOfAllPlatesCounts)
{
    FilmExtent all;
    all.add({.columns = 100, .rows = 90, .left = 0, .top = 0, .right = 0, .bottom = 0});
    all.add({.columns = 100, .rows = 90, .left = 20, .top = 30, .right = 40, .bottom = 50});
    all.add({.columns = 100, .rows = 90, .left = 10, .top = 35, .right = 30, .bottom = 60});
    EXPECT_EQ(all.left, 10u);
    EXPECT_EQ(all.top, 30u);
    EXPECT_EQ(all.right, 40u);
    EXPECT_EQ(all.bottom, 60u);
}

}  // namespace
